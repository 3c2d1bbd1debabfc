#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace widgets {

/// A few texts in one block of memory, each followed by a zero. Texts beyond the last are empty.
class CellTexts {
public:
    CellTexts() = default;
    /// With memory for `reserved` bytes.
    explicit CellTexts(std::size_t reserved);
    CellTexts(CellTexts&&) noexcept = default;
    CellTexts& operator=(CellTexts&&) noexcept = default;

    std::size_t Count() const { return block_ == nullptr ? 0 : Head()->count; }
    std::wstring_view At(std::size_t position) const;

    /// Sets some texts from `first` on; those between the last and `first` become empty.
    void Set(std::size_t first, std::span<const std::wstring_view> texts);

    /// The bytes that the texts need.
    std::size_t Size() const;

private:
    /// The block: this, where each text ends, and the characters.
    struct Header {
        std::uint32_t count;
        std::uint32_t reserved;
    };

    static std::size_t SizeOf(std::size_t count, std::size_t characters) {
        return sizeof(Header) + count * sizeof(std::uint32_t) + characters * sizeof(wchar_t);
    }
    Header* Head() const { return reinterpret_cast<Header*>(block_.get()); }
    std::uint32_t* Ends() const { return reinterpret_cast<std::uint32_t*>(Head() + 1); }
    wchar_t* Characters() const { return reinterpret_cast<wchar_t*>(Ends() + Count()); }
    std::size_t Length() const { return Count() == 0 ? 0 : Ends()[Count() - 1] + std::size_t{1}; }

    /// Adds texts behind the last where the memory suffices.
    bool Append(std::size_t first, std::span<const std::wstring_view> texts);
    void Write(std::size_t position, std::size_t begin, std::wstring_view text);

    std::unique_ptr<std::byte[]> block_;
};

}  // namespace widgets
