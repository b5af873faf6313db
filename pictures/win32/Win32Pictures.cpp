#include "pictures/win32/Win32Pictures.h"

#include "pictures/win32/NativeHandle.h"
#include "platform/win32/Win32FileSystem.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace pictures::win32 {
namespace {

constexpr std::uint64_t LargestFile = 64 * 1024 * 1024; ///< bytes
constexpr UINT LargestSide = 20000;                     ///< pixels
/// What is decoded in full; a larger picture is first brought down by the system's own scaler.
constexpr double MostPixels = 16.0 * 1024 * 1024;
constexpr std::uint64_t LargestPicture = 200'000'000; ///< pixels
/// IWICBitmapSourceTransform, which the system's scaler asks a frame for; not every compiler's headers have it.
constexpr GUID DecoderScaling{0x3B16811B, 0x6A43, 0x4EC9, {0xB7, 0x13, 0x3D, 0x5A, 0x0C, 0x13, 0xB9, 0x40}};

/// COM for as long as a picture is read, on a thread that has not got it; a thread that has it keeps its own kind.
class Apartment {
public:
    Apartment() : entered{SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))} {}
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
    ~Apartment()
    {
        if (entered)
            CoUninitialize();
    }

private:
    bool entered;
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

/// A picture's file, read whole, with its first frame.
class OpenPicture {
public:
    explicit OpenPicture(const std::string& path);

    /// Nothing for a picture that is not to be decoded.
    explicit operator bool() const { return frame != nullptr; }
    PixelSize Size() const { return {static_cast<int>(width), static_cast<int>(height)}; }
    /// Empty when the file is broken further on.
    PixelBuffer Scaled(PixelSize size) const;

private:
    // In the order in which they lean on each other.
    Apartment apartment;
    std::string bytes;
    ComPointer<IWICImagingFactory> factory;
    ComPointer<IWICStream> stream;
    ComPointer<IWICBitmapDecoder> decoder;
    ComPointer<IWICBitmapFrameDecode> frame;
    UINT width{};
    UINT height{};

    /// As most photographs are: three bytes a pixel, which take no converter.
    bool IsPlain() const
    {
        WICPixelFormatGUID format{};
        return SUCCEEDED(frame->GetPixelFormat(&format)) && IsEqualGUID(format, GUID_WICPixelFormat24bppBGR);
    }
    PixelBuffer ScaledPlain(PixelSize size) const;
    /// Whether the decoder takes part in scaling: Windows' own for photographs gives an eighth in a fraction of the
    /// time.
    bool DecoderScales() const
    {
        return Receive<IUnknown>([&](IUnknown** result) {
                   return frame->QueryInterface(DecoderScaling, reinterpret_cast<void**>(result));
               }) != nullptr;
    }
    /// The picture at a size that is not larger than its own, or as many pixels as are decoded of a huge one. A smaller
    /// size is left to the system's scaler.
    PixelBuffer Pixels(PixelSize size) const;
    bool IsWithinBounds() const
    {
        return width > 0 && height > 0 && width <= LargestSide && height <= LargestSide &&
               std::uint64_t{width} * height <= LargestPicture;
    }
};

OpenPicture::OpenPicture(const std::string& path)
{
    // Read here, since the decoders' own way to a file ends at 260 characters.
    auto contents = platform::win32::Win32FileSystem{}.Read(path, LargestFile);
    if (!contents || contents->empty())
        return;
    bytes = std::move(*contents);
    factory = CreateComObject<IWICImagingFactory>(CLSID_WICImagingFactory, IID_IWICImagingFactory);
    if (!factory)
        return;
    stream = Receive<IWICStream>([&](IWICStream** result) { return factory->CreateStream(result); });
    if (!stream ||
        FAILED(stream->InitializeFromMemory(reinterpret_cast<BYTE*>(bytes.data()), static_cast<DWORD>(bytes.size()))))
        return;
    decoder = Receive<IWICBitmapDecoder>([&](IWICBitmapDecoder** result) {
        return factory->CreateDecoderFromStream(stream.get(), nullptr, WICDecodeMetadataCacheOnDemand, result);
    });
    if (!decoder)
        return;
    frame =
        Receive<IWICBitmapFrameDecode>([&](IWICBitmapFrameDecode** result) { return decoder->GetFrame(0, result); });
    if (frame && (FAILED(frame->GetSize(&width, &height)) || !IsWithinBounds()))
        frame.reset();
}

