#include "automation/Application.h"
#include "automation/Server.h"
#include "automation/WindowsHeader.h"

#include "app/shell/Browser.h"
#include "platform/win32/System.h"
#include "ui/win32/Win32Toolkit.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace {

/// The template browser on the real system.
class BrowserApplication final : public automation::Application {
public:
    BrowserApplication()
    {
        browser.Closed = [this] {
            if (Closed)
                Closed();
        };
    }

    std::string Start(std::string hostKind, std::string arg2, std::string arg3, std::string arg4,
                      std::string caption) override
    {
        return browser.Start(std::move(hostKind), std::move(arg2), std::move(arg3), std::move(arg4),
                             std::move(caption));
    }
    bool IsRunning() const override { return browser.IsRunning(); }
    bool ModalActive() const override { return toolkit.ModalActive(); }
    void Run() override { toolkit.Run(); }
    void Quit() override { toolkit.Quit(); }

private:
    ui::win32::Win32Toolkit toolkit;
    platform::win32::System system{[this](std::function<void()> task) { toolkit.Post(std::move(task)); }};
    app::Browser browser{system.AsPlatform(), toolkit, toolkit.Pictures()};
};

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    return automation::RunProcess(GetCommandLineW(), [] { return std::make_unique<BrowserApplication>(); });
}
