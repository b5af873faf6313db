#include "WindowTest.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class DialogWindowTest : public WindowTest {
protected:
    DemoDialog form{toolkit};

    void SetUp() override
    {
        Open(form);
        Focus(form.btnRetry);
    }
};

/// A dialog that only its title bar and Esc close.
struct PlainDialog final : ui::Form {
    explicit PlainDialog(ui::Toolkit& toolkit) : Form{toolkit, "PlainDialog", Style::Dialog}
    {
        Layout(ui::Column(btnOnly));
    }
    ui::Button btnOnly{*this};
};

} // namespace

TEST_F(DialogWindowTest, KeysReachTheControlsTheyAreMeantFor)
{
    const auto at = [this](ui::Control& control, WORD key) {
        return [this, &control, key] {
            Focus(control);
            Press(key);
        };
    };
    // clang-format off
    Check(form, {
        {"mnemonic letter", [&] { Type(L"n"); }, {"new"}},
        {"enter on a button is that button", at(form.btnRetry, VK_RETURN), {"retry"}},
        {"a disabled button", [&] { form.btnNew.SetEnabled(false); Type(L"n"); }, {}},
        {"enter for a disabled button", at(form.txtFirst, VK_RETURN), {}},
        {"enabled again", [&] { form.btnNew.SetEnabled(true); Press(VK_RETURN); }, {"new"}},
        {"mnemonic of a check box", [&] { PressAlt('p'); }, {"out of first", "apply on"}},
        {"space", [&] { Press(VK_SPACE); PostKey(WM_KEYUP, VK_SPACE, static_cast<LPARAM>(0xC0000001)); },
         {"apply off"}},
        {"tab", at(form.txtLast, VK_TAB), {"out of last", "into phone"}},
        {"down in the arrows' box", at(form.txtMonths, VK_DOWN), {"months=11", "count 11"}},
        {"down in a list", at(form.lstNames, VK_DOWN), {"list Cäcilie"}},
        {"enter in a list", [&] { Press(VK_RETURN); }, {"new"}}});
    // clang-format on
    Focus(form.txtNotes);
    Type(L"a");
    PostKey(WM_KEYDOWN, VK_RETURN, 0x001C0001);
    Type(L"b");
    EXPECT_EQ(form.txtNotes.Text(), "a\r\nb") << "a box of several lines keeps the key";
    Press(VK_TAB);
    EXPECT_TRUE(form.lstNames.HasFocus());
    form.txtNotes.SetFocus();
    form.Events.clear();
    Press(VK_ESCAPE);
    EXPECT_THAT(form.Events, ElementsAre("cancel"));
    EXPECT_FALSE(form.IsOpen());

    PlainDialog plain{toolkit};
    Open(plain);
    Press(VK_ESCAPE);
    EXPECT_FALSE(plain.IsOpen()) << "without a cancel button";
}

