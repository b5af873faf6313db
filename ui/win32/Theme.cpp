#include "ui/win32/Theme.h"

#include "platform/win32/SystemLibrary.h"

namespace ui::win32 {
namespace {

template <class Function>
Function ThemeFunction(const char* name)
{
    static const platform::win32::ModuleHandle library = platform::win32::LoadSystemLibrary(L"uxtheme.dll");
    Function function = nullptr;
    platform::win32::Look(library, name, function);
    return function;
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
