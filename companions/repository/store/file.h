#pragma once

#include <filesystem>
#include <string>

namespace repository::store {

/// The path that stands for a database in memory.
constexpr const char* inMemory = ":memory:";

/// A path of a file system of a path in UTF-8.
std::filesystem::path PathOf(const std::string& path);

/// Throws 76 where the folder that a file shall lie in does not exist.
void RequireFolderOf(const std::string& path);

/// The path as it stands independently of the current folder. UTF-8 both.
std::string Absolute(const std::string& path);

enum class FileState {
    missing,
    empty,
    repository,
};

/// What lies at `path`, found out by reading no more than its first bytes. Throws the reason where
/// it is no file that a repository can be kept in: no such folder, a folder, not readable, another
/// kind of file, a repository of a later version.
FileState Probe(const std::string& path);

/// Whether two absolute paths mean the same file. Each repository in memory is one of its own.
bool IsSameFile(const std::string& first, const std::string& second);

/// Removes a file, if it is there; failures are ignored.
void RemoveFile(const std::string& path) noexcept;

}  // namespace repository::store
