#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace repository::ecore {

/// The words of a text, without the blanks and line ends between them.
std::vector<std::string_view> Words(std::string_view text);

/// The parts between separators; a text without one is one part.
std::vector<std::string_view> Split(std::string_view text, char separator);

/// What comes after the last separator: the whole text where there is none.
std::string_view AfterLast(std::string_view text, char separator);

/// Whether a text has nothing but blanks and line ends.
bool IsBlank(std::string_view text);

/// The number that a text of digits is; false for any other text, and for numbers that are too
/// large.
bool ParseIndex(std::string_view text, std::size_t& number);

/// The last part of a path, and all that stands before it. Both kinds of slashes separate.
std::string_view FileName(std::string_view path);
std::string_view Folder(std::string_view path);
/// A file name without its extension.
std::string_view Stem(std::string_view name);

}  // namespace repository::ecore