TEST_F(DialogWindowTest, TheButtonThatEnterPressesIsMarkedWhereverTheFocusIs)
{
    form.txtLast.EnterButton = &form.btnRetry;
    Focus(form.cboKind);
    const HWND window = HandleOf(form);
    for (int tabs = 0; tabs < 12; ++tabs) {
        const ui::Button* expected = form.DefaultButton();
        SCOPED_TRACE(std::to_string(tabs) + " " + std::string{form.ActiveControl()->TypeName()});
        ASSERT_NE(expected, nullptr);
        const LRESULT id = SendMessageW(window, DM_GETDEFID, 0, 0);
        EXPECT_EQ(HIWORD(id), DC_HASDEFID);
        EXPECT_EQ(GetDlgItem(window, LOWORD(id)), HandleOf(*expected));
        for (const ui::Button* button : {&form.btnRetry, &form.btnNew, &form.btnCancel})
            EXPECT_EQ((GetWindowLongPtrW(HandleOf(*button), GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON,
                      button == expected)
                << button->Caption();
        Press(VK_TAB);
    }
    Focus(form.txtLast);
    form.Events.clear();
    Press(VK_RETURN);
    EXPECT_THAT(form.Events, ElementsAre("retry"));
    PressAlt(L'f');
    EXPECT_TRUE(form.txtFirst.HasFocus()) << "a label's letter leads to its box";
    EXPECT_EQ(form.txtFirst.SelText(), form.txtFirst.Text());
}

TEST_F(DialogWindowTest, TypingChangesTheModelAndCodeMovesTheNativeSelection)
{
    Focus(form.txtFirst);
    Type(L"Zoë");
    EXPECT_EQ(form.txtFirst.SelStart(), 4u) << "in bytes";
    Press(VK_LEFT);
    Type(L"\b");
    EXPECT_EQ(form.txtFirst.Text(), "Zë");
    EXPECT_EQ(form.txtFirst.SelStart(), 1u);
    Press(VK_DELETE);
    EXPECT_EQ(form.txtFirst.Text(), "Z");
    form.txtFirst.SetText("Äbc");
    form.txtFirst.Select(2, 1);
    EXPECT_EQ(Send(form.txtFirst, EM_GETSEL), MAKELRESULT(1, 2)) << "in UTF-16 units";
    Type(L"x\x01"); // Ctrl+A
    EXPECT_EQ(form.txtFirst.SelText(), "Äxc");

    // What the mouse selects.
    DoubleClick(HandleOf(form.txtFirst), {8, 6});
    EXPECT_EQ(form.Events.back(), "first selects Äxc");

    // What was selected before the form opened hides nothing.
    DemoDialog early{toolkit};
    early.txtFirst.SetText("Zoë");
    early.txtFirst.SelectAll();
    Open(early);
    EXPECT_GE(static_cast<short>(LOWORD(Send(early.txtFirst, EM_POSFROMCHAR))), 0);
    EXPECT_EQ(early.txtFirst.SelText(), "Zoë");
    EXPECT_EQ(Send(early.lstNames, LB_GETTOPINDEX), 0);
}

TEST_F(DialogWindowTest, PastingIsAnEditAndLimitsHold)
{
    Focus(form.txtLast);
    form.txtNotes.SetText("abcdefghijklmnop");
    form.txtNotes.SelectAll();
    Send(form.txtNotes, WM_COPY);
    form.txtLast.Pasting = [&] { form.Events.push_back("over " + form.txtLast.SelText()); };
    form.txtLast.SelectAll();
    Type(L"\x16"); // Ctrl+V
    EXPECT_THAT(form.Events, ElementsAre("over Müller", "last=abcdefghij"));
}

TEST_F(DialogWindowTest, AFieldMayTakeTheFocusBackHoweverItIsLeft)
{
    bool refuse = true;
    form.txtPhone.LostFocus = [&] {
        form.Events.push_back("check");
        if (refuse)
            form.txtPhone.SetFocus();
    };
    Focus(form.txtPhone);
    const auto click = [this](const ui::Control& control) {
        return [this, window = HandleOf(control)] { Click(window, {10, 10}); };
    };
    const std::pair<const char*, std::function<void()>> ways[] = {{"tab", [&] { Press(VK_TAB); }},
                                                                  {"mouse on a button", click(form.btnRetry)},
                                                                  {"mouse on a text", click(form.txtFirst)},
                                                                  {"mnemonic of a button", [&] { PressAlt('r'); }},
                                                                  {"mnemonic of a check box", [&] { PressAlt('p'); }}};
    for (const auto& [name, leave] : ways) {
        SCOPED_TRACE(name);
        form.Events.clear();
        leave();
        EXPECT_EQ(GetFocus(), HandleOf(form.txtPhone));
        EXPECT_TRUE(form.txtPhone.HasFocus());
        EXPECT_EQ(GetCapture(), nullptr);
        EXPECT_EQ(std::ranges::count(form.Events, "check"), 1);
        EXPECT_EQ(std::ranges::count(form.Events, "retry"), 0);
        EXPECT_FALSE(form.chkApply.Checked());
    }
    refuse = false;
    form.Events.clear();
    PressAlt('r');
    EXPECT_THAT(form.Events, ElementsAre("check", "retry"));

    // A message box in the middle of a move: the form is left and comes back.
    Focus(form.txtPhone);
    form.txtPhone.LostFocus = [&] {
        PlainDialog other{toolkit};
        other.Show();
        EXPECT_TRUE(PumpUntil([&] { return GetActiveWindow() == HandleOf(other); }));
        other.Close();
        EXPECT_TRUE(PumpUntil([&] { return GetActiveWindow() == HandleOf(form); }));
        form.txtPhone.SetFocus();
    };
    Press(VK_TAB);
    EXPECT_EQ(GetFocus(), HandleOf(form.txtPhone));
    EXPECT_THAT(form.Events, ElementsAre("into phone")) << "the next field never had it";
}

TEST_F(DialogWindowTest, AnOpenDropDownListIsOnlyTriedOut)
{
    Focus(form.cboKind);
    Send(form.cboKind, CB_SHOWDROPDOWN, TRUE);
    Press(VK_DOWN);
    EXPECT_THAT(form.Events, IsEmpty());
    form.KeyDown = [this](const ui::Key&) {
        form.Events.push_back("the form's");
        return true;
    };
    Press(VK_ESCAPE);
    EXPECT_TRUE(form.IsOpen()) << "the key closed the list";
    EXPECT_THAT(form.Events, IsEmpty());
    form.KeyDown = nullptr;
    EXPECT_EQ(Send(form.cboKind, CB_GETCURSEL), 0);
    Press(VK_DOWN);
    EXPECT_THAT(form.Events, ElementsAre("combo Home"));
}

TEST_F(DialogWindowTest, AModalFormHoldsTheOthersAndGivesTheFocusBack)
{
    DemoForm window{toolkit};
    DemoForm hidden{toolkit};
    hidden.Realize();
    Open(window);
    Focus(window.lvList);
    const HWND main = HandleOf(window);
    form.Close();
    DemoDialog outer{toolkit};
    outer.Realize();
    EXPECT_EQ(GetWindow(HandleOf(outer), GW_OWNER), main);
    const auto enabled = [&] {
        return std::string{IsWindowEnabled(main) ? "main " : ""} +
               (IsWindowEnabled(HandleOf(hidden)) ? "hidden " : "") +
               (outer.IsOpen() && IsWindowEnabled(HandleOf(outer)) ? "outer " : "") +
               (toolkit.ModalActive() ? "modal" : "");
    };
    std::vector<std::string> seen{enabled()};
    acts.Add([&] {
        seen.push_back(enabled());
        DemoDialog inner{toolkit};
        acts.Add([&] {
            seen.push_back(enabled());
            inner.Close();
            return true;
        });
        inner.ShowModal();
        seen.push_back(enabled());
        outer.Close();
        return true;
    });
    outer.ShowModal();
    seen.push_back(enabled());
    EXPECT_THAT(seen, ElementsAre("main hidden outer ", "outer modal", "modal", "outer modal", "main hidden "));
    EXPECT_TRUE(PumpUntil([&] { return GetFocus() == HandleOf(window.lvList); }));
}

TEST_F(DialogWindowTest, NothingIsClippedOrUnevenAtAnyDpi)
{
    form.btnRetry.SetCaption("&Retry with a much longer translated caption");
    for (const int dpi : {96, 120, 144, 192}) {
        MoveToDpi(HandleOf(form), dpi, {720, 800});
        const auto sizeOf = [](const ui::Control& control) {
            RECT place{};
            GetWindowRect(HandleOf(control), &place);
            return SIZE{place.right - place.left, place.bottom - place.top};
        };
        for (const ui::Control* control : form.Controls()) {
            const ui::Size needed = control->PreferredSize(control->Bounds().width);
            const SIZE size = sizeOf(*control);
            EXPECT_GE(size.cx + 1, ui::win32::ToPixels(needed.width, dpi))
                << control->TypeName() << ' ' << control->Caption() << " at " << dpi;
            EXPECT_GE(size.cy + 1, ui::win32::ToPixels(needed.height, dpi))
                << control->TypeName() << ' ' << control->Caption() << " at " << dpi;
        }
        EXPECT_NEAR(sizeOf(form.cboKind).cy, sizeOf(form.txtFirst).cy, 2 * dpi / 96) << dpi;
        EXPECT_EQ(sizeOf(form.txtMonths).cy, sizeOf(form.udMonths).cy) << dpi;
    }
}
