// How large pictures are shown, what becomes of their pixels on the way, and which picture an icon is made of.
#include "pictures/IconFile.h"
#include "pictures/PixelBuffer.h"
#include "pictures/Thumbnail.h"
#include "tests/pictures/FileBytes.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace pictures {

void PrintTo(PixelSize size, std::ostream* out)
{
    *out << size.width << " x " << size.height;
}

namespace {

TEST(SizeTest, APictureKeepsItsProportionsAndGrowsNoFurtherThanItMay)
{
    struct Case {
        PixelSize picture, room;
        int enlargement;
        PixelSize shown;
    };
    for (const Case& c :
         {Case{{200, 100}, {100, 100}, 1, {100, 50}}, Case{{100, 200}, {100, 100}, 2, {50, 100}},
          Case{{40, 30}, {100, 100}, 1, {40, 30}}, Case{{40, 30}, {100, 100}, 2, {80, 60}},
          Case{{40, 30}, {60, 100}, 2, {60, 45}}, Case{{300, 2}, {30, 30}, 1, {30, 1}},
          Case{{20000, 20000}, {1, 1}, 1, {1, 1}}, Case{{40, 30}, {100, 0}, 1, {}}, Case{{0, 30}, {100, 100}, 1, {}}})
        EXPECT_EQ(Fitted(c.picture, c.room, c.enlargement), c.shown) << ::testing::PrintToString(c.picture);
    // A frame always fills its cell, and the picture on it leaves its border free.
    EXPECT_EQ(FrameSize({65, 75}, {130, 150}), (PixelSize{130, 150}));
    EXPECT_EQ(FrameSize({650, 75}, {130, 150}), (PixelSize{130, 15}));
    EXPECT_EQ(RoomOnFrame({130, 150}), (PixelSize{110, 130}));
    EXPECT_TRUE(RoomOnFrame({3, 3}).Empty());
}

TEST(SizeTest, ScalingKeepsTheMeanAndTheEdges)
{
    PixelBuffer stripes{{8, 2}};
    for (std::size_t i = 0; i < 64; ++i)
        stripes.Bytes()[i] = i % 4 == 3 ? 255 : i / 4 % 8 < 4 ? 200 : 0;
    const auto firstRow = [&](PixelSize size) {
        std::vector<int> values;
        const PixelBuffer scaled = stripes.ScaledTo(size);
        for (std::size_t i = 0; i < scaled.Stride(); i += 4)
            values.push_back(scaled.Bytes()[i]);
        EXPECT_EQ(scaled.Bytes().back(), 255) << "it stays opaque";
        return values;
    };
    EXPECT_EQ(firstRow({4, 1}), (std::vector<int>{200, 200, 0, 0}));
    EXPECT_EQ(firstRow({1, 1}), (std::vector<int>{100}));
    EXPECT_EQ(firstRow({3, 1}), (std::vector<int>{200, 100, 0}));
    EXPECT_EQ(firstRow({16, 4}), (std::vector<int>{200, 200, 200, 200, 200, 200, 200, 150, 50, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_TRUE(stripes.ScaledTo({0, 5}).Empty());
    EXPECT_EQ((PixelBuffer{{1, 1}}.ScaledTo({3, 2}).Size()), (PixelSize{3, 2}));
}

TEST(IconFileTest, TheBestPictureForASizeIsFoundAndDamageIsNone)
{
    const std::string file = IconFile({{16, 32, "sixteen"}, {48, 8, "few"}, {48, 32, "many"}, {0, 32, "huge"}});
    const auto found = [](std::string_view icon, int side) {
        const IconPicture picture = FindIconPicture(icon, side);
        return std::to_string(picture.side) + std::string{picture.bytes.begin(), picture.bytes.end()};
    };
    const std::pair<int, const char*> best[] = {{8, "16sixteen"}, {16, "16sixteen"}, {17, "48many"},
                                                {48, "48many"},   {49, "256huge"},   {300, "256huge"}};
    for (const auto& [side, expected] : best)
        EXPECT_EQ(found(file, side), expected) << side;
    for (std::size_t length = 0; length < file.size(); ++length) // what lies past the end is not read
        (void)found(std::string{file, 0, length}, 300);
    EXPECT_EQ(found(file.substr(0, file.size() - 1), 300), "48many");
    std::string cursor = file;
    cursor[2] = 2;
    EXPECT_EQ(found(cursor, 16), "0");
    std::string hostile = IconFile({{16, 32, "sixteen"}});
    hostile.replace(14, 8, NumberBytes(-8, 4) + NumberBytes(16, 4));
    EXPECT_EQ(found(hostile, 16), "0");
}

} // namespace
} // namespace pictures
