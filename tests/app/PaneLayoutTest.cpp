#include "app/shell/PaneLayout.h"
#include "ui/Form.h"
#include "ui/Image.h"
#include "ui/headless/HeadlessToolkit.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

using app::Below;
using app::Beside;
using app::Pane;
using ui::Rect;

struct PaneLayoutTest : ::testing::Test {
    ui::HeadlessToolkit toolkit;
    ui::Form form{toolkit, "PaneForm", ui::Form::Style::Sizable};
    ui::Image tree{form}, picture{form}, facts{form}, list{form};
    ui::Splitter upDown{form, ui::Splitter::Direction::UpDown};
    ui::Splitter leftRight{form, ui::Splitter::Direction::LeftRight};
    bool treeOn{true}, pictureOn{true};
    const bool isShown{[this] {
        facts.Box = {100, 800};
        form.Realize();
        return true;
    }()};
    int top{3000}, left{2000};
    app::PaneLayout layout{
        Beside(
            Below(
                Pane{tree}.When([this] { return treeOn; }).UpTo(upDown, top, 900, 2700),
                Below(picture, Pane{facts}.PreferredUpTo(0.5).After(60)).When([this] { return pictureOn; }).Within(60))
                .UpTo(leftRight, left, 300, 3000),
            list),
        [] {}};

    /// "left top width height" of what is shown.
    static std::string At(const ui::Control& control)
    {
        const Rect& at = control.Bounds();
        return !control.Visible() ? "-"
                                  : std::to_string(at.left) + " " + std::to_string(at.top) + " " +
                                        std::to_string(at.width) + " " + std::to_string(at.height);
    }
};

TEST_F(PaneLayoutTest, DividesAWindowOfAnySizeWithoutGapsAndOverlaps)
{
    const struct {
        ui::Size client;
        bool treeOn, pictureOn;
        std::array<std::string, 6> places; ///< of tree, splitter, picture, facts, splitter, list
    } cases[] = {
        // clang-format off
        {{9000, 8000}, true, true, {"0 0 2000 3000", "0 3000 2000 75", "60 3135 1880 3945", "60 7140 1880 800", "2000 0 75 8000", "2075 0 6925 8000"}},
        // The preview keeps its least height, and when there is no room for both, the tree.
        {{9000, 5000}, true, true, {"0 0 2000 2300", "0 2300 2000 75", "60 2435 1880 1645", "60 4140 1880 800", "2000 0 75 5000", "2075 0 6925 5000"}},
        {{4000, 3000}, true, true, {"0 0 1000 900", "0 900 1000 75", "60 1035 880 1045", "60 2140 880 800", "1000 0 75 3000", "1075 0 2925 3000"}},
        {{9000, 8000}, false, true, {"-", "-", "60 60 1880 7020", "60 7140 1880 800", "2000 0 75 8000", "2075 0 6925 8000"}},
        {{9000, 8000}, true, false, {"0 0 2000 8000", "-", "-", "-", "2000 0 75 8000", "2075 0 6925 8000"}},
        {{9000, 8000}, false, false, {"-", "-", "-", "-", "-", "0 0 9000 8000"}},
        {{200, 100}, true, true, {"0 0 0 0", "0 0 0 75", "60 135 0 0", "60 135 0 0", "0 0 75 100", "75 0 125 100"}},
        // clang-format on
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(std::to_string(each.client.width) + " x " + std::to_string(each.client.height));
        treeOn = each.treeOn;
        pictureOn = each.pictureOn;
        layout.Place(each.client);
        EXPECT_EQ((std::array{At(tree), At(upDown), At(picture), At(facts), At(leftRight), At(list)}), each.places);
    }
}

} // namespace
} // namespace tests
