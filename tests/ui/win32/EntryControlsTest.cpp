#include "WindowTest.h"

#include "DemoControls.h"

#include "ui/win32/NativeText.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// The controls that a user enters something in, as real windows.
class EntryControlsTest : public WindowTest {
protected:
    DemoControls form{toolkit};

    void SetUp() override
    {
        Open(form);
        form.Events.clear();
    }

    void FocusQuietly(ui::Control& control)
    {
        Focus(control);
        form.Events.clear();
    }
    void TypeAll(const wchar_t* text)
    {
        for (; *text != 0; ++text)
            Type(*text);
    }
    static int CheckOf(const ui::CheckBox& box)
    {
        return static_cast<int>(SendMessageW(HandleOf(box), BM_GETCHECK, 0, 0));
    }
};

} // namespace

TEST_F(EntryControlsTest, TypingChangesTheModelAndCodeChangesTheWindow)
{
    FocusQuietly(form.txtFirst);
    TypeAll(L"Zoë");
    EXPECT_THAT(form.Events, ElementsAre("first=Z", "first=Zo", "first=Zoë"));
    EXPECT_EQ(form.txtFirst.SelStart(), 4u) << "in bytes";
    Press(VK_LEFT);
    Type(VK_BACK);
    EXPECT_EQ(form.txtFirst.Text(), "Zë");
    EXPECT_EQ(form.txtFirst.SelStart(), 1u);
    Press(VK_DELETE);
    EXPECT_EQ(form.txtFirst.Text(), "Z");

    form.Events.clear();
    form.txtFirst.SetText("Äbc");
    EXPECT_THAT(form.Events, ElementsAre("first=Äbc")) << "once, though the native control tells it as well";
    EXPECT_EQ(TextOf(HandleOf(form.txtFirst)), "Äbc");
    form.txtFirst.Select(2, 1);
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(HandleOf(form.txtFirst), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(start, 1u);
    EXPECT_EQ(end, 2u);
    TypeAll(L"x");
    EXPECT_EQ(form.txtFirst.Text(), "Äxc");
}

TEST_F(EntryControlsTest, WhatWasSelectedBeforeTheFormOpenedHidesNothing)
{
    DemoControls early{toolkit};
    early.txtFirst.SetText("Zoë");
    early.txtFirst.SelectAll();
    Open(early);
    const auto place = SendMessageW(HandleOf(early.txtFirst), EM_POSFROMCHAR, 0, 0);
    EXPECT_GE(static_cast<short>(LOWORD(place)), 0);
    EXPECT_EQ(early.txtFirst.SelText(), "Zoë");
    EXPECT_EQ(SendMessageW(HandleOf(early.lstNames), LB_GETTOPINDEX, 0, 0), 0);
    EXPECT_THAT(early.Events, ElementsAre("first=Zoë"));
}

TEST_F(EntryControlsTest, AKeyIsSeenBeforeItDoesAnythingAndAHandlersTextIsWhatTheBoxHolds)
{
    FocusQuietly(form.txtFirst);
    TypeAll(L"AB");
    Type(1); // Ctrl+A
    std::vector<std::string> selected;
    form.txtFirst.KeyDown = [&] { selected.push_back(form.txtFirst.SelText()); };
    SendMessageW(HandleOf(form.txtFirst), WM_KEYDOWN, VK_LEFT, 0);
    EXPECT_THAT(selected, ElementsAre("AB"));
    EXPECT_EQ(form.txtFirst.SelText(), "");

    // A check on every change, which empties the box.
    form.txtFirst.Change = [&] {
        if (form.txtFirst.Text().find('7') != std::string::npos)
            form.txtFirst.SetText("");
    };
    TypeAll(L"7");
    EXPECT_EQ(form.txtFirst.Text(), "");
    TypeAll(L"n");
    EXPECT_EQ(form.txtFirst.Text(), "n");
    EXPECT_EQ(TextOf(HandleOf(form.txtFirst)), "n");
}

TEST_F(EntryControlsTest, PastingIsAnEditAndLimitsHold)
{
    FocusQuietly(form.txtLast);
    ASSERT_TRUE(OpenClipboard(HandleOf(form)));
    EmptyClipboard();
    const std::wstring text = L"abcdefghijklmnop";
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    std::copy_n(text.c_str(), text.size() + 1, static_cast<wchar_t*>(GlobalLock(memory)));
    GlobalUnlock(memory);
    SetClipboardData(CF_UNICODETEXT, memory);
    CloseClipboard();
    form.txtLast.Pasting = [&] { form.Events.push_back("over " + form.txtLast.SelText()); };
    const std::string before = form.txtLast.Text();
    form.txtLast.SelectAll();
    Type(22); // Ctrl+V
    EXPECT_THAT(form.Events, ElementsAre("over " + before, "last=abcdefghij"));
    form.txtLast.SetReadOnly(true);
    TypeAll(L"z");
    EXPECT_EQ(form.txtLast.Text(), "abcdefghij");
}

TEST_F(EntryControlsTest, TheFocusGoesInOrderAndAFieldMayTakeItBack)
{
    FocusQuietly(form.txtFirst);
    Press(VK_TAB);
    Press(VK_TAB);
    EXPECT_THAT(form.Events, ElementsAre("out of first", "into last", "out of last", "into phone"));

    bool refuse = true;
    form.txtPhone.LostFocus = [&] {
        form.Events.push_back("check");
        if (!refuse)
            return;
        form.txtPhone.SetText("");
        form.txtPhone.SetFocus();
    };
    TypeAll(L"5");
    form.Events.clear();
    struct Way {
        const char* name;
        std::function<void()> leave;
    };
    const Way ways[] = {
        {"tab", [&] { Press(VK_TAB); }},
        {"mouse on a button",
         [&] {
             Click(HandleOf(form.btnAdd), {10, 10});
         }},
        {"mouse on a text",
         [&] {
             Click(HandleOf(form.txtFirst), {10, 10});
         }},
        {"mnemonic of a button",
         [&] {
             PostMessageW(GetFocus(), WM_SYSCHAR, 'a', 0x20000001);
             Pump();
         }},
        {"mnemonic of a check box",
         [&] {
             PostMessageW(GetFocus(), WM_SYSCHAR, 'p', 0x20000001);
             Pump();
         }},
    };
    for (const Way& way : ways) {
        form.txtPhone.SetText("5");
        form.Events.clear();
        way.leave();
        EXPECT_EQ(GetFocus(), HandleOf(form.txtPhone)) << way.name;
        EXPECT_TRUE(form.txtPhone.HasFocus()) << way.name;
        EXPECT_EQ(GetCapture(), nullptr) << way.name;
        EXPECT_EQ(std::ranges::count(form.Events, "check"), 1) << way.name;
        EXPECT_EQ(std::ranges::count(form.Events, "add"), 0) << way.name;
        EXPECT_FALSE(form.chkApply.Checked()) << way.name;
    }
    refuse = false;
    form.Events.clear();
    PostMessageW(GetFocus(), WM_SYSCHAR, 'a', 0x20000001);
    Pump();
    EXPECT_THAT(form.Events, ElementsAre("check", "add"));
}

TEST_F(EntryControlsTest, AMessageInTheMiddleOfAMoveKeepsTheFieldsInStep)
{
    FocusQuietly(form.txtPhone);
    form.txtPhone.LostFocus = [&] {
        // As a message box does: the form is left and comes back.
        ui::Form other{toolkit, "other", ui::Form::Style::Dialog};
        other.Show();
        EXPECT_TRUE(PumpUntil([&] { return GetActiveWindow() == HandleOf(other); }));
        other.Close();
        EXPECT_TRUE(PumpUntil([&] { return GetActiveWindow() == HandleOf(form); }));
        form.txtPhone.SetFocus();
    };
    Press(VK_TAB);
    EXPECT_EQ(GetFocus(), HandleOf(form.txtPhone));
    EXPECT_THAT(form.Events, ElementsAre("into phone")) << "the next field never had it";
    TypeAll(L"1");
    EXPECT_EQ(form.txtPhone.Text(), "1");
}

TEST_F(EntryControlsTest, ReleasingTheMouseTellsTheSelection)
{
    form.txtLast.SetText("Meier");
    FocusQuietly(form.txtLast);
    DoubleClick(HandleOf(form.txtLast), {8, 6});
    ASSERT_FALSE(form.Events.empty());
    EXPECT_EQ(form.Events.back(), "last selects Meier");
}

TEST_F(EntryControlsTest, AComboBoxTellsAChoiceOnceAndOnlyWhenItIsOne)
{
    FocusQuietly(form.cboKind);
    const HWND combo = HandleOf(form.cboKind);
    Press(VK_DOWN);
    EXPECT_THAT(form.Events, ElementsAre("combo Home"));

    form.Events.clear();
    SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
    Press(VK_DOWN);
    EXPECT_THAT(form.Events, IsEmpty()) << "only tried out";
    Press(VK_ESCAPE);
    EXPECT_TRUE(form.IsOpen()) << "the key closed the list";
    EXPECT_THAT(form.Events, IsEmpty());
    EXPECT_EQ(SendMessageW(combo, CB_GETCURSEL, 0, 0), 1);

    SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
    Press(VK_DOWN);
    Press(VK_RETURN);
    EXPECT_THAT(form.Events, ElementsAre("combo Übersee"));

    form.Events.clear();
    form.cboKind.SetItem(0, "Office");
    form.cboKind.SelectText("Office");
    EXPECT_EQ(TextOf(combo), "Office");
    form.cboKind.SetItems({"Other"});
    EXPECT_EQ(SendMessageW(combo, CB_GETCURSEL, 0, 0), CB_ERR);
    EXPECT_THAT(form.Events, IsEmpty());
}

TEST_F(EntryControlsTest, AListBoxFollowsKeysMouseAndCode)
{
    FocusQuietly(form.lstNames);
    const HWND list = HandleOf(form.lstNames);
    Press(VK_DOWN);
    RECT first{};
    SendMessageW(list, LB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&first));
    DoubleClick(list, {first.left + 5, (first.top + first.bottom) / 2});
    EXPECT_THAT(form.Events, ElementsAre("list Cäcilie", "list Ann", "double Ann"));
    form.Events.clear();
    form.lstNames.SetItem(0, "Anna");
    EXPECT_EQ(SendMessageW(list, LB_GETCURSEL, 0, 0), 0) << "the selection stays with another text";
    form.lstNames.SetItems({});
    EXPECT_EQ(SendMessageW(list, LB_GETCOUNT, 0, 0), 0);
    EXPECT_THAT(form.Events, IsEmpty());
}

