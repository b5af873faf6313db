#include "ui/win32/Dpi.h"

#include "platform/win32/SystemLibrary.h"

namespace ui::win32 {
namespace {

constexpr int TwipsPerInch = 1440;

/// A function of user32 that older systems lack; null there.
template <class Function>
Function UserFunction(const char* name)
{
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)));
}

LOGFONTW MessageFont(int dpi)
{
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof(metrics);
    using ForDpi = BOOL(WINAPI*)(UINT, UINT, PVOID, UINT, UINT);
    static const auto forDpi = UserFunction<ForDpi>("SystemParametersInfoForDpi");
    if (forDpi != nullptr && forDpi(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0, static_cast<UINT>(dpi)) != 0)
        return metrics.lfMessageFont;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
    metrics.lfMessageFont.lfHeight = MulDiv(metrics.lfMessageFont.lfHeight, dpi, SystemDpi());
    return metrics.lfMessageFont;
}

} // namespace

int SystemDpi()
{
    static const int dpi = [] {
        HDC screen = GetDC(nullptr);
        const int value = GetDeviceCaps(screen, LOGPIXELSX);
        ReleaseDC(nullptr, screen);
        return value > 0 ? value : USER_DEFAULT_SCREEN_DPI;
    }();
    return dpi;
}

int DpiOf(HWND window)
{
    using ForWindow = UINT(WINAPI*)(HWND);
    static const auto forWindow = UserFunction<ForWindow>("GetDpiForWindow");
    const int dpi = forWindow != nullptr ? static_cast<int>(forWindow(window)) : 0;
    return dpi > 0 ? dpi : SystemDpi();
}

int DpiOf(HMONITOR monitor)
{
    using ForMonitor = HRESULT(WINAPI*)(HMONITOR, int, UINT*, UINT*);
    static const platform::win32::ModuleHandle library = platform::win32::LoadSystemLibrary(L"shcore.dll");
    ForMonitor forMonitor = nullptr;
    platform::win32::Look(library, "GetDpiForMonitor", forMonitor);
    constexpr int effective = 0; // MDT_EFFECTIVE_DPI
    UINT x = 0;
    UINT y = 0;
    return forMonitor != nullptr && SUCCEEDED(forMonitor(monitor, effective, &x, &y)) && x > 0 ? static_cast<int>(x)
                                                                                               : SystemDpi();
}

int ToPixels(int twips, int dpi)
{
    return MulDiv(twips, dpi, TwipsPerInch);
}

int ToTwips(int pixels, int dpi)
{
    return MulDiv(pixels, TwipsPerInch, dpi);
}

int ToTwipsUp(int pixels, int dpi)
{
    return (pixels * TwipsPerInch + dpi - 1) / dpi;
}

RECT ToPixels(const Rect& rect, int dpi)
{
    return {ToPixels(rect.left, dpi), ToPixels(rect.top, dpi), ToPixels(rect.Right(), dpi),
            ToPixels(rect.Bottom(), dpi)};
}

Rect ToTwips(const RECT& rect, int dpi)
{
    return {ToTwips(rect.left, dpi), ToTwips(rect.top, dpi), ToTwips(rect.right - rect.left, dpi),
            ToTwips(rect.bottom - rect.top, dpi)};
}

int PictureEnlargement(int dpi)
{
    return dpi > USER_DEFAULT_SCREEN_DPI ? 2 : 1;
}

int SystemMetric(int index, int dpi)
{
    using ForDpi = int(WINAPI*)(int, UINT);
    static const auto forDpi = UserFunction<ForDpi>("GetSystemMetricsForDpi");
    if (forDpi != nullptr)
        return forDpi(index, static_cast<UINT>(dpi));
    return MulDiv(GetSystemMetrics(index), dpi, SystemDpi());
}

SIZE OuterSize(SIZE client, DWORD style, DWORD extendedStyle, bool hasMenu, int dpi)
{
    RECT rect{0, 0, client.cx, client.cy};
    using ForDpi = BOOL(WINAPI*)(LPRECT, DWORD, BOOL, DWORD, UINT);
    static const auto forDpi = UserFunction<ForDpi>("AdjustWindowRectExForDpi");
    if (forDpi == nullptr || forDpi(&rect, style, hasMenu, extendedStyle, static_cast<UINT>(dpi)) == 0)
        AdjustWindowRectEx(&rect, style, hasMenu, extendedStyle);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

Fonts::Fonts(int dpi)
{
    LOGFONTW font = MessageFont(dpi);
    normal.reset(CreateFontIndirectW(&font));
    font.lfHeight = MulDiv(font.lfHeight, 13, 10);
    font.lfWeight = FW_BOLD;
    heading.reset(CreateFontIndirectW(&font));
}

} // namespace ui::win32
