#pragma once

#include <filesystem>
#include <string>

namespace hosting {

/// All bytes of a file. Throws Error where it cannot be read.
[[nodiscard]] std::string ReadBytes(const std::filesystem::path& file);

}  // namespace hosting
