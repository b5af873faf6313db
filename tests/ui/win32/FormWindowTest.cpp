#include "WindowTest.h"

#include "ui/win32/NativeText.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using ui::win32::ToPixels;
using ui::win32::ToTwips;

namespace {

class FormWindowTest : public WindowTest {
protected:
    DemoForm form{toolkit};
    HWND window{};

    void SetUp() override
    {
        Open(form);
        Focus(form.lvList);
        window = HandleOf(form);
    }

    /// A menu's entries as the user reads them.
    static std::vector<std::string> Entries(HMENU menu)
    {
        std::vector<std::string> entries;
        for (int i = 0; i < GetMenuItemCount(menu); ++i) {
            wchar_t text[128]{};
            GetMenuStringW(menu, static_cast<UINT>(i), text, 128, MF_BYPOSITION);
            const UINT state = GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
            std::string entry = ui::win32::FromNative(text);
            if ((state & MF_SEPARATOR) != 0 && entry.empty())
                entry = "-";
            else if ((state & MF_GRAYED) != 0)
                entry += " (grey)";
            if ((state & MF_CHECKED) != 0)
                entry += " (checked)";
            entries.push_back(entry);
        }
        return entries;
    }

    HMENU OpenMenu(int index)
    {
        HMENU popup = GetSubMenu(GetMenu(window), index);
        SendMessageW(window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup), MAKELPARAM(index, FALSE));
        return popup;
    }

    void Drag(const ui::Splitter& splitter, POINT from, POINT to, bool release)
    {
        const HWND bar = HandleOf(splitter);
        PostMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from.x, from.y));
        PostMessageW(bar, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(to.x / 2, to.y));
        PostMessageW(bar, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(to.x, to.y));
        if (release)
            PostMessageW(bar, WM_LBUTTONUP, 0, MAKELPARAM(to.x, to.y));
        Pump();
    }
};

} // namespace

TEST_F(FormWindowTest, FillsAMenuFromItsStateWhenItOpens)
{
    EXPECT_THAT(Entries(GetMenu(window)), ElementsAre("&File", "&View", "&Help"));
    EXPECT_THAT(Entries(OpenMenu(0)), ElementsAre("&New\tCtrl+N", "&Open\tF3", "-", "&Recent", "E&xit\tCtrl+Q (grey)"));
    EXPECT_THAT(form.Events, ElementsAre("opening"));

    form.MenuOpening = [&] {
        form.MenuBar.Find("hidden")->Visible = true;
        form.MenuBar.Find("open")->Visible = false;
        form.MenuBar.Find("recent")->Visible = false;
        form.MenuBar.Find("exit")->Visible = false;
        form.MenuBar.Find("recent")->Clear();
    };
    EXPECT_THAT(Entries(OpenMenu(0)), ElementsAre("&New\tCtrl+N", "Hidden")) << "no separator is left at the end";
    EXPECT_THAT(Entries(OpenMenu(1)), ElementsAre("&Details (checked)", "Refresh\tF5"));
    form.Events.clear();
    SendMessageW(window, WM_COMMAND, GetMenuItemID(GetSubMenu(GetMenu(window), 1), 1), 0);
    EXPECT_THAT(form.Events, ElementsAre("menu refresh"));
}

TEST_F(FormWindowTest, AChosenEntryThatIsGoneByThenDoesNothing)
{
    HMENU popup = OpenMenu(0);
    const UINT first = GetMenuItemID(GetSubMenu(popup, 3), 0);
    form.MenuBar.Find("recent")->Clear();
    form.Events.clear();
    SendMessageW(window, WM_COMMAND, first, 0);
    EXPECT_THAT(form.Events, IsEmpty());
}

TEST_F(FormWindowTest, ShortcutsRunFromAnyControlThatDoesNotNeedTheKey)
{
    Press('N', {VK_CONTROL});
    EXPECT_THAT(form.Events, Contains("menu new"));
    Press(VK_F5);
    EXPECT_THAT(form.Events, Contains("menu refresh"));
    form.Events.clear();
    Press('N', {VK_CONTROL, VK_MENU});
    EXPECT_THAT(form.Events, IsEmpty()) << "AltGr types a character";

    std::vector<ui::Key> keys;
    form.KeyDown = [&](const ui::Key& key) {
        keys.push_back(key);
        return true;
    };
    Press(VK_TAB, {VK_CONTROL});
    Press(VK_RETURN, {VK_MENU});
    Press('N');
    EXPECT_THAT(keys, ElementsAre(ui::Key{ui::KeyCode::Tab, true}, ui::Key{ui::KeyCode::Enter, false, false, true}));

    form.lvList.KeyDown = [](const ui::Key& key) { return key.code == ui::KeyCode::F5; };
    form.Events.clear();
    Press(VK_F5);
    EXPECT_THAT(form.Events, IsEmpty()) << "the control with the keyboard comes first";
}

