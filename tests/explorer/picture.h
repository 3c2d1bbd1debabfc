#pragma once

#include <cstdint>
#include <set>
#include <string>

namespace explorer {

/// What can be said of a picture without eyes.
struct Picture {
    unsigned width = 0;
    unsigned height = 0;
    std::set<std::uint32_t> colors;  ///< 0xAARRGGBB
};

/// Reads a picture file. Throws hosting::Error.
[[nodiscard]] Picture ReadPicture(const std::wstring& path);

}  // namespace explorer
