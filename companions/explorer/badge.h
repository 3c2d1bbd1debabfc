#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace explorer {

/// A small picture that stands for a kind of object: a coloured frame with a letter or an arrow.
struct Badge {
    enum class Frame { square, disc };

    Frame frame = Frame::square;
    bool filled = true;       ///< the frame's inside is coloured, else only its line
    std::uint32_t color = 0;  ///< 0xRRGGBB
    wchar_t letter = 0;       ///< 0: an arrow

    bool operator==(const Badge&) const = default;

    /// A text that tells badges apart.
    [[nodiscard]] std::wstring Key() const;
};

/// The badge of a type: names of one family ("BusinessActor", "BusinessRole") share the colour of
/// their first word, the initial of the last word tells them apart.
[[nodiscard]] Badge TypeBadge(std::wstring_view typeName, Badge::Frame frame, bool filled = true);

/// How much of a badge covers each of `size` times `size` pixels, in rows from the top, from 0 to
/// 255: the frame, and the arrow where it has one.
struct BadgeShape {
    std::vector<std::uint8_t> frame;
    std::vector<std::uint8_t> arrow;
};
[[nodiscard]] BadgeShape Rasterize(const Badge& badge, int size);

}  // namespace explorer
