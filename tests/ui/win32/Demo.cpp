// Shows the demonstration form: `ui_win32_demo [view 0-3] [picture] [dialog]`, or the controls of dialogs:
// `ui_win32_demo controls`.
#include "DemoControls.h"
#include "DemoForm.h"

#include "ui/win32/NativeText.h"
#include "ui/win32/Win32Toolkit.h"

#include <cstdlib>
#include <shellapi.h>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int)
{
    ui::win32::Win32Toolkit toolkit;
    DemoForm form{toolkit};
    int count = 0;
    wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    if (count == 2 && std::wstring_view{arguments[1]} == L"controls") {
        DemoControls{toolkit}.ShowModal();
        return 0;
    }
    if (count > 1)
        form.lvList.SetView(static_cast<ui::ListView::View>(_wtoi(arguments[1]) % 4));
    if (count > 2)
        form.imgPreview.SetFile(ui::win32::FromNative(arguments[2]));
    form.PopupMenu.Find("popDelete")->Click = [&] { form.lvList.SetModel(nullptr); };
    form.lvList.ContextMenu = [&](ui::Point at) { form.ShowPopup(form.PopupMenu, at); };
    form.MenuBar.Find("new")->Click = [&] {
        DemoDialog dialog{toolkit};
        dialog.ShowModal();
    };
    form.MenuBar.Find("refresh")->Click = [&] {
        toolkit.ShowMessage({"Refreshed.", "Demonstration", ui::Icon::Information, {}});
    };
    form.Closed = [&] { toolkit.Quit(); };
    form.Show();
    if (count > 3)
        toolkit.Post([&] { form.MenuBar.Find("new")->Click(); });
    LocalFree(arguments);
    toolkit.Run();
    return 0;
}
