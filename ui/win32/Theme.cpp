#include "ui/win32/Theme.h"

#include <string>

namespace ui::win32 {
namespace {

/// The theme library is not among those that the system always takes from its own folder: a static import would load a
/// copy planted beside the program.
HMODULE ThemeLibrary()
{
    static const HMODULE library = [] {
        wchar_t folder[MAX_PATH]{};
        const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
        return length > 0 && length < MAX_PATH ? LoadLibraryW((std::wstring{folder, length} + L"\\uxtheme.dll").c_str())
                                               : nullptr;
    }();
    return library;
}

template <class Function>
Function ThemeFunction(const char* name)
{
    const HMODULE library = ThemeLibrary();
    return library != nullptr ? reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)))
                              : nullptr;
}

} // namespace

bool IsThemed()
{
    const auto isAppThemed = ThemeFunction<BOOL(WINAPI*)()>("IsAppThemed");
    return isAppThemed != nullptr && isAppThemed() != FALSE;
}

void UseExplorerTheme(HWND control)
{
    if (const auto setTheme = ThemeFunction<HRESULT(WINAPI*)(HWND, LPCWSTR, LPCWSTR)>("SetWindowTheme"))
        setTheme(control, L"Explorer", nullptr);
}

} // namespace ui::win32
