#include "WindowTest.h"

#include <stdexcept>

using testing::ElementsAre;

namespace {

class ToolkitTest : public WindowTest {};

} // namespace

TEST_F(ToolkitTest, PostedTasksRunInOrderAndNeverInsideTheHandlerThatPostedThem)
{
    DemoDialog dialog{toolkit};
    std::vector<std::string> log;
    dialog.btnRetry.Click = [&] {
        toolkit.Post([&] { log.push_back("first"); });
        toolkit.Post([&] {
            log.push_back("second");
            toolkit.Quit();
        });
        toolkit.DoEvents();
        DemoDialog inner{toolkit};
        inner.Realize();
        PostMessageW(HandleOf(inner.btnCancel), BM_CLICK, 0, 0);
        inner.ShowModal();
        log.push_back("handler");
    };
    dialog.Show();
    PostMessageW(HandleOf(dialog.btnRetry), BM_CLICK, 0, 0);
    toolkit.Run();
    EXPECT_THAT(log, ElementsAre("handler", "first", "second"));
}

TEST_F(ToolkitTest, YieldingStandsBeingEnteredAgainAndKeepsTheEndOfTheProgram)
{
    DemoDialog dialog{toolkit};
    dialog.Show();
    int depth = 0;
    int deepest = 0;
    dialog.btnRetry.Click = [&] {
        deepest = std::max(deepest, ++depth);
        if (depth < 4) {
            PostMessageW(HandleOf(dialog.btnRetry), BM_CLICK, 0, 0);
            toolkit.DoEvents();
        } else {
            toolkit.Quit();
            toolkit.DoEvents();
        }
        --depth;
    };
    PostMessageW(HandleOf(dialog.btnRetry), BM_CLICK, 0, 0);
    toolkit.DoEvents();
    EXPECT_EQ(deepest, 4);
    toolkit.Run(); // returns: the end was not lost in the yields
}

TEST_F(ToolkitTest, QuittingEndsTheModalLoopsThatAreRunning)
{
    DemoDialog dialog{toolkit};
    dialog.btnRetry.Click = [&] { toolkit.Quit(); };
    dialog.Realize();
    PostMessageW(HandleOf(dialog.btnRetry), BM_CLICK, 0, 0);
    dialog.ShowModal();
    EXPECT_FALSE(toolkit.ModalActive());
    toolkit.Run();
}

TEST_F(ToolkitTest, AnExceptionOfAHandlerStopsAtTheWindow)
{
    DemoDialog dialog{toolkit};
    Open(dialog);
    dialog.btnRetry.Click = [] { throw std::runtime_error{"handler"}; };
    Click(HandleOf(dialog.btnRetry), {5, 5});
    dialog.btnRetry.Click = [&] { dialog.Close(); };
    Click(HandleOf(dialog.btnRetry), {5, 5});
    EXPECT_FALSE(dialog.IsOpen());
}

TEST_F(ToolkitTest, KnowsTheWorkAreas)
{
    const auto areas = toolkit.WorkAreas();
    ASSERT_FALSE(areas.empty());
    EXPECT_EQ(areas.front().left, 0);
    EXPECT_GT(areas.front().width, 9600);
}
