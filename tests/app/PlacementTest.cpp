#include "app/shell/WindowPlacement.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

using ui::Rect;

struct Case {
    const char* name;
    Rect stored;
    Rect expected;
};

// Two monitors side by side: 1280 x 1000 and 1024 x 768 pixels at 96 dpi.
const std::vector<Rect> Areas{{0, 0, 19200, 15000}, {19200, 0, 15360, 11520}};

class PlacementTest : public ::testing::TestWithParam<Case> {};

TEST_P(PlacementTest, KeepsWhatCanBeReachedAndBringsBackTheRest)
{
    EXPECT_EQ(app::PlacementWithin(GetParam().stored, Areas), GetParam().expected) << GetParam().name;
}
INSTANTIATE_TEST_SUITE_P(
    Places, PlacementTest,
    ::testing::Values(
        Case{"in the middle", {1000, 1000, 8750, 7200}, {1000, 1000, 8750, 7200}},
        Case{"across both", {17000, 100, 9000, 7000}, {17000, 100, 9000, 7000}},
        Case{"most of it off the left, its title in reach", {-7000, 0, 9000, 7000}, {-7000, 0, 9000, 7000}},
        Case{"off the left", {-9000, 500, 9000, 7000}, {0, 500, 9000, 7000}},
        Case{"on a monitor that is gone", {40000, 2000, 9000, 7000}, {25560, 2000, 9000, 7000}},
        Case{"gone and larger than what is left", {60000, 0, 30000, 20000}, {19200, 0, 15360, 11520}},
        Case{"title bar above the screen", {1000, -500, 9000, 7000}, {1000, 0, 9000, 7000}},
        Case{"larger than all monitors", {1000, 1000, 40000, 9000}, {0, 1000, 19200, 9000}},
        Case{"below the screen", {1000, 14900, 9000, 7000}, {1000, 8000, 9000, 7000}}));

TEST(PlacementWithoutMonitorsTest, KeepsThePlace)
{
    EXPECT_EQ(app::PlacementWithin({5, 6, 7, 8}, {}), (Rect{5, 6, 7, 8}));
}

} // namespace
} // namespace tests
