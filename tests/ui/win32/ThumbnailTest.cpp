// How a list shows thumbnails, and what an image shows.
#include "WindowTest.h"

#include "tests/pictures/win32/PictureFolder.h"

#include <set>

namespace {

class ThumbnailTest : public DemoFormTest {
protected:
    PictureFolder folder;
    DemoRows& rows{form.Rows};

    void SetUp() override
    {
        Focus(form.lvList);
        form.lvList.SetView(ui::ListView::View::Thumbnails);
    }

    RECT PlaceOf(int row) const { return PlaceOfRow(form.lvList, row, LVIR_ICON); }
    /// In the real loop, which alone takes what other threads bring.
    void RunUntil(const std::function<bool()>& condition)
    {
        acts.Add([&] {
            if (condition())
                toolkit.Quit();
            return condition();
        });
        toolkit.Run();
    }
};

} // namespace

TEST_F(ThumbnailTest, AListShowsThemTheVisibleOnesFirstAndNeverKeepsTheUserWaiting)
{
    rows.Picture = folder.AddSolid("picture.bmp", {100, 100}, '\x21');
    rows.Count = 300;
    rows.Composed.clear();
    form.lvList.Refill();
    form.lvList.Select(150);
    toolkit.DoEvents();
    EXPECT_LT(rows.Composed.size(), 200u) << "handling what waits does not mean composing everything";
    RunUntil([&] { return rows.Composed.size() == 300; });
    const RECT first = PlaceOf(rows.Composed.front());
    EXPECT_TRUE(first.bottom > 0 && first.top < ClientOf(list).bottom) << rows.Composed.front();
    const auto dark = [&](unsigned colour) { return CountOf(list, colour) >= 100 * 100; };
    EXPECT_TRUE(dark(0x212121));

    // Another folder drops what was not composed yet.
    form.lvList.Refill();
    toolkit.DoEvents();
    DemoRows few;
    few.Count = 2;
    few.Picture = folder.Add("broken.jpg", "no picture");
    form.lvList.SetModel(&few);
    rows.Composed.clear();
    RunUntil([&] { return few.Composed.size() == 2; });
    EXPECT_THAT(rows.Composed, testing::IsEmpty());

    // The way back shows what was kept at once, and what has changed meanwhile soon.
    form.lvList.SetModel(&rows);
    toolkit.DoEvents();
    EXPECT_TRUE(dark(0x212121));
    RunUntil([&] { return rows.Composed.size() == 300; });
    form.lvList.SetModel(&few);
    folder.AddSolid("picture.bmp", {110, 110}, '\x43');
    form.lvList.SetModel(&rows);
    RunUntil([&] { return dark(0x434343); });
    form.lvList.SetModel(nullptr);
}

TEST_F(ThumbnailTest, OneRowAloneIsMarkedAlsoWhenTheListScrollsForIt)
{
    form.lvList.Refill();
    Pump();
    // Two lines, and room for one and a half: the first one stays partly in view when the last one is shown.
    int line = 1;
    while (PlaceOf(line).top == PlaceOf(0).top)
        ++line;
    ui::Rect place = form.lvList.Bounds();
    place.height = ui::win32::ToTwips((PlaceOf(line).top - PlaceOf(0).top) * 3 / 2, ui::win32::DpiOf(list));
    form.lvList.SetBounds(place);
    rows.Count = 2 * line;
    form.lvList.Refill();
    form.lvList.Select(0);
    Pump();
    const auto marked = [&](int row) {
        const RECT icon = PlaceOf(row); // its lower left corner
        const LONG pixel = (icon.bottom - 1) * ClientOf(list).right + icon.left;
        return Capture(list).at(static_cast<std::size_t>(pixel)) != 0xFFFFFF;
    };
    ASSERT_TRUE(marked(0));
    Press(VK_END);
    ASSERT_LT(PlaceOf(0).top, 0);
    ASSERT_GT(PlaceOf(0).bottom, 0);
    EXPECT_FALSE(marked(0));
    EXPECT_TRUE(marked(rows.Count - 1));
}

TEST_F(ThumbnailTest, APictureThatCannotBeShownGivesWayToAnotherAndThenToAText)
{
    HWND image = HandleOf(form.imgPreview);
    form.imgPreview.SetFallback(folder.AddSolid("spare.bmp", {40, 40}, '\x21'), "No picture");
    form.imgPreview.SetFile(folder.Add("broken.jpg", "no picture"));
    EXPECT_EQ(CountOf(image, 0x212121), 0) << "it is not decoded while the window paints";
    RunUntil([&] { return CountOf(image, 0x212121) > 100; });
    form.imgPreview.SetFallback("C:\\no such file.jpg", "No picture");
    EXPECT_EQ(CountOf(image, 0x212121), 0);
    const auto shades = [&] {
        const auto pixels = Capture(image);
        return std::set<unsigned>(pixels.begin(), pixels.end()).size();
    };
    const auto blank = shades();
    RunUntil([&] { return shades() > blank; }); // the text
    form.imgPreview.SetFallback({}, {});
    EXPECT_EQ(shades(), blank);

    // Pictures in boxes are drawn for paper: dark ink must not stand on a dark window. One dark point, seven clear
    // ones.
    const unsigned char picture[] = {0x47, 0x49, 0x46, 0x38, 0x39, 0x61, 8, 0,    1,    0,    0x80, 0,    0, 0,   0, 0,
                                     0x21, 0x21, 0x21, 0x21, 0xF9, 4,    1, 0,    0,    0,    0,    0x2C, 0, 0,   0, 0,
                                     8,    0,    1,    0,    0,    2,    5, 0x0C, 0x08, 0x10, 0x20, 0x50, 0, 0x3B};
    form.imgPreview.Box = {900, 900};
    form.imgPreview.SetFile(folder.Add("clear.gif", {reinterpret_cast<const char*>(picture), sizeof(picture)}));
    const auto inBox = shades();
    RunUntil([&] { return shades() > inBox; });
    EXPECT_EQ(CountOf(image, GetSysColor(COLOR_3DFACE)), 0);
}
