#include "platform/win32/SystemLibrary.h"

#include <string>

namespace platform::win32 {

ModuleHandle LoadSystemLibrary(const wchar_t* name)
{
    wchar_t folder[MAX_PATH]{};
    const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
    if (length == 0 || length >= MAX_PATH)
        return {};
    const std::wstring file = std::wstring{folder, length} + L"\\" + name;
    return ModuleHandle{LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH)};
}

} // namespace platform::win32
