#include "support/drawing.h"

#include <ocidl.h>
#include <wincodec.h>

#include <algorithm>
#include <functional>
#include <set>
#include <stdexcept>

namespace support {

namespace {

/// A 32-bit bitmap with a device context to draw into.
class Canvas {
public:
    explicit Canvas(SIZE size) : size_(size), context_(CreateCompatibleDC(nullptr)) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = size.cx;
        info.bmiHeader.biHeight = -size.cy;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        bitmap_ = CreateDIBSection(context_, &info, DIB_RGB_COLORS, &bits_, nullptr, 0);
        before_ = SelectObject(context_, bitmap_);
    }
    ~Canvas() {
        SelectObject(context_, before_);
        DeleteObject(bitmap_);
        DeleteDC(context_);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    [[nodiscard]] HDC Context() const { return context_; }

    void Whiten() const {
        const RECT all = {0, 0, size_.cx, size_.cy};
        FillRect(context_, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    }

    [[nodiscard]] Picture Copy() const {
        GdiFlush();
        Picture picture{size_.cx, size_.cy, {}};
        const auto* pixels = static_cast<const std::uint32_t*>(bits_);
        picture.pixels.assign(pixels, pixels + size_.cx * size_.cy);
        for (std::uint32_t& pixel : picture.pixels) pixel &= 0xFFFFFF;
        return picture;
    }

private:
    SIZE size_;
    HDC context_;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ before_ = nullptr;
    void* bits_ = nullptr;
};

void Check(HRESULT result, const char* what) {
    if (FAILED(result)) throw std::runtime_error(what);
}

HRESULT Draw(IUnknown* object, HDC context, SIZE size, DWORD aspect) {
    const auto view = Query<IViewObject>(object);
    if (!view) return E_NOINTERFACE;
    const RECTL bounds = {0, 0, size.cx, size.cy};
    return view->Draw(aspect, -1, nullptr, nullptr, nullptr, context, &bounds, nullptr, nullptr, 0);
}

int CALLBACK CountRecord(HDC, HANDLETABLE*, METARECORD*, int, LPARAM counter) {
    ++*reinterpret_cast<int*>(counter);
    return 1;
}

}  // namespace

std::size_t Picture::Colours() const {
    return std::set<std::uint32_t>(pixels.begin(), pixels.end()).size();
}

bool Picture::Has(std::uint32_t colour) const {
    return std::find(pixels.begin(), pixels.end(), colour) != pixels.end();
}

void Picture::Save(const std::filesystem::path& file) const {
    const bool bmp = file.extension() == L".bmp";
    Ref<IWICImagingFactory> factory;
    Check(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                           __uuidof(IWICImagingFactory),
                           reinterpret_cast<void**>(factory.GetAddressOf())),
          "no imaging component");
    Ref<IWICStream> stream;
    Check(factory->CreateStream(stream.GetAddressOf()), "no stream");
    Check(stream->InitializeFromFilename(file.c_str(), GENERIC_WRITE), "cannot write the picture");
    Ref<IWICBitmapEncoder> encoder;
    Check(factory->CreateEncoder(bmp ? GUID_ContainerFormatBmp : GUID_ContainerFormatPng, nullptr,
                                 encoder.GetAddressOf()),
          "no encoder");
    Check(encoder->Initialize(stream.Get(), WICBitmapEncoderNoCache), "the encoder failed");
    Ref<IWICBitmapFrameEncode> frame;
    Check(encoder->CreateNewFrame(frame.GetAddressOf(), nullptr), "no frame");
    Check(frame->Initialize(nullptr), "the frame failed");
    const auto columns = static_cast<UINT>(width);
    const auto rows = static_cast<UINT>(height);
    Check(frame->SetSize(columns, rows), "the size failed");
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    Check(frame->SetPixelFormat(&format), "the format failed");
    const UINT stride = (columns * 3 + 3) & ~3u;
    std::vector<BYTE> bytes(static_cast<std::size_t>(stride) * rows);
    for (UINT y = 0; y < rows; ++y) {
        for (UINT x = 0; x < columns; ++x) {
            const std::uint32_t pixel = pixels[y * columns + x];
            for (UINT channel = 0; channel < 3; ++channel)
                bytes[y * stride + x * 3 + channel] = static_cast<BYTE>(pixel >> (8 * channel));
        }
    }
    Check(frame->WritePixels(rows, stride, static_cast<UINT>(bytes.size()), bytes.data()),
          "the pixels failed");
    Check(frame->Commit(), "the frame failed");
    Check(encoder->Commit(), "the file failed");
}

Picture Photograph(HWND window) {
    RECT bounds = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    if (window != nullptr) GetWindowRect(window, &bounds);
    const SIZE size = {bounds.right - bounds.left, bounds.bottom - bounds.top};
    const Canvas canvas(size);
    const HDC screen = GetDC(nullptr);
    BitBlt(canvas.Context(), 0, 0, size.cx, size.cy, screen, bounds.left, bounds.top, SRCCOPY);
    ReleaseDC(nullptr, screen);
    return canvas.Copy();
}

Picture DrawInactive(IUnknown* object, SIZE pixels, HRESULT* result, DWORD aspect) {
    const Canvas canvas(pixels);
    canvas.Whiten();
    const HRESULT drawn = Draw(object, canvas.Context(), pixels, aspect);
    if (result != nullptr) *result = drawn;
    return canvas.Copy();
}

Picture DrawPicture(IUnknown* picture, SIZE pixels) {
    const Canvas canvas(pixels);
    canvas.Whiten();
    if (const auto drawn = Query<IPicture>(picture)) {
        OLE_XSIZE_HIMETRIC width = 0;
        OLE_YSIZE_HIMETRIC height = 0;
        drawn->get_Width(&width);
        drawn->get_Height(&height);
        // A picture's own coordinates go up.
        drawn->Render(canvas.Context(), 0, 0, pixels.cx, pixels.cy, 0, height, width, -height,
                      nullptr);
    }
    return canvas.Copy();
}

int DrawIntoMetafile(IUnknown* object, SIZE pixels) {
    const HDC context = CreateMetaFileW(nullptr);
    SetMapMode(context, MM_ANISOTROPIC);
    SetWindowExtEx(context, pixels.cx, pixels.cy, nullptr);
    const HRESULT drawn = Draw(object, context, pixels, DVASPECT_CONTENT);
    const HMETAFILE file = CloseMetaFile(context);
    int records = 0;
    EnumMetaFile(nullptr, file, CountRecord, reinterpret_cast<LPARAM>(&records));
    DeleteMetaFile(file);
    return SUCCEEDED(drawn) ? records : -1;
}

}  // namespace support
