#include "app/shell/WindowPlacement.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

using ui::Rect;

TEST(PlacementTest, KeepsWhatCanBeReachedAndBringsBackTheRest)
{
    // Two monitors side by side: 1280 x 1000 and 1024 x 768 pixels at 96 dpi.
    const std::vector<ui::WorkArea> areas{{{0, 0, 19200, 15000}}, {{19200, 0, 15360, 11520}}};
    const struct {
        const char* name;
        Rect stored, expected;
    } rows[] = {{"in the middle", {1000, 1000, 8750, 7200}, {1000, 1000, 8750, 7200}},
                {"across both", {17000, 100, 9000, 7000}, {17000, 100, 9000, 7000}},
                {"most of it off the left, its title in reach", {-7000, 0, 9000, 7000}, {-7000, 0, 9000, 7000}},
                {"off the left", {-9000, 500, 9000, 7000}, {0, 500, 9000, 7000}},
                {"on a monitor that is gone", {40000, 2000, 9000, 7000}, {25560, 2000, 9000, 7000}},
                {"gone and larger than what is left", {60000, 0, 30000, 20000}, {19200, 0, 15360, 11520}},
                {"title bar above the screen", {1000, -500, 9000, 7000}, {1000, 0, 9000, 7000}},
                {"larger than all monitors", {1000, 1000, 40000, 9000}, {0, 1000, 19200, 9000}},
                {"below the screen", {1000, 14900, 9000, 7000}, {1000, 8000, 9000, 7000}}};
    for (const auto& row : rows)
        EXPECT_EQ(app::PlacementWithin(row.stored, areas), row.expected) << row.name;
    EXPECT_EQ(app::WholeWithin({17000, 9000, 9000, 7000}, areas), (Rect{10200, 8000, 9000, 7000}));
    // The second one has twice the dots in the same space.
    const std::vector<ui::WorkArea> mixed{{{0, 0, 19200, 15000}}, {{19200, 0, 19200, 15000}, 2}};
    EXPECT_EQ(app::PlacementWithin({20000, 500, 9000, 7000}, mixed), (Rect{20000, 500, 9000, 7000}));
    EXPECT_EQ(app::PlacementWithin({40000, 500, 9000, 7000}, mixed), (Rect{20400, 500, 9000, 7000}));
    EXPECT_EQ(app::PlacementWithin({40000, 500, 9000, 9000}, mixed), (Rect{20400, 0, 9000, 7500}));
    EXPECT_EQ(app::PlacementWithin({5, 6, 7, 8}, {}), (Rect{5, 6, 7, 8})) << "without monitors";
}

} // namespace
} // namespace tests
