// What is decoded of picture and icon files, and what is refused.
#include "PictureFolder.h"

#include "pictures/win32/ImageLoader.h"
#include "pictures/win32/NativePixels.h"
#include "pictures/win32/Win32Pictures.h"

#include <thread>

namespace pictures::win32 {
namespace {

/// Opaque, with `shade` in every colour.
IconEntry SolidIcon(int side, char shade)
{
    std::string bytes = BitmapHeader({side, 2 * side}, 32);
    for (int i = 0; i < side * side; ++i)
        bytes += std::string(3, shade) + '\xFF';
    return {side, 32, bytes + std::string(static_cast<std::size_t>((side + 31) / 32 * 4 * side), '\0')};
}

class PictureTest : public testing::Test {
protected:
    PictureFolder folder;
    Win32Pictures pictures;
    ImageLoader icons{GetModuleHandleW(nullptr)};
};

TEST_F(PictureTest, FitsIntoItsRoomOnAnyThreadHoweverLongItsPath)
{
    for (int depth = 0; depth < 3; ++depth) {
        const std::string file = folder.AddSolid("a.bmp", {200, 100}, '\x40');
        PixelSize size;
        PixelBuffer small, large;
        std::thread{[&] {
            size = pictures.SizeOf(file);
            small = pictures.Decode(file, {100, 100});
            large = pictures.Decode(file, {300, 300}, 2);
        }}.join();
        EXPECT_EQ(size, (PixelSize{200, 100})) << file;
        EXPECT_EQ(small.Size(), (PixelSize{100, 50})) << file;
        EXPECT_EQ(large.Size(), (PixelSize{300, 150})) << file;
        EXPECT_EQ(large.Empty() ? 0 : large.Bytes()[0], 0x40);
        const auto icon =
            icons.FromFile(folder.Add("a.ico", IconFile({SolidIcon(16, '\x10'), SolidIcon(64, '\x60')})), 32);
        const PixelBuffer drawn = FromIcon(icon.get(), 32);
        EXPECT_EQ(drawn.Empty() ? 0 : drawn.Bytes()[0], 0x60) << "the larger one is scaled down";
        folder.GoDeeper(std::string(150, 'd'));
    }
}

TEST_F(PictureTest, ABrokenOrHostileFileShowsNothing)
{
    const std::string whole = Bitmap({20, 20}, {20, 20});
    for (const std::string& content :
         {std::string{}, std::string{"no picture"}, whole.substr(0, 40), Bitmap({2, 2}, {0x7FFFFFFF, 0x7FFFFFFF}),
          Bitmap({2, 2}, {30000, 2}), Bitmap({2, 2}, {19000, 19000}), Bitmap({2, 2}, {0, 0})}) {
        const std::string file = folder.Add("a.bmp", content);
        EXPECT_FALSE(pictures.CanShow(file)) << content.size();
        EXPECT_EQ(icons.FromFile(file, 16), nullptr);
    }
    EXPECT_TRUE(pictures.SizeOf("C:\\no such folder\\none.png").Empty());
    EXPECT_FALSE(pictures.CanShow("C:\\windows"));
    const std::string file = folder.Add("a.bmp", whole);
    EXPECT_TRUE(pictures.CanShow(file));
    EXPECT_TRUE(pictures.Decode(file, {0, 50}).Empty());
}

TEST_F(PictureTest, AnImageListFillsGapsAndReplacesWhatIsBroken)
{
    const std::string broken = folder.Add("broken.ico", "no icon");
    const auto list = icons.Build({{1, {"folder", {}}}, {4, {"no such picture", {}}}, {5, {{}, broken}}}, 36);
    EXPECT_EQ(ImageList_GetImageCount(list.get()), 6);
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(list.get(), &width, &height);
    EXPECT_EQ(width, 36);
    EXPECT_EQ(icons.Named("no such picture", 16), nullptr);
    EXPECT_NE(icons.Load({"no such picture", {}}, 16), nullptr);
}

} // namespace
} // namespace pictures::win32
