#include "ui/win32/Canvas.h"

#include "ui/win32/WindowsHeader.h"

namespace ui::win32 {

const wchar_t* CanvasClass()
{
    static const wchar_t* const name = L"TSBrowserCanvas";
    static const ATOM registered = [] {
        WNDCLASSEXW windowClass{};
        windowClass.cbSize = sizeof(windowClass);
        windowClass.style = CS_HREDRAW | CS_VREDRAW;
        windowClass.lpfnWndProc = &DefWindowProcW;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        windowClass.hbrBackground = GetSysColorBrush(COLOR_3DFACE);
        windowClass.lpszClassName = name;
        return RegisterClassExW(&windowClass);
    }();
    return registered != 0 ? name : L"";
}

} // namespace ui::win32
