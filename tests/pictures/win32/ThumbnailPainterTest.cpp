// How a thumbnail is composed.
#include "PictureFolder.h"

#include "pictures/win32/NativePixels.h"
#include "pictures/win32/ThumbnailPainter.h"
#include "pictures/win32/Win32Pictures.h"
#include "pictures/win32/pcMemDC.h"

namespace pictures::win32 {
namespace {

PixelBuffer Solid(PixelSize size, std::uint8_t value)
{
    PixelBuffer picture{size};
    picture.Flatten({value, value, value});
    return picture;
}

int ValueAt(const PixelBuffer& picture, int x, int y)
{
    return picture.Bytes()[static_cast<std::size_t>(y) * picture.Stride() + static_cast<std::size_t>(x) * 4];
}

TEST(ThumbnailPainterTest, AMemoryContextCopiesStretchesAndCombines)
{
    const DWORD objects = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    {
        pcMemDC memory;
        memory.CreateFromPicture(Solid({40, 30}, 200));
        EXPECT_EQ(memory.Width(), 40);
        EXPECT_EQ(memory.Height(), 30);
        memory.PaintPicture(Solid({5, 5}, 100), {10, 10, 20, 20}, SRCCOPY);
        const PixelBuffer result = memory.Picture();
        for (const auto& [at, value] : {std::pair{9, 200}, {10, 100}, {19, 100}, {20, 200}})
            EXPECT_EQ(ValueAt(result, at, at), value) << at;
        EXPECT_EQ(result.Bytes()[3], 255);
        memory.PaintPicture(Solid({40, 30}, 0xF0), {0, 0, 40, 30}, SRCAND);
        EXPECT_EQ(ValueAt(memory.Picture(), 0, 0), 200 & 0xF0);

        const auto bitmap = ToBitmap(Solid({8, 6}, 77));
        memory.CreateFromHBitmap(bitmap.get());
        EXPECT_EQ(memory.Width(), 8);
        EXPECT_EQ(ValueAt(memory.Picture(), 7, 5), 77);
        memory.SetWidth(20);
        memory.SetHeight(10);
        EXPECT_EQ(memory.Picture().Size().width, 20);
        EXPECT_EQ(ValueAt(memory.Picture(), 0, 0), 0);
        memory.CreateFromPicture({});
        EXPECT_TRUE(memory.Picture().Empty());
        EXPECT_EQ(memory.hdc(), nullptr);
        memory.PaintPicture(Solid({5, 5}, 100), {0, 0, 5, 5}, SRCCOPY);
    }
    EXPECT_EQ(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS), objects);
}

TEST(ThumbnailPainterTest, ThePictureLiesOnTheFrameAndWhatIsBrokenGivesWay)
{
    PictureFolder folder;
    const Win32Pictures pictures;
    const std::string wide = folder.AddSolid("wide.bmp", {400, 100}, '\x20');
    const std::string frame = folder.AddSolid("frame.bmp", {65, 75}, '\x60');
    const std::string spare = folder.AddSolid("spare.bmp", {30, 30}, '\x50');
    const std::string broken = folder.Add("broken.jpg", "no picture");
    struct Case {
        const char* name;
        Thumbnail thumbnail;
        PixelSize size;
        int corner, centre; ///< -1: no thumbnail
    };
    for (const Case& c : {Case{"bare", {wide, spare, {}}, {130, 33}, 0x20, 0x20},
                          Case{"framed", {wide, spare, frame}, {130, 150}, 0x60, 0x20},
                          Case{"broken", {broken, spare, {}}, {30, 30}, 0x50, 0x50},
                          Case{"broken, framed", {broken, spare, frame}, {130, 150}, 0x60, 0x50},
                          Case{"no fall-back", {broken, {}, frame}, {0, 0}, -1, -1},
                          Case{"no frame after all", {wide, spare, broken}, {130, 33}, 0x20, 0x20}}) {
        ThumbnailPainter painter{pictures, {130, 150}, 1};
        for (int time = 0; time < 2; ++time) { // the frame is kept from the first
            const PixelBuffer thumbnail = painter.Paint(c.thumbnail);
            ASSERT_EQ(thumbnail.Empty(), c.corner < 0) << c.name;
            EXPECT_EQ(thumbnail.Size(), c.size) << c.name;
            if (thumbnail.Empty())
                continue;
            EXPECT_EQ(ValueAt(thumbnail, 0, 0), c.corner) << c.name;
            EXPECT_EQ(ValueAt(thumbnail, c.size.width / 2, c.size.height / 2), c.centre) << c.name;
        }
    }
}

} // namespace
} // namespace pictures::win32
