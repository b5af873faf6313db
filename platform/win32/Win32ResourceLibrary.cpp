#include "platform/win32/Win32ResourceLibrary.h"

#include "platform/win32/Native.h"

namespace platform::win32 {

bool Win32ResourceLibrary::Load(std::string_view file)
{
    library.Reset();
    const auto path = ToNativePath(file); // a bare name would be searched for
    if (path) {
        library = ModuleHandle{
            LoadLibraryExW(path->c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE)};
    }
    return static_cast<bool>(library);
}

std::string Win32ResourceLibrary::LoadString(std::uint16_t id, int buffer)
{
    if (!library || buffer < 1)
        return {};
    std::wstring text(static_cast<std::size_t>(buffer), L'\0');
    const int length = LoadStringW(library.Get(), id, text.data(), buffer);
    return CutToUtf8({text.data(), static_cast<std::size_t>(length)});
}

} // namespace platform::win32