TEST_F(FormWindowTest, ReportsWhereTheUserPutsTheWindowAndNotWhereCodeDoes)
{
    const int dpi = ui::win32::SystemDpi();
    int resizes = 0;
    form.Resize = [&] { ++resizes; };
    form.SetPlacement({1500, 1500, 12000, 9000});
    RECT outer{};
    GetWindowRect(window, &outer);
    EXPECT_EQ(ToTwips(outer, dpi), (ui::Rect{1500, 1500, 12000, 9000}));
    EXPECT_GT(resizes, 0);

    SetWindowPos(window, nullptr, 60, 70, 900, 640, SWP_NOZORDER);
    EXPECT_EQ(form.Placement(), ToTwips(RECT{60, 70, 960, 710}, dpi));

    ShowWindow(window, SW_MAXIMIZE);
    EXPECT_EQ(form.State(), ui::Form::WindowState::Maximized);
    EXPECT_EQ(form.Placement(), ToTwips(RECT{60, 70, 960, 710}, dpi)) << "the normal place is kept";
    form.SetState(ui::Form::WindowState::Normal);
    EXPECT_FALSE(IsZoomed(window));
    GetWindowRect(window, &outer);
    EXPECT_EQ(outer.right - outer.left, 900);
}

TEST_F(FormWindowTest, AFormThatKeepsALeastWidthIsNotMadeNarrower)
{
    form.Resize = [&] {
        if (form.Placement().width < 9700) {
            ui::Rect wider = form.Placement();
            wider.width = 9700;
            form.SetPlacement(wider);
        }
    };
    SetWindowPos(window, nullptr, 50, 50, 300, 600, SWP_NOZORDER);
    RECT outer{};
    GetWindowRect(window, &outer);
    EXPECT_EQ(outer.right - outer.left, ToPixels(9700, ui::win32::SystemDpi()));
    EXPECT_EQ(form.Placement().width, 9700);
}

TEST_F(FormWindowTest, AnEndOfTheSessionClosesTheFormAtOnceAlsoUnderADialog)
{
    DemoDialog dialog{toolkit};
    bool saved = false;
    form.Closing = [&] { return saved = true; };
    dialog.btnRetry.Click = [&] {
        EXPECT_EQ(SendMessageW(window, WM_QUERYENDSESSION, 0, 0), TRUE);
        SendMessageW(window, WM_ENDSESSION, TRUE, 0);
        EXPECT_TRUE(saved) << "the process ends when the message has been handled";
        EXPECT_FALSE(IsWindowVisible(window));
        dialog.Close();
    };
    dialog.Realize();
    PostMessageW(HandleOf(dialog.btnRetry), BM_CLICK, 0, 0);
    dialog.ShowModal();
    EXPECT_FALSE(form.IsOpen());
    EXPECT_TRUE(PumpUntil([&] { return !IsWindow(window); }));
}

TEST_F(FormWindowTest, ASplitterMovesOnceAtItsReleaseInsideItsBounds)
{
    const int dpi = ui::win32::DpiOf(window);
    Drag(form.spVertical, {2, 50}, {102, 50}, true);
    EXPECT_THAT(form.Events, ElementsAre("moved " + std::to_string(3600 + ToTwips(100, dpi))));
    form.Events.clear();
    Drag(form.spVertical, {2, 50}, {-2000, 50}, true);
    EXPECT_THAT(form.Events, ElementsAre("moved 300"));
    form.Events.clear();
    Drag(form.spVertical, {2, 50}, {60, 50}, false);
    Press(VK_ESCAPE);
    SendMessageW(HandleOf(form.spVertical), WM_LBUTTONUP, 0, MAKELPARAM(60, 50));
    EXPECT_THAT(form.Events, IsEmpty()) << "Esc gives the drag up";
    EXPECT_EQ(form.spVertical.Bounds().left, 300);
}

TEST_F(FormWindowTest, AnotherDpiScalesEveryControl)
{
    const int dpi = ui::win32::DpiOf(window) * 3 / 2;
    RECT before{};
    GetClientRect(HandleOf(form.tbMain), &before);
    const RECT suggested{20, 20, 1220, 860};
    SendMessageW(window, 0x02E0 /* WM_DPICHANGED */, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&suggested));
    RECT after{};
    GetClientRect(HandleOf(form.tbMain), &after);
    EXPECT_GT(after.bottom, before.bottom * 13 / 10);
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(reinterpret_cast<HIMAGELIST>(SendMessageW(HandleOf(form.tvTree), TVM_GETIMAGELIST, 0, 0)),
                          &width, &height);
    EXPECT_EQ(width, 16 * dpi / 96);
    EXPECT_EQ(form.ClientSize().width, ToTwips(static_cast<int>(after.right), dpi));
}
