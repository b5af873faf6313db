#include "ui/win32/ImageLoader.h"

#include "ui/win32/NativeText.h"
#include "ui/win32/PixelBuffer.h"

namespace ui::win32 {
namespace {

/// More than any real icon file; a larger one is not looked at.
constexpr LONGLONG LargestIconFile = 4 * 1024 * 1024;
/// Sizes (pixels) that icons commonly hold, for scaling down from the next larger one.
constexpr int CommonSizes[] = {16, 20, 24, 32, 48, 64, 256};

/// The widest picture that the icon gave: the loader scales what it has, which looks poor, so a size that is not
/// there is made from a larger one here.
int SourceSize(int size)
{
    for (const int common : CommonSizes)
        if (common >= size)
            return common;
    return size;
}

template <class LoadAt>
IconHandle LoadScaled(LoadAt loadAt, int size)
{
    const int source = SourceSize(size);
    IconHandle icon{loadAt(source)};
    if (!icon || source == size)
        return icon;
    const PixelBuffer pixels = PixelBuffer::FromIcon(icon.get(), source);
    IconHandle scaled = pixels.ScaledTo(size, size).ToIcon();
    return scaled ? std::move(scaled) : IconHandle{loadAt(size)};
}

IconHandle BlankIcon(int size)
{
    return PixelBuffer{size, size}.ToIcon();
}

} // namespace

IconHandle ImageLoader::FromResource(const wchar_t* name, int size) const
{
    return LoadScaled(
        [&](int at) { return static_cast<HICON>(LoadImageW(module, name, IMAGE_ICON, at, at, LR_DEFAULTCOLOR)); },
        size);
}

IconHandle ImageLoader::Named(std::string_view name, int size) const
{
    if (name.empty())
        return nullptr;
    std::wstring resource = ToNative(name);
    CharUpperBuffW(resource.data(), static_cast<DWORD>(resource.size()));
    return FromResource(resource.c_str(), size);
}

IconHandle ImageLoader::FromFile(const std::string& path, int size) const
{
    const std::wstring native = ToNative(path);
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (native.empty() || !GetFileAttributesExW(native.c_str(), GetFileExInfoStandard, &data) ||
        (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 || data.nFileSizeHigh != 0 ||
        data.nFileSizeLow > LargestIconFile)
        return nullptr;
    return LoadScaled(
        [&](int at) {
            return static_cast<HICON>(LoadImageW(nullptr, native.c_str(), IMAGE_ICON, at, at, LR_LOADFROMFILE));
        },
        size);
}

IconHandle ImageLoader::Load(const ui::ImageList::Picture& picture, int size) const
{
    IconHandle icon = picture.file.empty() ? Named(picture.name, size) : FromFile(picture.file, size);
    return icon ? std::move(icon) : Named("category", size);
}

ImageListHandle ImageLoader::Build(const ui::ImageList& pictures, int size) const
{
    ImageListHandle list{ImageList_Create(size, size, ILC_COLOR32 | ILC_MASK, pictures.Last() + 1, 8)};
    const IconHandle blank = BlankIcon(size);
    for (int index = 0; index <= pictures.Last(); ++index) {
        const ui::ImageList::Picture* picture = pictures.Find(index);
        const IconHandle icon = picture != nullptr ? Load(*picture, size) : nullptr;
        Append(list.get(), icon ? icon.get() : blank.get());
    }
    return list;
}

IconHandle ImageLoader::Disabled(HICON icon, int size)
{
    PixelBuffer pixels = PixelBuffer::FromIcon(icon, size);
    pixels.Fade();
    return pixels.ToIcon();
}

void ImageLoader::Append(HIMAGELIST list, HICON icon)
{
    ImageList_ReplaceIcon(list, -1, icon);
}

} // namespace ui::win32
