#include "WindowTest.h"

#include "ui/win32/NativeText.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class SmallControlsTest : public WindowTest {
protected:
    DemoForm form{toolkit};

    void SetUp() override
    {
        Open(form);
        form.Events.clear();
    }

    RECT ButtonPlace(WPARAM index) const
    {
        RECT place{};
        SendMessageW(HandleOf(form.tbMain), TB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&place));
        return place;
    }

    void ClickButton(WPARAM index)
    {
        const RECT place = ButtonPlace(index);
        Click(HandleOf(form.tbMain), {place.left + 8, place.top + 8});
    }

    int StateOf(std::size_t index) const
    {
        TBBUTTON button{};
        SendMessageW(HandleOf(form.tbMain), TB_GETBUTTON, index, reinterpret_cast<LPARAM>(&button));
        return button.fsState;
    }
};

} // namespace

TEST_F(SmallControlsTest, AToolBarClicksItsButtonsAndShowsTheModelsState)
{
    ClickButton(0);
    ClickButton(3);
    ClickButton(4);
    EXPECT_THAT(form.Events, ElementsAre("button new", "button details")) << "the third is disabled";
    EXPECT_NE(StateOf(4) & TBSTATE_CHECKED, 0) << "the program did not take the check back";
    form.tbMain.SetState("details", true, false, true);
    form.tbMain.SetState("delete", true, false, true);
    form.tbMain.SetState("hidden", true, false, true);
    EXPECT_EQ(StateOf(4) & TBSTATE_CHECKED, 0);
    EXPECT_NE(StateOf(3) & TBSTATE_ENABLED, 0);
    EXPECT_EQ(StateOf(6) & TBSTATE_HIDDEN, 0);
    form.tbMain.SetButtonCaption("new", "Make a new document");
    form.Events.clear();
    ClickButton(7);
    EXPECT_THAT(form.Events, ElementsAre("button more")) << "after the buttons were built anew";
}

TEST_F(SmallControlsTest, AToolBarWrapsWhereItIsTooNarrow)
{
    const ui::Size wide = form.tbMain.PreferredSize(15000);
    const ui::Size narrow = form.tbMain.PreferredSize(2500);
    EXPECT_GT(narrow.height, wide.height * 3 / 2);
    EXPECT_EQ(form.tbMain.PreferredSize(15000).height, wide.height);
    const RECT last = ButtonPlace(7);
    RECT client{};
    GetClientRect(HandleOf(form.tbMain), &client);
    EXPECT_LE(last.bottom, client.bottom + 1);
}

TEST_F(SmallControlsTest, TabsFollowMouseKeysAndCode)
{
    const HWND tabs = HandleOf(form.tsTypes);
    RECT second{};
    SendMessageW(tabs, TCM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&second));
    Click(tabs, {(second.left + second.right) / 2, (second.top + second.bottom) / 2});
    Focus(form.tsTypes);
    Press(VK_RIGHT);
    EXPECT_THAT(form.Events, ElementsAre("tab Excel", "tab All"));

    form.Events.clear();
    form.tsTypes.Select("Word");
    EXPECT_EQ(SendMessageW(tabs, TCM_GETCURSEL, 0, 0), 0);
    form.tsTypes.Remove("Word");
    form.tsTypes.Insert(0, {"PPT", {}, {}, "&PowerPoint", "Slides", 2});
    EXPECT_EQ(SendMessageW(tabs, TCM_GETITEMCOUNT, 0, 0), 3);
    EXPECT_EQ(SendMessageW(tabs, TCM_GETCURSEL, 0, 0), 1) << "the selected tab moved along";
    EXPECT_THAT(form.Events, IsEmpty());

    // Alt and the letter of a tab, where no menu has it.
    PostMessageW(tabs, WM_SYSCHAR, 'p', 0x20000001);
    Pump();
    EXPECT_THAT(form.Events, ElementsAre("tab PPT"));
}

TEST_F(SmallControlsTest, LongTextsAreCutAndNotWrongAtTheCut)
{
    std::string text(70000, 'x');
    EXPECT_EQ(ui::win32::ToNative(text).size(), 0xFFFFu);
    text = std::string(0xFFFE, 'x') + "\xF0\x9F\x98\x80";
    EXPECT_EQ(ui::win32::ToNative(text).size(), 0xFFFEu) << "no half of a character is left";
    EXPECT_EQ(ui::win32::MnemonicOf(L"Save && &open"), L'O');
    EXPECT_EQ(ui::win32::MnemonicOf(L"R&&D"), 0);
}
