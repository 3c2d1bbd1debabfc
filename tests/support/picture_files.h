#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/ref.h"

namespace support {

// The bytes of picture files of one colour, 0x00RRGGBB.

[[nodiscard]] std::string BitmapFile(int width, int height, std::uint32_t colour);
/// An icon file with an image of each size, each of its own colour.
struct IconImage {
    int size;
    std::uint32_t colour;
};
[[nodiscard]] std::string IconFile(const std::vector<IconImage>& images);
/// Red ones of two by two pixels.
[[nodiscard]] std::string JpegFile();
[[nodiscard]] std::string GifFile();
/// A metafile with its size in front, a quarter of an inch.
[[nodiscard]] std::string MetafileFile(std::uint32_t colour);

/// The platform's picture object of a file's bytes; throws std::runtime_error where it makes none.
[[nodiscard]] Ref<IDispatch> PictureObject(const std::string& bytes);

}  // namespace support
