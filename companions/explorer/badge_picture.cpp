#include "explorer/badge_picture.h"

#include "explorer/handles.h"
#include "hosting/error.h"

#include <olectl.h>

#include <algorithm>
#include <span>

namespace explorer {

namespace {

constexpr std::uint32_t white = 0xFFFFFF;

/// A bitmap of 32 bits from the top, with its pixels.
struct Canvas {
    explicit Canvas(int size) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = size;
        info.bmiHeader.biHeight = -size;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        bitmap.reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        if (!bitmap) throw hosting::Error(E_OUTOFMEMORY, L"There is no memory for a picture.");
        pixels = {static_cast<std::uint32_t*>(bits),
                  static_cast<std::size_t>(size) * static_cast<std::size_t>(size)};
    }

    OwnedBitmap bitmap;
    std::span<std::uint32_t> pixels;
};

OwnedFont LetterFont(int size) {
    LOGFONTW font{};
    font.lfHeight = -MulDiv(size, 11, 16);
    font.lfWeight = FW_BOLD;
    font.lfQuality = ANTIALIASED_QUALITY;
    lstrcpynW(font.lfFaceName, L"Tahoma", LF_FACESIZE);
    return OwnedFont(CreateFontIndirectW(&font));
}

/// How much a letter in the middle covers of each pixel.
std::vector<std::uint8_t> CoverOf(wchar_t letter, int size) {
    const Canvas canvas(size);
    const OwnedContext context(CreateCompatibleDC(nullptr));
    const OwnedFont font = LetterFont(size);
    {
        const Selected target(context.get(), canvas.bitmap.get());
        const Selected selected(context.get(), font.get());
        SetTextColor(context.get(), white);
        SetBkMode(context.get(), TRANSPARENT);
        TEXTMETRICW metrics{};
        GetTextMetricsW(context.get(), &metrics);
        SIZE extent{};
        GetTextExtentPoint32W(context.get(), &letter, 1, &extent);
        // Capitals fill the ascent but for the leading above them.
        const int capitals = metrics.tmAscent - metrics.tmInternalLeading;
        const int top = (size - capitals + 1) / 2 - metrics.tmInternalLeading;
        TextOutW(context.get(), (size - extent.cx + 1) / 2, top, &letter, 1);
        GdiFlush();
    }
    std::vector<std::uint8_t> coverage;
    for (const std::uint32_t pixel : canvas.pixels)
        coverage.push_back(static_cast<std::uint8_t>(pixel >> 8));
    return coverage;
}

std::uint32_t Mix(std::uint32_t under, std::uint32_t over, std::uint32_t share, int shift) {
    const std::uint32_t from = under >> shift & 0xFF;
    const std::uint32_t to = over >> shift & 0xFF;
    return (from * (255 - share) + to * share) / 255 << shift;
}

std::uint32_t Mix(std::uint32_t under, std::uint32_t over, std::uint32_t share) {
    return Mix(under, over, share, 16) | Mix(under, over, share, 8) | Mix(under, over, share, 0);
}

HICON MakeIcon(const Badge& badge, int size) {
    const Canvas canvas(size);
    const auto pixels = MakePixels(badge, size);
    std::copy(pixels.begin(), pixels.end(), canvas.pixels.begin());
    const std::vector<std::uint8_t> opaque(static_cast<std::size_t>((size + 15) / 16 * 2 * size));
    const OwnedBitmap mask(CreateBitmap(size, size, 1, 1, opaque.data()));
    ICONINFO info{};
    info.fIcon = TRUE;
    info.hbmColor = canvas.bitmap.get();
    info.hbmMask = mask.get();
    const HICON icon = CreateIconIndirect(&info);
    if (!icon) throw hosting::Error(E_OUTOFMEMORY, L"There is no memory for an icon.");
    return icon;
}

}  // namespace

std::vector<std::uint32_t> MakePixels(const Badge& badge, int size) {
    const BadgeShape shape = Rasterize(badge, size);
    const std::vector<std::uint8_t> sign = badge.letter ? CoverOf(badge.letter, size) : shape.arrow;
    const std::uint32_t signColor = badge.filled ? white : badge.color;
    std::vector<std::uint32_t> pixels;
    for (std::size_t index = 0; index < shape.frame.size(); ++index) {
        const std::uint32_t frame = shape.frame[index];
        const std::uint32_t over = sign[index];
        // A sign over a frame's empty inside has only its own cover.
        const std::uint32_t alpha = frame + over * (255 - frame) / 255;
        pixels.push_back(alpha << 24 | Mix(badge.color, signColor, over));
    }
    return pixels;
}

hosting::Ref<IDispatch> MakePicture(const Badge& badge, int size) {
    PICTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.picType = PICTYPE_ICON;
    description.icon.hicon = MakeIcon(badge, size);
    hosting::Ref<IDispatch> picture;
    const HRESULT result = OleCreatePictureIndirect(
        &description, IID_IDispatch, TRUE, reinterpret_cast<void**>(picture.GetAddressOf()));
    if (FAILED(result)) DestroyIcon(description.icon.hicon);
    hosting::Check(result, L"making a picture");
    return picture;
}

}  // namespace explorer
