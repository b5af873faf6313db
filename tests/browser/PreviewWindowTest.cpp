// The preview window, and giving a template to another program.
#include "tests/support/TestMachine.h"

#include "browser/FrmPreview.h"

namespace tests {
namespace {

using browser::FrmPreview;
using ui::KeyCode;

class PreviewWindowTest : public BrowserTest {
protected:
    PreviewWindowTest()
    {
        AddTemplates({"Business\\Previews\\Invoice.jpg", "Business\\Previews\\Budget.jpg"});
        Start();
        Main().tvTreeView.UserSelects("Business");
    }
    void Open(const std::function<void(FrmPreview&)>& act)
    {
        toolkit.OnModal<FrmPreview>("FrmPreview", [&](FrmPreview& form) {
            act(form);
            if (form.IsOpen())
                form.cmdClose.UserClicks();
        });
        EXPECT_TRUE(Main().Commands().Run("mnuFilePreview"));
    }
};

TEST_F(PreviewWindowTest, FollowsTheListAndGivesTheLastTemplateBack)
{
    Main().lvListView.UserClicksColumn(browser::TemplateList::NameColumn);
    Main().lvListView.UserSelects(1);
    Open([&](FrmPreview& form) {
        EXPECT_EQ(form.Caption(), "Invoice - Template Preview");
        EXPECT_EQ(form.lblCount.Caption(), "2 of 5 template(s) ");
        EXPECT_EQ(form.imgPicture.File(), InLibrary("Business\\Previews\\Invoice.jpg"));
        EXPECT_EQ(form.imgPicture.NextFile(), InLibrary("NF.jpg"));
        EXPECT_EQ(form.imgPicture.FallbackText(), Text(256));
        form.cmdPrevious.SetFocus();
        form.cmdPrevious.UserClicks();
        EXPECT_EQ(form.Caption(), "Budget - Template Preview");
        EXPECT_FALSE(form.cmdPrevious.Enabled());
        EXPECT_TRUE(form.cmdNext.HasFocus());
        const std::pair<KeyCode, const char*> keys[] = {{KeyCode::PageDown, "2"}, {KeyCode::End, "5"},
                                                        {KeyCode::Right, "5"},    {KeyCode::Left, "4"},
                                                        {KeyCode::Home, "1"},     {KeyCode::PageUp, "1"}};
        for (const auto& [key, number] : keys) {
            EXPECT_TRUE(form.UserPresses(ui::Plain(key)));
            EXPECT_TRUE(form.lblCount.Caption().starts_with(number)) << number;
        }
        form.UserPresses(ui::Plain(KeyCode::End));
        EXPECT_FALSE(form.cmdNext.Enabled());
    });
    EXPECT_EQ(Main().List().Selected()->text, "Terms");
}

TEST_F(PreviewWindowTest, ZoomsInStepsAndMovesWhatIsSeenInPart)
{
    Open([&](FrmPreview& form) {
        ui::Image& picture = form.imgPicture;
        picture.Fitted(40);
        const std::pair<std::function<void()>, int> steps[] = {
            {[&] { form.UserPresses(ui::Plain(KeyCode::Plus)); }, 50},
            {[&] { form.MouseWheel(2); }, 75},
            {[&] { form.UserPresses(ui::Plain(KeyCode::Minus)); }, 67},
            {[&] { form.cmdActual.UserClicks(); }, 100},
            {[&] { form.MouseWheel(100); }, 800},
            {[&] { form.MouseWheel(-100); }, 10},
            {[&] { form.cmdZoomIn.UserClicks(); }, 25}};
        for (const auto& [act, percent] : steps) {
            act();
            EXPECT_EQ(picture.Zoom(), percent);
        }
        form.UserPresses(ui::Plain(KeyCode::Left));
        EXPECT_GT(picture.Offset().x, 0);
        EXPECT_TRUE(form.lblCount.Caption().starts_with("1 "));
        picture.Limit({100, 100});
        EXPECT_EQ(picture.Offset(), (ui::Point{100, 0}));
        form.cmdFit.UserClicks();
        EXPECT_EQ(picture.Zoom(), ui::Image::FitZoom);
        EXPECT_EQ(picture.Offset(), ui::Point{});
        form.cmdActual.UserClicks();
        form.cmdNext.UserClicks();
        EXPECT_EQ(picture.Zoom(), ui::Image::FitZoom) << "the next one is seen whole";
    });
}

TEST_F(PreviewWindowTest, MakesDocumentsAndRemembersItsPlace)
{
    const ui::Rect place{2000, 2200, 12'000, 8000};
    Open([&](FrmPreview& form) {
        form.UserPlaces(place, ui::Form::WindowState::Normal);
        form.cmdTemplate.UserClicks();
        EXPECT_FALSE(form.IsOpen());
    });
    EXPECT_EQ(Main().RecentFiles().List(), Texts{InLibrary("Business\\Invoice.swt")});
    EXPECT_EQ(Setting("Browser", "PreviewWindowHeight"), "8000");
    Open([&](FrmPreview& form) {
        EXPECT_EQ(form.Placement(), place);
        form.UserPresses(ui::Plain(KeyCode::End));
        form.cmdPrevious.UserClicks();
        form.cmdDocument.UserClicks();
    });
    EXPECT_EQ(Main().RecentFiles().List().front(), InLibrary("Business\\Terms.pdf"));
}

TEST_F(PreviewWindowTest, GivesTheFileToOtherPrograms)
{
    Main().lvListView.SetFocus();
    EXPECT_TRUE(Main().UserPresses(ui::Ctrl('C')));
    Open([&](FrmPreview& form) {
        form.cmdNext.UserClicks();
        EXPECT_TRUE(form.UserPresses(ui::Ctrl('C')));
        EXPECT_EQ(form.imgPicture.DragFile(), InLibrary("Business\\Budget.ccw"));
    });
    EXPECT_EQ(toolkit.CopiedFiles, (Texts{InLibrary("Business\\Invoice.swt"), InLibrary("Business\\Budget.ccw")}));
    EXPECT_EQ(Main().lvListView.DragFile(), InLibrary("Business\\Budget.ccw"));
    Main().lvListView.UserSelects(-1);
    EXPECT_EQ(Main().lvListView.DragFile(), "");
}

} // namespace
} // namespace tests
