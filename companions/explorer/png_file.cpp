#include "explorer/png_file.h"

#include "explorer/handles.h"
#include "hosting/error.h"
#include "hosting/ref.h"

#include <wincodec.h>

namespace explorer {

namespace {

using hosting::Check;
using hosting::Ref;

OwnedBitmap CopyScreen(const RECT& bounds) {
    const int width = bounds.right - bounds.left;
    const int height = bounds.bottom - bounds.top;
    const WindowContext screen(nullptr);
    const OwnedContext memory(CreateCompatibleDC(screen.Get()));
    OwnedBitmap bitmap(CreateCompatibleBitmap(screen.Get(), width, height));
    const Selected selected(memory.get(), bitmap.get());
    if (!BitBlt(memory.get(), 0, 0, width, height, screen.Get(), bounds.left, bounds.top,
                SRCCOPY | CAPTUREBLT))
        throw hosting::Error::FromResult(HRESULT_FROM_WIN32(GetLastError()), L"reading the screen");
    return bitmap;
}

Ref<IWICImagingFactory> MakeFactory() {
    Ref<IWICImagingFactory> factory;
    Check(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                           IID_PPV_ARGS(factory.GetAddressOf())),
          L"starting the imaging component");
    return factory;
}

Ref<IWICStream> MakeFile(IWICImagingFactory* factory, const std::wstring& path) {
    Ref<IWICStream> file;
    Check(factory->CreateStream(file.GetAddressOf()), L"making a stream");
    Check(file->InitializeFromFilename(path.c_str(), GENERIC_WRITE), (L"writing " + path).c_str());
    return file;
}

}  // namespace

void SaveScreen(const RECT& bounds, const std::wstring& path) {
    const OwnedBitmap bitmap = CopyScreen(bounds);
    const Ref<IWICImagingFactory> factory = MakeFactory();
    Ref<IWICBitmap> source;
    Check(factory->CreateBitmapFromHBITMAP(bitmap.get(), nullptr, WICBitmapIgnoreAlpha,
                                           source.GetAddressOf()),
          L"taking over a picture");
    Ref<IWICBitmapSource> pixels;
    Check(WICConvertBitmapSource(GUID_WICPixelFormat24bppBGR, source.Get(), pixels.GetAddressOf()),
          L"converting a picture");
    const Ref<IWICStream> file = MakeFile(factory.Get(), path);
    Ref<IWICBitmapEncoder> encoder;
    Check(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, encoder.GetAddressOf()),
          L"starting the PNG encoder");
    Check(encoder->Initialize(file.Get(), WICBitmapEncoderNoCache), L"starting a PNG file");
    Ref<IWICBitmapFrameEncode> frame;
    Check(encoder->CreateNewFrame(frame.GetAddressOf(), nullptr), L"starting a PNG file");
    Check(frame->Initialize(nullptr), L"starting a PNG file");
    Check(frame->WriteSource(pixels.Get(), nullptr), L"writing a PNG file");
    Check(frame->Commit(), L"writing a PNG file");
    Check(encoder->Commit(), L"writing a PNG file");
}

}  // namespace explorer
