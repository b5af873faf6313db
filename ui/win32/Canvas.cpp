#include "ui/win32/Canvas.h"

#include "ui/win32/NativeText.h"

#include <cstdlib>

namespace ui::win32 {

bool RegisterPlainClass(const wchar_t* name, UINT style, WNDPROC procedure)
{
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof(windowClass);
    windowClass.style = style;
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = GetSysColorBrush(COLOR_3DFACE);
    windowClass.lpszClassName = name;
    return RegisterClassExW(&windowClass) != 0;
}

const wchar_t* CanvasClass()
{
    static const wchar_t* const name = L"TSBrowserCanvas";
    static const bool registered = RegisterPlainClass(name, CS_HREDRAW | CS_VREDRAW, &DefWindowProcW);
    return registered ? name : L"";
}

void DrawNote(HDC context, const std::string& text, HFONT font, RECT room)
{
    const std::wstring native = ToNative(text);
    const HGDIOBJ before = SelectObject(context, font);
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, GetSysColor(COLOR_GRAYTEXT));
    DrawTextW(context, native.c_str(), static_cast<int>(native.size()), &room, DT_CENTER | DT_WORDBREAK | DT_NOPREFIX);
    SelectObject(context, before);
}

bool UnfocusedSelectionIsInvisible()
{
    constexpr int leastDifference = 12; ///< of 255; the usual grey differs by 15 from white
    const COLORREF row = GetSysColor(COLOR_BTNFACE);
    const COLORREF window = GetSysColor(COLOR_WINDOW);
    const auto isNear = [](BYTE a, BYTE b) { return std::abs(a - b) < leastDifference; };
    return isNear(GetRValue(row), GetRValue(window)) && isNear(GetGValue(row), GetGValue(window)) &&
           isNear(GetBValue(row), GetBValue(window));
}

void DrawSelectionFrame(HDC context, RECT row, int width)
{
    for (int i = 0; i < width; ++i) {
        FrameRect(context, &row, GetSysColorBrush(COLOR_HIGHLIGHT));
        InflateRect(&row, -1, -1);
    }
}

} // namespace ui::win32
