#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace repository::ecore {

/// The path of a file from its root, always written in the same way: two paths are the same file
/// when they are the same text.
std::string Normal(const std::string& path);

/// The size of a file. Throws the reason why it cannot be read: 53, 70, 75, 76.
std::uint64_t SizeOf(const std::string& path);

/// Hands out a file piece by piece; `use` says whether it wants more, and gets an empty last piece.
void ReadFile(const std::string& path,
              const std::function<bool(std::string_view piece, bool last)>& use);

bool IsFile(const std::string& path);

/// A file that is being written. It takes the place of the one that has its name when it is
/// complete; until then that one stays.
class NewFile {
public:
    /// Errors: 70, 75, 76.
    explicit NewFile(const std::string& path);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void Write(std::string_view piece);

    /// Puts this file and another one in their places: both, or none.
    void CommitWith(NewFile& other);

private:
    struct Stream;
    void Close();
    void Place();

    std::string path_;
    std::string temporary_;
    std::unique_ptr<Stream> stream_;
};

}  // namespace repository::ecore
