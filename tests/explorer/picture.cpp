#include "explorer/picture.h"

#include "hosting/error.h"
#include "hosting/ref.h"

#include <wincodec.h>

#include <vector>

namespace explorer {

using hosting::Check;
using hosting::Ref;

Picture ReadPicture(const std::wstring& path) {
    Ref<IWICImagingFactory> factory;
    Check(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                           IID_PPV_ARGS(factory.GetAddressOf())),
          L"starting the imaging component");
    Ref<IWICBitmapDecoder> decoder;
    Check(factory->CreateDecoderFromFilename(path.c_str(), nullptr, GENERIC_READ,
                                             WICDecodeMetadataCacheOnLoad, decoder.GetAddressOf()),
          L"opening a picture");
    Ref<IWICBitmapFrameDecode> frame;
    Check(decoder->GetFrame(0, frame.GetAddressOf()), L"reading a picture");
    Ref<IWICBitmapSource> source;
    Check(WICConvertBitmapSource(GUID_WICPixelFormat32bppBGRA, frame.Get(), source.GetAddressOf()),
          L"reading a picture");
    Picture picture;
    Check(source->GetSize(&picture.width, &picture.height), L"reading a picture");
    std::vector<std::uint32_t> pixels(std::size_t{picture.width} * picture.height);
    Check(source->CopyPixels(nullptr, picture.width * 4,
                             static_cast<UINT>(pixels.size() * sizeof(std::uint32_t)),
                             reinterpret_cast<BYTE*>(pixels.data())),
          L"reading a picture");
    picture.colors = {pixels.begin(), pixels.end()};
    return picture;
}

}  // namespace explorer
