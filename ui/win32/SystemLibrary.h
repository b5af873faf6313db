#pragma once

#include "ui/win32/WindowsHeader.h"

#include <string>

namespace ui::win32 {

/// A function of a library in the system's folder; null where there is none. A static import, or a name alone, would
/// load a copy planted beside the program: these libraries are not among those that the system always takes from its
/// own folder.
template <class Function>
Function FromSystemLibrary(const wchar_t* library, const char* name)
{
    wchar_t folder[MAX_PATH]{};
    const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
    if (length == 0 || length >= MAX_PATH)
        return nullptr;
    // It stays loaded for good.
    const std::wstring file = std::wstring{folder, length} + L"\\" + library;
    HMODULE module = LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    return module != nullptr ? reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)))
                             : nullptr;
}

} // namespace ui::win32
