#include "widgets/picture.h"

#include <olectl.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include <memory>
#include <utility>
#include <vector>

#include "ole/error.h"
#include "ole/handles.h"
#include "ole/units.h"

namespace widgets {

namespace {

[[noreturn]] void ThrowFileError(DWORD error) {
    switch (error) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_INVALID_NAME:
            ole::Throw(ole::Number::fileNotFound);
        case ERROR_PATH_NOT_FOUND:
        case ERROR_BAD_NETPATH:
        case ERROR_INVALID_DRIVE:
            ole::Throw(ole::Number::pathNotFound);
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
            ole::Throw(ole::Number::permissionDenied);
        default:
            ole::Throw(ole::Number::pathFileAccess);
    }
}

std::vector<std::byte> ReadAll(const std::wstring& path) {
    const HANDLE opened = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE) ThrowFileError(GetLastError());
    const ole::Owned<HANDLE, &CloseHandle> file(opened);
    LARGE_INTEGER size = {};
    if (!GetFileSizeEx(opened, &size)) ThrowFileError(GetLastError());
    constexpr LONGLONG most = 1 << 28;
    if (size.QuadPart == 0 || size.QuadPart > most) ole::Throw(ole::Number::invalidPicture);
    std::vector<std::byte> bytes(static_cast<std::size_t>(size.QuadPart));
    DWORD read = 0;
    if (!ReadFile(opened, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) {
        ThrowFileError(GetLastError());
    }
    bytes.resize(read);
    return bytes;
}

bool IsIconFile(const std::vector<std::byte>& bytes) {
    return bytes.size() > 22 && bytes[0] == std::byte{0} && bytes[1] == std::byte{0} &&
           bytes[2] == std::byte{1} && bytes[3] == std::byte{0};
}

ole::Ref<IPicture> PictureOf(OwnedIcon icon) {
    PICTDESC description = {};
    description.cbSizeofstruct = sizeof(description);
    description.picType = PICTYPE_ICON;
    description.icon.hicon = icon.get();
    ole::Ref<IPicture> picture;
    if (FAILED(OleCreatePictureIndirect(&description, IID_IPicture, TRUE,
                                        reinterpret_cast<void**>(picture.GetAddressOf())))) {
        ole::Throw(ole::Number::invalidPicture);
    }
    static_cast<void>(icon.release());
    return picture;
}

ole::Ref<IPicture> PictureOf(const std::vector<std::byte>& bytes) {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    if (memory == nullptr) ole::Check(E_OUTOFMEMORY);
    std::copy(bytes.begin(), bytes.end(), static_cast<std::byte*>(GlobalLock(memory)));
    GlobalUnlock(memory);
    ole::Ref<IStream> stream;
    if (FAILED(CreateStreamOnHGlobal(memory, TRUE, stream.GetAddressOf()))) {
        GlobalFree(memory);
        ole::Check(E_OUTOFMEMORY);
    }
    ole::Ref<IPicture> picture;
    if (FAILED(OleLoadPicture(stream.Get(), static_cast<LONG>(bytes.size()), FALSE, IID_IPicture,
                              reinterpret_cast<void**>(picture.GetAddressOf())))) {
        ole::Throw(ole::Number::invalidPicture);
    }
    return picture;
}

/// A picture drawn, without transparency, into a bitmap of 32 bits.
ole::GdiObject<HBITMAP> Drawn(IPicture& picture, SIZE size) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = size.cx;
    info.bmiHeader.biHeight = size.cy;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    const ole::ScreenContext screen;
    void* bits = nullptr;
    ole::GdiObject<HBITMAP> bitmap(
        CreateDIBSection(screen.Get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!bitmap) ole::Check(E_OUTOFMEMORY);
    const ole::MemoryContext context;
    const ole::Selected selected(context.Get(), bitmap.Get());
    const RECT all = {0, 0, size.cx, size.cy};
    FillRect(context.Get(), &all, GetSysColorBrush(COLOR_WINDOW));
    SetStretchBltMode(context.Get(), HALFTONE);
    OLE_XSIZE_HIMETRIC width = 0;
    OLE_YSIZE_HIMETRIC height = 0;
    picture.get_Width(&width);
    picture.get_Height(&height);
    // A picture's origin is its lower left corner.
    if (FAILED(picture.Render(context.Get(), 0, 0, size.cx, size.cy, 0, height, width, -height,
                              &all))) {
        ole::Throw(ole::Number::invalidPicture);
    }
    GdiFlush();
    constexpr std::uint32_t opaque = 0xFF000000;
    const auto pixels = static_cast<std::uint32_t*>(bits);
    for (LONG i = 0; i < size.cx * size.cy; ++i) pixels[i] |= opaque;
    return bitmap;
}

}  // namespace

Picture::Picture(IUnknown* object) : picture_(ole::Query<IPicture>(object)) {
    OLE_HANDLE handle = 0;
    if (!picture_ || FAILED(picture_->get_Handle(&handle)) || handle == 0) {
        ole::Throw(ole::Number::invalidPicture);
    }
}

Picture Picture::FromFile(const std::wstring& path, int wanted) {
    const std::vector<std::byte> bytes = ReadAll(path);
    if (!IsIconFile(bytes)) return Picture(PictureOf(bytes));
    return FromIcon(OwnedIcon(static_cast<HICON>(
        LoadImageW(nullptr, path.c_str(), IMAGE_ICON, wanted, wanted, LR_LOADFROMFILE))));
}

Picture Picture::FromIcon(OwnedIcon icon) {
    if (!icon) ole::Throw(ole::Number::invalidPicture);
    return Picture(PictureOf(std::move(icon)));
}

SIZE Picture::Size() const {
    // The platform's objects count pixels at the system's resolution, whatever the monitor's.
    const int dpi = ole::DotsPerInch(nullptr);
    OLE_XSIZE_HIMETRIC width = 0;
    OLE_YSIZE_HIMETRIC height = 0;
    picture_->get_Width(&width);
    picture_->get_Height(&height);
    const SIZE size = {ole::HimetricToPixels(width, dpi), ole::HimetricToPixels(height, dpi)};
    constexpr LONG most = 256;
    return {std::clamp(size.cx, 1l, most), std::clamp(size.cy, 1l, most)};
}

void Picture::AddTo(HIMAGELIST list) const {
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(list, &width, &height);
    short type = PICTYPE_UNINITIALIZED;
    picture_->get_Type(&type);
    int added = -1;
    if (type == PICTYPE_ICON) {
        OLE_HANDLE handle = 0;
        picture_->get_Handle(&handle);
        const OwnedIcon icon(
            static_cast<HICON>(CopyImage(ULongToHandle(handle), IMAGE_ICON, width, height, 0)));
        added = ImageList_ReplaceIcon(list, -1, icon ? icon.get() : nullptr);
    } else {
        added = ImageList_Add(list, Drawn(*picture_.Get(), {width, height}).Get(), nullptr);
    }
    if (added < 0) ole::Throw(ole::Number::invalidPicture);
}

}  // namespace widgets
