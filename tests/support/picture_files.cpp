#include "support/picture_files.h"

#include <windows.h>

#include <olectl.h>

#include <array>
#include <stdexcept>

namespace support {

namespace {

void Append(std::string& bytes, std::uint32_t number, int size) {
    for (int i = 0; i < size; ++i) bytes += static_cast<char>(number >> (8 * i));
}

std::string FromHex(const std::string& text) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
        bytes += static_cast<char>(std::stoi(text.substr(i, 2), nullptr, 16));
    }
    return bytes;
}

void AppendBitmapHeader(std::string& bytes, int width, int height) {
    Append(bytes, sizeof(BITMAPINFOHEADER), 4);
    Append(bytes, static_cast<std::uint32_t>(width), 4);
    Append(bytes, static_cast<std::uint32_t>(height), 4);
    Append(bytes, 1, 2);
    Append(bytes, 32, 2);
    bytes.append(24, '\0');
}

}  // namespace

std::string BitmapFile(int width, int height, std::uint32_t colour) {
    const int size = width * height * 4;
    std::string bytes = "BM";
    Append(bytes, static_cast<std::uint32_t>(54 + size), 4);
    Append(bytes, 0, 4);
    Append(bytes, 54, 4);
    AppendBitmapHeader(bytes, width, height);
    for (int i = 0; i < width * height; ++i) Append(bytes, colour, 4);
    return bytes;
}

std::string IconFile(const std::vector<IconImage>& images) {
    std::string directory;
    Append(directory, 0, 2);
    Append(directory, 1, 2);
    Append(directory, static_cast<std::uint32_t>(images.size()), 2);
    const std::size_t start = 6 + 16 * images.size();
    std::string data;
    for (const IconImage& image : images) {
        std::string bits;
        AppendBitmapHeader(bits, image.size, 2 * image.size);
        for (int i = 0; i < image.size * image.size; ++i)
            Append(bits, 0xFF000000 | image.colour, 4);
        const int maskLine = (image.size + 31) / 32 * 4;
        bits.append(static_cast<std::size_t>(maskLine * image.size), '\0');
        Append(directory, static_cast<std::uint32_t>(image.size), 1);
        Append(directory, static_cast<std::uint32_t>(image.size), 1);
        Append(directory, 0, 2);
        Append(directory, 1, 2);
        Append(directory, 32, 2);
        Append(directory, static_cast<std::uint32_t>(bits.size()), 4);
        Append(directory, static_cast<std::uint32_t>(start + data.size()), 4);
        data += bits;
    }
    return directory + data;
}

std::string JpegFile() {
    return FromHex(
        "ffd8ffe000104a46494600010100000100010000ffdb004300100b0c0e0c0a100e0d0e1211101318281a1816"
        "16183123251d283a333d3c3933383740485c4e404457453738506d51575f626768673e4d71797064785c6567"
        "63ffdb0043011112121815182f1a1a2f63423842636363636363636363636363636363636363636363636363"
        "6363636363636363636363636363636363636363636363636363ffc000110800020002030111000211010311"
        "01ffc40014000100000000000000000000000000000005ffc400141001000000000000000000000000000000"
        "00ffc4001501010100000000000000000000000000000506ffc4001411010000000000000000000000000000"
        "0000ffda000c03010002110311003f00145af1ffd9");
}

std::string GifFile() {
    return FromHex(
        "47494638396102000200f00000ff000000000021f90400000000002c00000000020002000002028451003b");
}

std::string MetafileFile(std::uint32_t colour) {
    const HDC context = CreateMetaFileW(nullptr);
    const HBRUSH brush =
        CreateSolidBrush(RGB((colour >> 16) & 0xFF, (colour >> 8) & 0xFF, colour & 0xFF));
    SetMapMode(context, MM_ANISOTROPIC);
    SetWindowExtEx(context, 100, 100, nullptr);
    SelectObject(context, brush);
    PatBlt(context, 0, 0, 100, 100, PATCOPY);
    const HMETAFILE metafile = CloseMetaFile(context);
    DeleteObject(brush);
    std::string records(GetMetaFileBitsEx(metafile, 0, nullptr), '\0');
    GetMetaFileBitsEx(metafile, static_cast<UINT>(records.size()), records.data());
    DeleteMetaFile(metafile);
    const std::array<std::uint16_t, 10> header = {0xCDD7, 0x9AC6, 0, 0, 0, 360, 360, 1440, 0, 0};
    std::uint16_t sum = 0;
    std::string bytes;
    for (const std::uint16_t word : header) {
        sum = static_cast<std::uint16_t>(sum ^ word);
        Append(bytes, word, 2);
    }
    Append(bytes, sum, 2);
    return bytes + records;
}

Ref<IDispatch> PictureObject(const std::string& bytes) {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    bytes.copy(static_cast<char*>(GlobalLock(memory)), bytes.size());
    GlobalUnlock(memory);
    Ref<IStream> stream;
    CreateStreamOnHGlobal(memory, TRUE, stream.GetAddressOf());
    Ref<IDispatch> picture;
    if (FAILED(OleLoadPicture(stream.Get(), static_cast<LONG>(bytes.size()), FALSE,
                              __uuidof(IDispatch),
                              reinterpret_cast<void**>(picture.GetAddressOf())))) {
        throw std::runtime_error("no picture");
    }
    return picture;
}

}  // namespace support
