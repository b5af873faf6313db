#include "WindowTest.h"

using testing::ElementsAre;

namespace {

using SmallControlsTest = DemoFormTest;

} // namespace

TEST_F(SmallControlsTest, AToolBarWrapsWhereItIsTooNarrowAndKeepsItsButtons)
{
    form.tbMain.SetButtonCaption("new", "Make a new document");
    form.Events.clear();
    Click(HandleOf(form.tbMain), PlaceOf(form.tbMain, 6));
    EXPECT_THAT(form.Events, ElementsAre("button more")) << "after the buttons were built anew";
    const ui::Size wide = form.tbMain.PreferredSize(15000);
    EXPECT_GT(form.tbMain.PreferredSize(2500).height, wide.height * 3 / 2);
    EXPECT_EQ(form.tbMain.PreferredSize(15000).height, wide.height);
    EXPECT_LT(PlaceOf(form.tbMain, 6).y, ClientOf(HandleOf(form.tbMain)).bottom);
}

TEST_F(SmallControlsTest, TabsFollowKeys)
{
    Focus(form.tsTypes);
    Press(VK_RIGHT);
    PressAlt('a');
    EXPECT_THAT(form.Events, ElementsAre("tab Excel", "tab All"));
}

TEST_F(SmallControlsTest, ALineOfTextPassesOnTheKeysThatDoNothingInIt)
{
    DemoDialog dialog{toolkit};
    Open(dialog);
    Focus(dialog.txtFirst);
    std::vector<ui::KeyCode> keys;
    dialog.txtFirst.CommandKey = [&](const ui::Key& key) {
        keys.push_back(key.code);
        return true;
    };
    for (const int key : {VK_LEFT, VK_DOWN, VK_HOME, VK_UP, VK_RETURN, VK_ESCAPE})
        Press(static_cast<WORD>(key));
    using enum ui::KeyCode;
    EXPECT_THAT(keys, ElementsAre(Down, Up, Enter, Escape));
    EXPECT_TRUE(dialog.IsOpen());
    dialog.Close();
}

TEST_F(SmallControlsTest, APlainLabelShowsNamesAsTheyAreAndWrapsThemAnywhere)
{
    DemoDialog dialog{toolkit};
    dialog.lblText.PlainText = true;
    for (ui::Label* label : {&dialog.lblText, &dialog.lblKind})
        label->SetCaption("R&D&Q");
    dialog.Realize();
    EXPECT_GT(dialog.lblText.PreferredSize().width, dialog.lblKind.PreferredSize().width) << "both signs are drawn";
    dialog.lblText.SetCaption(std::string(60, 'W') + "\r\nsecond line");
    const int line = dialog.lblKind.PreferredSize().height;
    EXPECT_EQ(dialog.lblText.PreferredSize().height, 2 * line);
    EXPECT_GT(dialog.lblText.PreferredSize(3000).height, 3 * line);
    EXPECT_LE(dialog.lblText.PreferredSize(3000).width, 3100);

    // Where the wrapped text has no room, each line keeps its own.
    Open(dialog);
    dialog.lblText.SetBounds({0, 0, 1500, 2 * line});
    const auto shown = [&](const std::string& name) {
        dialog.lblText.SetCaption(name + "\r\nlast");
        return Capture(HandleOf(dialog.lblText));
    };
    const auto crowded = shown(std::string(60, 'W'));
    const auto brief = shown("");
    const auto half = static_cast<std::ptrdiff_t>(crowded.size() / 2);
    EXPECT_TRUE(std::equal(crowded.begin() + half, crowded.end(), brief.begin() + half));
    EXPECT_NE(crowded, brief);
    EXPECT_FALSE(std::equal(crowded.begin() + half, crowded.end(), brief.begin())) << "something is written there";
}

TEST_F(SmallControlsTest, LongTextsAreCutAndNotWrongAtTheCut)
{
    std::string text(70000, 'x');
    EXPECT_EQ(ui::win32::ToNative(text).size(), 0xFFFFu);
    text = std::string(0xFFFE, 'x') + "\xF0\x9F\x98\x80";
    EXPECT_EQ(ui::win32::ToNative(text).size(), 0xFFFEu) << "no half of a character is left";
    EXPECT_EQ(ui::win32::MnemonicOf(L"Save && &open"), L'O');
    EXPECT_EQ(ui::win32::MnemonicOf(L"R&&D"), 0);

    // Names differ, and are marked, at their ends.
    const struct {
        std::wstring text;
        std::size_t most;
        std::wstring shown;
    } rows[] = {{L"abcdefgh", 8, L"abcdefgh"},
                {L"abcdefgh", 7, L"ab...gh"},
                {L"abcdefgh", 6, L"ab...h"},
                {L"abcdefgh", 1, L"..."},
                {L"\U0001F600abcdef\U0001F600", 5, L"\U0001F600..."},
                {L"\U0001F600abcdef\U0001F600", 4, L"..."}};
    for (const auto& row : rows)
        EXPECT_EQ(ui::win32::ShortenedInTheMiddle(row.text,
                                                  [&](const std::wstring& part) { return part.size() <= row.most; }),
                  row.shown);
    DemoDialog dialog{toolkit};
    Open(dialog);
    dialog.lstNames.SetItems({std::string(200, 'm') + " (default)"});
    std::wstring shown(300, L'\0');
    shown.resize(static_cast<std::size_t>(Send(dialog.lstNames, LB_GETTEXT, 0, shown.data())));
    EXPECT_TRUE(shown.starts_with(L"mm") && shown.ends_with(L" (default)") && shown.contains(L"..."));
}