/// Never holds all pixels at once: fetching and giving back megabytes for each thumbnail takes longer than scaling.
PixelBuffer OpenPicture::ScaledPlain(PixelSize size) const
{
    constexpr int most = 16; // rows at a time
    const std::size_t stride = std::size_t{width} * 3;
    std::vector<BYTE> plain(stride * most);
    int top = 0;
    int count = 0;
    // Each row is fetched once: a decoder that is asked for an earlier one may begin at the top. The last row stays,
    // since it is scaled together with the next.
    const auto load = [&](int y) {
        const int kept = count > 0 && y == top + count ? 1 : 0;
        std::memmove(plain.data(), plain.data() + stride * static_cast<std::size_t>(std::max(count - 1, 0)), stride);
        const int first = kept > 0 ? y : std::max(0, y - 1);
        const int fresh = std::min(most - kept, Size().height - first);
        const WICRect rows{0, first, Size().width, fresh};
        top = first - kept;
        count = kept + fresh;
        return SUCCEEDED(frame->CopyPixels(&rows, static_cast<UINT>(stride),
                                           static_cast<UINT>(stride * static_cast<std::size_t>(fresh)),
                                           plain.data() + stride * static_cast<std::size_t>(kept)));
    };
    return PixelBuffer::Scaled(Size(), size, PixelBuffer::Channels::Colours, [&](int y) -> const std::uint8_t* {
        if (y >= top + count && !load(y))
            return nullptr;
        return plain.data() + static_cast<std::size_t>(y - top) * stride;
    });
}

PixelBuffer OpenPicture::Scaled(PixelSize size) const
{
    const bool leftToDecoder = size.width < Size().width && size.height < Size().height && DecoderScales();
    if (!leftToDecoder && size != Size() && IsPlain())
        return ScaledPlain(size);
    PixelBuffer pixels = Pixels(leftToDecoder ? size : Size());
    return pixels.Size() == size ? pixels : pixels.ScaledTo(size);
}

PixelBuffer OpenPicture::Pixels(PixelSize size) const
{
    if (const double total = static_cast<double>(size.width) * size.height; total > MostPixels) {
        const double scale = std::sqrt(MostPixels / total);
        size = {std::max(1, static_cast<int>(size.width * scale)), std::max(1, static_cast<int>(size.height * scale))};
    }
    IWICBitmapSource* source = frame.get();
    ComPointer<IWICBitmapScaler> scaler;
    if (size != Size()) {
        scaler =
            Receive<IWICBitmapScaler>([&](IWICBitmapScaler** result) { return factory->CreateBitmapScaler(result); });
        if (!scaler || FAILED(scaler->Initialize(source, static_cast<UINT>(size.width), static_cast<UINT>(size.height),
                                                 WICBitmapInterpolationModeFant)))
            return {};
        source = scaler.get();
    }
    const auto converter = Receive<IWICFormatConverter>(
        [&](IWICFormatConverter** result) { return factory->CreateFormatConverter(result); });
    if (!converter || FAILED(converter->Initialize(source, GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone,
                                                   nullptr, 0, WICBitmapPaletteTypeCustom)))
        return {};
    PixelBuffer pixels{size};
    if (FAILED(converter->CopyPixels(nullptr, static_cast<UINT>(pixels.Stride()),
                                     static_cast<UINT>(pixels.Bytes().size()), pixels.Bytes().data())))
        return {};
    return pixels;
}

} // namespace

PixelSize Win32Pictures::SizeOf(const std::string& path) const
{
    const OpenPicture picture{path};
    return picture ? picture.Size() : PixelSize{};
}

PixelBuffer Win32Pictures::Decode(const std::string& path, PixelSize room, int enlargement) const
{
    if (room.Empty())
        return {};
    const OpenPicture picture{path};
    return picture ? picture.Scaled(Fitted(picture.Size(), room, enlargement)) : PixelBuffer{};
}

std::uint64_t Win32Pictures::Stamp(const std::string& path) const
{
    const auto file = platform::win32::Win32FileSystem{}.Stat(path);
    return file ? static_cast<std::uint64_t>(file->modified) * 31 + file->size + 1 : 0;
}

} // namespace pictures::win32
