#pragma once

#include <filesystem>
#include <string>

namespace scripthost {

/// The text of a script file: UTF-16 or UTF-8 with a byte-order mark, else UTF-8, else in the
/// system's code page. Throws hosting::Error where it cannot be read.
[[nodiscard]] std::wstring ReadSource(const std::filesystem::path& file);

/// A line of a text, counted from 0, without its end; empty where there is none.
[[nodiscard]] std::wstring LineOf(const std::wstring& text, unsigned line);

}  // namespace scripthost
