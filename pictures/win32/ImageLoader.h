#pragma once

#include "pictures/IconSource.h"
#include "pictures/PixelBuffer.h"
#include "pictures/win32/NativeHandle.h"

#include <map>
#include <string>
#include <string_view>

namespace pictures::win32 {

/// Loads icons: the program's own by name from its resources, others from icon files. Every one comes at the size
/// asked for (pixels), made from the nearest picture that is not smaller where there is one.
class ImageLoader {
public:
    explicit ImageLoader(HINSTANCE resourceModule) : module{resourceModule} {}

    IconHandle FromResource(const wchar_t* name, int size) const;
    /// Null for a name that the program has no picture of.
    IconHandle Named(std::string_view name, int size) const;
    /// Null for a file that is missing, too large or no icon.
    IconHandle FromFile(const std::string& path, int size) const;
    /// The same for what is in one.
    static IconHandle FromBytes(std::string_view file, int size);
    /// An icon that cannot be loaded is replaced by the one of an ordinary category.
    IconHandle Load(const IconSource& source, int size) const;
    PixelBuffer Pixels(const IconSource& source, int size) const;
    /// Indexed by the keys of `icons`; gaps are blank.
    ImageListHandle Build(const std::map<int, IconSource>& icons, int size) const;

private:
    HINSTANCE module;
};

} // namespace pictures::win32
