#include "pictures/win32/ImageLoader.h"

#include "pictures/IconFile.h"
#include "pictures/win32/NativePixels.h"
#include "platform/win32/Native.h"
#include "platform/win32/Win32FileSystem.h"

#include <span>

namespace pictures::win32 {
namespace {

/// The only version of icons that there is (CreateIconFromResourceEx).
constexpr DWORD IconVersion = 0x00030000;
/// Sizes (pixels) that icons commonly hold, for scaling down from the next larger one.
constexpr int CommonSizes[] = {16, 20, 24, 32, 48, 64, 256};

/// The size to load a resource at: the loader scales what it has, which looks poor, so a size that is not there is made
/// from a larger one here.
int SourceSize(int size)
{
    for (const int common : CommonSizes)
        if (common >= size)
            return common;
    return size;
}

/// Empty when there is none.
std::span<BYTE> ResourceBytes(HMODULE module, const wchar_t* type, const wchar_t* name)
{
    const HRSRC found = FindResourceW(module, name, type);
    const HGLOBAL loaded = found != nullptr ? LoadResource(module, found) : nullptr;
    void* const bytes = loaded != nullptr ? LockResource(loaded) : nullptr;
    if (bytes == nullptr)
        return {};
    return {static_cast<BYTE*>(bytes), SizeofResource(module, found)};
}

/// The best picture of a group of icons, scaled to the size where it has another. Not LoadImage, which ties the icon to
/// its module: Wine keeps the module's path for each such icon that ever was.
IconHandle FromGroup(HMODULE module, const wchar_t* name, int size)
{
    const auto group = ResourceBytes(module, RT_GROUP_ICON, name);
    if (group.empty())
        return nullptr;
    const int best = LookupIconIdFromDirectoryEx(group.data(), TRUE, size, size, LR_DEFAULTCOLOR);
    const auto icon = ResourceBytes(module, RT_ICON, MAKEINTRESOURCEW(best));
    return IconHandle{icon.empty() ? nullptr
                                   : CreateIconFromResourceEx(icon.data(), static_cast<DWORD>(icon.size()), TRUE,
                                                              IconVersion, size, size, LR_DEFAULTCOLOR)};
}

/// Null when the icon cannot be read.
IconHandle Scaled(HICON icon, int from, int size)
{
    return ToIcon(FromIcon(icon, from).ScaledTo({size, size}));
}

} // namespace

IconHandle ImageLoader::FromResource(const wchar_t* name, int size) const
{
    const int source = SourceSize(size);
    IconHandle icon = FromGroup(module, name, source);
    if (!icon || source == size)
        return icon;
    IconHandle scaled = Scaled(icon.get(), source, size);
    return scaled ? std::move(scaled) : FromGroup(module, name, size);
}

IconHandle ImageLoader::Named(std::string_view name, int size) const
{
    if (name.empty())
        return nullptr;
    std::wstring resource = platform::win32::ToUtf16(name);
    CharUpperBuffW(resource.data(), static_cast<DWORD>(resource.size()));
    return FromResource(resource.c_str(), size);
}

IconHandle ImageLoader::FromFile(const std::string& path, int size) const
{
    // Read here, since the system's own loader ends at paths of 260 characters.
    const auto file = platform::win32::Win32FileSystem{}.Read(path, LargestIconFile);
    return file ? FromBytes(*file, size) : nullptr;
}

IconHandle ImageLoader::FromBytes(std::string_view file, int size)
{
    IconPicture picture = FindIconPicture(file, size);
    if (picture.side == 0)
        return nullptr;
    const auto make = [&](int side) {
        return IconHandle{CreateIconFromResourceEx(picture.bytes.data(), static_cast<DWORD>(picture.bytes.size()), TRUE,
                                                   IconVersion, side, side, LR_DEFAULTCOLOR)};
    };
    IconHandle icon = make(picture.side);
    if (!icon || picture.side == size)
        return icon;
    IconHandle scaled = Scaled(icon.get(), picture.side, size);
    return scaled ? std::move(scaled) : make(size);
}

IconHandle ImageLoader::Load(const IconSource& source, int size) const
{
    IconHandle icon = source.bytes          ? FromBytes(*source.bytes, size)
                      : source.file.empty() ? Named(source.name, size)
                                            : FromFile(source.file, size);
    return icon ? std::move(icon) : Named("category", size);
}

PixelBuffer ImageLoader::Pixels(const IconSource& source, int size) const
{
    return FromIcon(Load(source, size).get(), size);
}

ImageListHandle ImageLoader::Build(const std::map<int, IconSource>& icons, int size) const
{
    std::vector<PixelBuffer> pictures(icons.empty() ? 1 : static_cast<std::size_t>(icons.rbegin()->first) + 1);
    for (const auto& [index, source] : icons)
        pictures[static_cast<std::size_t>(index)] = Pixels(source, size);
    return ToImageList(pictures, size);
}

} // namespace pictures::win32
