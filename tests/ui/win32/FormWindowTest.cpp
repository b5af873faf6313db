#include "WindowTest.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using ui::win32::ToPixels;
using ui::win32::ToTwips;

namespace {

class FormWindowTest : public DemoFormTest {
protected:
    void SetUp() override { Focus(form.lvList); }

    /// A menu's entries as the user reads them.
    static std::vector<std::string> Entries(HMENU menu)
    {
        std::vector<std::string> entries;
        for (int i = 0; i < GetMenuItemCount(menu); ++i) {
            wchar_t text[128]{};
            GetMenuStringW(menu, static_cast<UINT>(i), text, 128, MF_BYPOSITION);
            const UINT state = GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
            const std::string entry = ui::win32::FromNative(text);
            const char* const look = (state & MF_CHECKED) != 0  ? " (checked)"
                                     : (state & MF_GRAYED) != 0 ? " (grey)"
                                                                : "";
            entries.push_back(entry.empty() ? "-" : entry + look);
        }
        return entries;
    }

    HMENU OpenMenu(int index)
    {
        HMENU popup = GetSubMenu(GetMenu(window), index);
        SendMessageW(window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup), MAKELPARAM(index, FALSE));
        return popup;
    }

    void Drag(LONG x, std::initializer_list<UINT> end)
    {
        const HWND bar = HandleOf(form.spVertical);
        form.Events.clear();
        Mouse(bar, {2, 50}, {WM_LBUTTONDOWN});
        Mouse(bar, {x / 2, 50}, {WM_MOUSEMOVE});
        Mouse(bar, {x, 50}, {WM_MOUSEMOVE});
        Mouse(bar, {x, 50}, end);
    }
    LONG OuterWidth() const
    {
        RECT outer{};
        GetWindowRect(window, &outer);
        return outer.right - outer.left;
    }
};

} // namespace

TEST_F(FormWindowTest, FillsAMenuFromItsStateWhenItOpens)
{
    EXPECT_THAT(Entries(GetMenu(window)), ElementsAre("&File", "&View"));
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

    form.MenuOpening = nullptr;
    form.MenuBar.Find("open")->Visible = true;
    const UINT gone = GetMenuItemID(OpenMenu(0), 2);
    form.MenuBar.Find("file")->Clear();
    SendMessageW(window, WM_COMMAND, gone, 0);
    EXPECT_THAT(form.Events, ElementsAre("menu refresh")) << "an entry that is gone by then";
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
    DemoForm other{toolkit};
    other.SetPlacement({1500, 1500, 12000, 9000});
    other.Realize();
    form.SetPlacement({1500, 1500, 12000, 9000});
    for (const HWND placed : {HandleOf(other), window}) {
        RECT outer{};
        GetWindowRect(placed, &outer);
        EXPECT_EQ(ToTwips(outer, dpi), (ui::Rect{1500, 1500, 12000, 9000}));
    }
    EXPECT_GT(resizes, 0);

    SetWindowPos(window, nullptr, 60, 70, 900, 640, SWP_NOZORDER);
    EXPECT_EQ(form.Placement(), ToTwips(RECT{60, 70, 960, 710}, dpi));

    ShowWindow(window, SW_MAXIMIZE);
    EXPECT_EQ(form.State(), ui::Form::WindowState::Maximized);
    EXPECT_EQ(form.Placement(), ToTwips(RECT{60, 70, 960, 710}, dpi)) << "the normal place is kept";
    form.SetState(ui::Form::WindowState::Normal);
    EXPECT_FALSE(IsZoomed(window));
    EXPECT_EQ(OuterWidth(), 900);
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
    EXPECT_EQ(OuterWidth(), ToPixels(9700, ui::win32::SystemDpi()));
    EXPECT_EQ(form.Placement().width, 9700);
}

TEST_F(FormWindowTest, AnEndOfTheSessionClosesTheFormAtOnceAlsoUnderADialog)
{
    DemoDialog dialog{toolkit};
    bool saved = false;
    form.Closing = [&] { return saved = true; };
    bool kept = false;
    dialog.SessionEnds = [&] { kept = true; };
    acts.Add([&] {
        EXPECT_EQ(SendMessageW(window, WM_QUERYENDSESSION, 0, 0), TRUE);
        SendMessageW(window, WM_ENDSESSION, TRUE, 0);
        EXPECT_TRUE(saved) << "the process ends when the message has been handled";
        for (const WPARAM ends : {FALSE, TRUE}) {
            SendMessageW(HandleOf(dialog), WM_ENDSESSION, ends, 0);
            EXPECT_EQ(kept, ends != FALSE) << "what was typed into the dialog";
        }
        EXPECT_FALSE(IsWindowVisible(window));
        dialog.Close();
        return true;
    });
    dialog.ShowModal();
    EXPECT_FALSE(form.IsOpen());
    EXPECT_TRUE(PumpUntil([&] { return !IsWindow(window); }));
}

TEST_F(FormWindowTest, ASplitterMovesOnceAtItsReleaseInsideItsBounds)
{
    const int dpi = ui::win32::DpiOf(window);
    Drag(102, {WM_LBUTTONUP});
    EXPECT_THAT(form.Events, ElementsAre("moved " + std::to_string(3600 + ToTwips(100, dpi))));
    Drag(-2000, {WM_LBUTTONUP});
    EXPECT_THAT(form.Events, ElementsAre("moved 300"));
    Drag(60, {});
    Press(VK_ESCAPE);
    Mouse(HandleOf(form.spVertical), {60, 50}, {WM_LBUTTONUP});
    EXPECT_THAT(form.Events, IsEmpty()) << "Esc gives the drag up";
    EXPECT_EQ(form.spVertical.Bounds().left, 300);
}

TEST_F(FormWindowTest, AnotherDpiScalesEveryControl)
{
    const int dpi = ui::win32::DpiOf(window) * 3 / 2;
    const LONG before = ClientOf(HandleOf(form.tbMain)).bottom;
    MoveToDpi(window, dpi, {500, 360}); // fits the screen of the tests
    const RECT windowClient = ClientOf(window);
    const RECT after = ClientOf(HandleOf(form.tbMain));
    EXPECT_GT(after.bottom, before * 13 / 10);
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(reinterpret_cast<HIMAGELIST>(Send(form.tvTree, TVM_GETIMAGELIST)), &width, &height);
    EXPECT_EQ(width, 16 * dpi / 96);
    EXPECT_EQ(form.ClientSize().width, ToTwips(static_cast<int>(after.right), dpi));
    EXPECT_EQ(form.Placement().width, 500 * 15) << "in the window's own dpi";
    const ui::Rect place = form.Placement();
    form.SetPlacement({place.left + 15, place.top, place.width, place.height});
    EXPECT_EQ(ClientOf(window).right, windowClient.right) << "the same size";
}
