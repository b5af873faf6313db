#include "tests/automation/StandIn.h"

#include "automation/Application.h"
#include "automation/Server.h"
#include "automation/WindowsHeader.h"
#include "platform/Utf.h"

#include <memory>
#include <new>
#include <stdexcept>
#include <string>

namespace {

/// Stands where the browser stands: one window at a time, a flag for "a dialog is open", the arguments as the result.
class StandIn final : public automation::Application {
public:
    StandIn()
    {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = WindowProcedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = stand_in::WindowClass;
        RegisterClassW(&windowClass);
    }

    std::string Start(std::string hostKind, std::string arg2, std::string arg3, std::string arg4,
                      std::string caption) override
    {
        if (window)
            return "refused";
        if (hostKind == stand_in::LoadsByName)
            return LoadLibraryW(stand_in::PlantedLibrary) != nullptr ? "planted" : "not found";
        if (hostKind == stand_in::Throws)
            throw std::runtime_error{"stand-in"};
        if (hostKind == stand_in::OutOfMemory)
            throw std::bad_alloc{};
        if (hostKind != stand_in::Fails) {
            const std::wstring title = platform::utf::ToUtf16<wchar_t>(hostKind);
            window = CreateWindowExW(0, stand_in::WindowClass, title.c_str(), 0, 0, 0, 100, 100, nullptr, nullptr,
                                     nullptr, this);
            SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        }
        if (hostKind == stand_in::ClosesAtOnce)
            DestroyWindow(window);
        return hostKind + "|" + arg2 + "|" + arg3 + "|" + arg4 + "|" + caption;
    }
    bool IsRunning() const override { return window != nullptr; }
    bool ModalActive() const override { return dialogOpen; }

    void Run() override
    {
        MSG message;
        while (GetMessageW(&message, nullptr, 0, 0) > 0)
            DispatchMessageW(&message);
    }
    void Quit() override { PostQuitMessage(0); }

private:
    static LRESULT CALLBACK WindowProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept
    {
        auto* const self = reinterpret_cast<StandIn*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
        if (self && message == stand_in::DialogMessage)
            self->dialogOpen = wParam != 0;
        if (self && message == WM_DESTROY) {
            self->window = nullptr;
            self->Closed();
        }
        return DefWindowProcW(handle, message, wParam, lParam);
    }

    HWND window{};
    bool dialogOpen{};
};

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    automation::ServerOptions options;
    wchar_t patience[16];
    if (GetEnvironmentVariableW(stand_in::PatienceVariable, patience, 16) != 0)
        options.patience = std::chrono::milliseconds{_wtoi(patience)};
    return automation::RunProcess(GetCommandLineW(), [] { return std::make_unique<StandIn>(); }, options);
}
