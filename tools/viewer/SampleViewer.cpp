// Shows a sample template: its preview picture, or the beginning of its text. Opened by run.sh's own registrations, so
// that a double-click in the browser opens something on a machine without the office programs.
// First: it takes in more of the system's headers than the platform's, which undoes a macro that they need.
#include "ui/win32/Win32Toolkit.h"

#include "platform/Path.h"
#include "platform/win32/Native.h"
#include "platform/win32/System.h"
#include "ui/Form.h"
#include "ui/Image.h"
#include "ui/Label.h"

#include <string>
#include <string_view>

namespace {

namespace path = platform::path;

constexpr int Margin = 150;                        ///< twips
constexpr ui::Rect Place{3000, 1500, 9000, 10500}; ///< twips
constexpr std::uint64_t TextLimit = 1 << 20;       ///< bytes of a file that is shown as text
constexpr std::size_t TextShown = 4000;            ///< bytes of it

class frmViewer final : public ui::Form {
public:
    frmViewer(ui::Toolkit& toolkit, platform::FileSystem& files, const std::string& document)
        : Form{toolkit, "frmViewer", Style::Sizable}
    {
        const std::string name{path::Name(document)};
        SetCaption(name + " - Sample Viewer");
        SetPlacement(Place);
        const std::string preview = path::Join(path::Join(path::Parent(document), "Previews"),
                                               std::string{path::WithoutLastFour(name)} + ".jpg");
        if (files.Stat(preview))
            imgPage.SetFile(preview);
        else
            lblText.SetCaption(
                files.Read(document, TextLimit).value_or("This file cannot be read.").substr(0, TextShown));
        Resize = [this] {
            const ui::Size client = ClientSize();
            const ui::Rect page{Margin, Margin, client.width - 2 * Margin, client.height - 2 * Margin};
            imgPage.SetBounds(imgPage.File().empty() ? ui::Rect{} : page);
            lblText.SetBounds(imgPage.File().empty() ? page : ui::Rect{});
        };
    }

    ui::Image imgPage{*this};
    ui::Label lblText{*this};
};

/// The last argument: spreadsheets are opened with a switch before it.
std::string DocumentOf(std::wstring_view commandLine)
{
    int count = 0;
    LPWSTR* arguments = CommandLineToArgvW(commandLine.data(), &count);
    std::string document;
    if (arguments != nullptr && count > 1)
        document = platform::win32::ToUtf8(arguments[count - 1]);
    LocalFree(arguments);
    return document;
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
        return 1;
    {
        ui::win32::Win32Toolkit toolkit;
        platform::win32::System system{[&](std::function<void()> task) { toolkit.Post(std::move(task)); }};
        frmViewer form{toolkit, system.AsPlatform().files, DocumentOf(GetCommandLineW())};
        form.Closed = [&] { toolkit.Quit(); };
        form.Show();
        toolkit.Run();
    }
    CoUninitialize();
    return 0;
}