TEST_F(EntryControlsTest, ACheckBoxShowsTheModelsState)
{
    EXPECT_EQ(CheckOf(form.chkShow), BST_CHECKED);
    FocusQuietly(form.chkApply);
    Press(VK_SPACE);
    PostMessageW(GetFocus(), WM_KEYUP, VK_SPACE, static_cast<LPARAM>(0xC0000001));
    Pump();
    Click(HandleOf(form.chkApply), {5, 5});
    PostMessageW(GetFocus(), WM_SYSCHAR, 'p', 0x20000001);
    Pump();
    EXPECT_THAT(form.Events, ElementsAre("apply on", "apply off", "apply on"));
    EXPECT_EQ(CheckOf(form.chkApply), BST_CHECKED);
    form.chkApply.SetChecked(false);
    EXPECT_EQ(CheckOf(form.chkApply), BST_UNCHECKED);
}

TEST_F(EntryControlsTest, ArrowsCountTheNumberInTheirBox)
{
    FocusQuietly(form.txtMonths);
    Press(VK_UP);
    EXPECT_THAT(form.Events, ElementsAre("months=13", "count 13"));
    form.txtMonths.SetText("98");
    form.Events.clear();
    const HWND arrows = HandleOf(form.udMonths);
    for (int i = 0; i < 3; ++i)
        Click(arrows, {3, 3});
    EXPECT_THAT(form.Events, ElementsAre("months=99", "count 99"));
    RECT client{};
    GetClientRect(arrows, &client);
    Click(arrows, {3, client.bottom - 3});
    EXPECT_EQ(TextOf(HandleOf(form.txtMonths)), "98");
}

