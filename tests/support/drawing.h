#pragma once

#include "support/ref.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace support {

/// A picture in memory, top row first, 0x00RRGGBB.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    [[nodiscard]] std::uint32_t At(int x, int y) const {
        return pixels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                         static_cast<std::size_t>(x));
    }
    /// How many different colours there are; 1 for a blank picture.
    [[nodiscard]] std::size_t Colours() const;
    [[nodiscard]] bool Has(std::uint32_t colour) const;
    /// Writes a PNG, or a BMP by the file's ending. Throws std::runtime_error.
    void Save(const std::filesystem::path& file) const;
};

/// What is on the screen where a window is, or on the whole screen for null.
[[nodiscard]] Picture Photograph(HWND window = nullptr);

/// What a view object draws that is not active, on white; `result` gets what Draw returned.
[[nodiscard]] Picture DrawInactive(IUnknown* object, SIZE pixels, HRESULT* result = nullptr,
                                   DWORD aspect = DVASPECT_CONTENT);
/// The whole of a picture object on white; blank where it is none.
[[nodiscard]] Picture DrawPicture(IUnknown* picture, SIZE pixels);
/// The number of records that a view object draws into a Windows metafile, as containers keep it;
/// -1 where it fails.
[[nodiscard]] int DrawIntoMetafile(IUnknown* object, SIZE pixels);

}  // namespace support
