// How a list shows thumbnails, and what an image shows.
#include "WindowTest.h"

#include "tests/pictures/win32/PictureFolder.h"

#include <set>

namespace {

class ThumbnailTest : public WindowTest {
protected:
    PictureFolder folder;
};

/// Rows with a picture each.
class PictureRows final : public ui::ListModel {
public:
    int Rows() const override { return Count; }
    std::string Text(int row, int) const override { return "picture " + std::to_string(row); }
    int Icon(int) const override { return 1; }
    int SmallIcon(int) const override { return 3; }
    ui::Thumbnail ThumbnailOf(int row) const override
    {
        Asked.push_back(row);
        return {Picture, {}, {}};
    }

    int Count{};
    std::string Picture;
    mutable std::vector<int> Asked;
};

} // namespace

TEST_F(ThumbnailTest, AListShowsThemTheVisibleOnesFirstAndNeverKeepsTheUserWaiting)
{
    DemoForm form{toolkit};
    Open(form);
    HWND list = HandleOf(form.lvList);
    PictureRows rows;
    rows.Picture = folder.AddSolid("picture.bmp", {100, 100}, '\x21');
    rows.Count = 300;
    form.lvList.SetView(ui::ListView::View::Thumbnails);
    form.lvList.SetModel(&rows);
    form.lvList.Select(150);
    toolkit.DoEvents();
    EXPECT_LT(rows.Asked.size(), 200u) << "handling what waits does not mean composing everything";
    ASSERT_TRUE(PumpUntil([&] { return rows.Asked.size() == 300; }));
    RECT first{};
    first.left = LVIR_ICON;
    SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(rows.Asked.front()), reinterpret_cast<LPARAM>(&first));
    RECT client{};
    GetClientRect(list, &client);
    EXPECT_TRUE(first.bottom > 0 && first.top < client.bottom) << rows.Asked.front();
    UpdateWindow(list);
    EXPECT_GT(std::ranges::count(Capture(list), 0x212121u), 100 * 100);

    // Another folder drops what was not composed yet.
    form.lvList.Refill();
    toolkit.DoEvents();
    PictureRows few;
    few.Count = 2;
    few.Picture = folder.Add("broken.jpg", "no picture");
    form.lvList.SetModel(&few);
    rows.Asked.clear();
    EXPECT_TRUE(PumpUntil([&] { return few.Asked.size() == 2; }));
    EXPECT_THAT(rows.Asked, testing::IsEmpty());
    form.lvList.SetModel(nullptr);
}

TEST_F(ThumbnailTest, OneRowAloneIsMarkedAlsoWhenTheListScrollsForIt)
{
    DemoForm form{toolkit};
    Open(form);
    HWND list = HandleOf(form.lvList);
    form.lvList.SetView(ui::ListView::View::Thumbnails);
    Focus(form.lvList);
    const auto placeOf = [&](int row) {
        RECT place{};
        place.left = LVIR_ICON;
        SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
        return place;
    };
    PictureRows rows;
    rows.Count = 60;
    form.lvList.SetModel(&rows);
    Pump();
    RECT client{};
    GetClientRect(list, &client);
    // One line more than there is room for, so that the first one stays partly in view when the last one is shown.
    int line = 1;
    while (placeOf(line).top == placeOf(0).top)
        ++line;
    int count = line;
    while (placeOf(count - 1).bottom + 40 < client.bottom)
        count += line;
    rows.Count = count;
    form.lvList.Refill();
    form.lvList.Select(0);
    Pump();
    const auto marked = [&](int row) {
        UpdateWindow(list);
        const RECT place = placeOf(row); // its lower left corner
        return Capture(list).at(static_cast<std::size_t>((place.bottom - 1) * client.right + place.left)) != 0xFFFFFF;
    };
    ASSERT_TRUE(marked(0));
    Press(VK_END);
    Pump();
    ASSERT_LT(placeOf(0).top, 0);
    ASSERT_GT(placeOf(0).bottom, 0);
    EXPECT_FALSE(marked(0));
    EXPECT_TRUE(marked(count - 1));
    form.lvList.SetModel(nullptr);
}

TEST_F(ThumbnailTest, APictureThatCannotBeShownGivesWayToAnotherAndThenToAText)
{
    DemoForm form{toolkit};
    Open(form);
    HWND image = HandleOf(form.imgPreview);
    const std::string spare = folder.AddSolid("spare.bmp", {40, 40}, '\x21');
    const auto inked = [&](unsigned colour) {
        UpdateWindow(image);
        return std::ranges::count(Capture(image), colour);
    };
    form.imgPreview.SetFallback(spare, "No picture");
    form.imgPreview.SetFile(folder.Add("broken.jpg", "no picture"));
    EXPECT_GT(inked(0x212121), 100);
    form.imgPreview.SetFallback("C:\\no such file.jpg", "No picture");
    EXPECT_EQ(inked(0x212121), 0);
    const auto shades = [&] {
        UpdateWindow(image);
        const auto pixels = Capture(image);
        return std::set<unsigned>(pixels.begin(), pixels.end()).size();
    };
    const auto withText = shades();
    form.imgPreview.SetFallback({}, {});
    EXPECT_GT(withText, shades());
}