TEST_F(EntryControlsTest, EnterAndEscReachTheDialogFromEveryField)
{
    ui::Control* fields[] = {&form.txtFirst, &form.cboKind, &form.lstNames, &form.chkApply, &form.txtMonths};
    for (ui::Control* field : fields) {
        FocusQuietly(*field);
        Press(VK_RETURN);
        EXPECT_EQ(form.Events.back(), "ok") << field->TypeName();
    }
    FocusQuietly(form.txtNotes);
    TypeAll(L"a");
    PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 0x001C0001);
    Pump();
    TypeAll(L"b");
    EXPECT_EQ(form.txtNotes.Text(), "a\r\nb") << "a box of several lines keeps the key";
    Press(VK_TAB);
    EXPECT_TRUE(form.lstNames.HasFocus());
    form.txtNotes.SetFocus();
    Press(VK_ESCAPE);
    EXPECT_FALSE(form.IsOpen());
}

TEST_F(EntryControlsTest, NothingIsClippedOrUnevenAtAnyDpi)
{
    for (const int dpi : {96, 120, 144, 192}) {
        MoveToDpi(HandleOf(form), dpi, {560, 640});
        for (const ui::Control* control : form.Controls()) {
            const ui::Size needed = control->PreferredSize(control->Bounds().width);
            RECT place{};
            GetWindowRect(HandleOf(*control), &place);
            EXPECT_GE(place.right - place.left + 1, ui::win32::ToPixels(needed.width, dpi))
                << control->TypeName() << ' ' << control->Caption() << " at " << dpi;
            EXPECT_GE(place.bottom - place.top + 1, ui::win32::ToPixels(needed.height, dpi))
                << control->TypeName() << ' ' << control->Caption() << " at " << dpi;
        }
        const auto height = [](const ui::Control& control) {
            RECT place{};
            GetWindowRect(HandleOf(control), &place);
            return place.bottom - place.top;
        };
        EXPECT_NEAR(height(form.cboKind), height(form.txtFirst), 2 * dpi / 96) << dpi;
        EXPECT_EQ(height(form.txtMonths), height(form.udMonths)) << dpi;
        EXPECT_EQ(form.lblFirst.Bounds().left, form.lblPhone.Bounds().left);
        EXPECT_EQ(form.txtFirst.Bounds().left, form.txtPhone.Bounds().left);
    }
}
