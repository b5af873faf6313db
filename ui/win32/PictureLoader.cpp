#include "ui/win32/PictureLoader.h"

#include "ui/win32/NativeText.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace ui::win32 {
namespace {

constexpr DWORD LargestFile = 64 * 1024 * 1024; ///< bytes
constexpr UINT LargestSide = 20000;             ///< pixels
/// What is decoded in full; a larger picture is first brought down by the system's own scaler.
constexpr std::uint64_t MostPixels = 16 * 1024 * 1024;
constexpr std::uint64_t LargestPicture = 200'000'000; ///< pixels

struct OpenPicture {
    ComPointer<IWICImagingFactory> factory;
    ComPointer<IWICBitmapFrameDecode> frame;
    UINT width{};
    UINT height{};
};

/// Receives an interface pointer of a call that succeeded.
template <class Interface, class Call>
ComPointer<Interface> Receive(Call call)
{
    Interface* object = nullptr;
    if (FAILED(call(&object)))
        object = nullptr;
    return ComPointer<Interface>{object};
}

/// `frame` is null for a picture that is not to be decoded.
OpenPicture Open(const std::string& path)
{
    OpenPicture picture;
    const std::wstring native = ToNative(path);
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (native.empty() || !GetFileAttributesExW(native.c_str(), GetFileExInfoStandard, &data) ||
        (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 || data.nFileSizeHigh != 0 ||
        data.nFileSizeLow > LargestFile)
        return picture;
    picture.factory = CreateComObject<IWICImagingFactory>(CLSID_WICImagingFactory, IID_IWICImagingFactory);
    if (!picture.factory)
        return picture;
    const auto decoder = Receive<IWICBitmapDecoder>([&](IWICBitmapDecoder** result) {
        return picture.factory->CreateDecoderFromFilename(native.c_str(), nullptr, GENERIC_READ,
                                                          WICDecodeMetadataCacheOnDemand, result);
    });
    if (!decoder)
        return picture;
    picture.frame =
        Receive<IWICBitmapFrameDecode>([&](IWICBitmapFrameDecode** result) { return decoder->GetFrame(0, result); });
    const bool fits = picture.frame && SUCCEEDED(picture.frame->GetSize(&picture.width, &picture.height)) &&
                      picture.width > 0 && picture.height > 0 && picture.width <= LargestSide &&
                      picture.height <= LargestSide && std::uint64_t{picture.width} * picture.height <= LargestPicture;
    if (!fits)
        picture.frame.reset();
    return picture;
}

/// The size with these proportions inside `bounds`, not larger than `width` x `height`.
SIZE Fitted(UINT width, UINT height, SIZE bounds)
{
    const double scale =
        std::min({1.0, static_cast<double>(bounds.cx) / width, static_cast<double>(bounds.cy) / height});
    return {std::max(1L, std::lround(width * scale)), std::max(1L, std::lround(height * scale))};
}

} // namespace

SIZE PictureLoader::NaturalSize(const std::string& path)
{
    const OpenPicture picture = Open(path);
    return picture.frame ? SIZE{static_cast<LONG>(picture.width), static_cast<LONG>(picture.height)} : SIZE{};
}

PixelBuffer PictureLoader::Load(const std::string& path, SIZE bounds)
{
    if (bounds.cx <= 0 || bounds.cy <= 0)
        return {};
    const OpenPicture picture = Open(path);
    if (!picture.frame)
        return {};
    UINT width = picture.width;
    UINT height = picture.height;
    IWICBitmapSource* source = picture.frame.get();

    ComPointer<IWICBitmapScaler> scaler;
    if (const std::uint64_t total = std::uint64_t{width} * height; total > MostPixels) {
        const double scale = std::sqrt(static_cast<double>(MostPixels) / static_cast<double>(total));
        width = std::max(1u, static_cast<UINT>(width * scale));
        height = std::max(1u, static_cast<UINT>(height * scale));
        scaler = Receive<IWICBitmapScaler>(
            [&](IWICBitmapScaler** result) { return picture.factory->CreateBitmapScaler(result); });
        if (!scaler || FAILED(scaler->Initialize(source, width, height, WICBitmapInterpolationModeFant)))
            return {};
        source = scaler.get();
    }
    const auto converter = Receive<IWICFormatConverter>(
        [&](IWICFormatConverter** result) { return picture.factory->CreateFormatConverter(result); });
    if (!converter || FAILED(converter->Initialize(source, GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone,
                                                   nullptr, 0, WICBitmapPaletteTypeCustom)))
        return {};
    PixelBuffer pixels{static_cast<int>(width), static_cast<int>(height)};
    if (FAILED(converter->CopyPixels(nullptr, static_cast<UINT>(pixels.Stride()), static_cast<UINT>(pixels.Size()),
                                     pixels.Bytes())))
        return {};
    const SIZE fitted = Fitted(picture.width, picture.height, bounds);
    if (fitted.cx == pixels.Width() && fitted.cy == pixels.Height())
        return pixels;
    return pixels.ScaledTo(fitted.cx, fitted.cy);
}

} // namespace ui::win32
