#include "WindowTest.h"

#include <set>

using testing::ElementsAre;

namespace {

constexpr ui::ListView::View Views[] = {ui::ListView::View::LargeIcons, ui::ListView::View::SmallIcons,
                                        ui::ListView::View::List, ui::ListView::View::Details,
                                        ui::ListView::View::Thumbnails};

class ListViewWindowTest : public DemoFormTest {
protected:
    void SetUp() override { Focus(form.lvList); }

    POINT At(int row) const { return PlaceOf(form.lvList, row); }
    void Fill(int rows)
    {
        form.Rows.Count = rows;
        form.lvList.Refill();
        Pump();
    }
    HWND Header() const { return reinterpret_cast<HWND>(Send(form.lvList, LVM_GETHEADER)); }

    HDITEMW Heading(WPARAM column) const
    {
        HDITEMW item{};
        item.mask = HDI_FORMAT | HDI_WIDTH;
        SendMessageW(Header(), HDM_GETITEMW, column, reinterpret_cast<LPARAM>(&item));
        return item;
    }
};

} // namespace

TEST_F(ListViewWindowTest, TurnsEachKeyAndButtonIntoOneEvent)
{
    Fill(8);
    // clang-format off
    Check(form, {
        {"end", [&] { Press(VK_END); }, {"row 7"}},
        {"enter", [&] { Press(VK_RETURN); }, {"open 7"}},
        {"right button", [&] { RightClick(list, At(4)); }, {"row 4", "context 4"}},
        {"context key", [&] { Send(form.lvList, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list), -1); }, {"context 4"}},
        {"beside the rows", [&] { Click(list, {20, At(7).y + 100}); }, {"row -1"}},
        {"typing", [&] { Type(L"L"); }, {"row 5"}}},
        [&] { EXPECT_EQ(RowOf(form.lvList), form.lvList.Selected()); });
    // clang-format on
}

TEST_F(ListViewWindowTest, AsksOnlyForWhatItShowsOfTenThousandRows)
{
    form.lvList.Select(40);
    for (const auto view : Views) {
        form.lvList.SetView(view);
        Pump();
        EXPECT_EQ(RowOf(form.lvList), 40) << static_cast<int>(view);
    }
    form.lvList.SetView(ui::ListView::View::Details);
    form.Rows.Count = 10000;
    form.Rows.Asked = 0;
    form.lvList.Refill();
    form.lvList.SetView(ui::ListView::View::LargeIcons);
    form.lvList.SetView(ui::ListView::View::Details);
    Pump();
    EXPECT_EQ(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0), 10000);
    EXPECT_LT(form.Rows.Asked, 2000);
    Type(L"Z");
    EXPECT_EQ(form.lvList.Selected(), 9000) << "typing finds a row far below";
}

TEST_F(ListViewWindowTest, ShowsTheSortAndReportsColumns)
{
    EXPECT_NE(Heading(0).fmt & HDF_SORTUP, 0);
    form.lvList.SetSort(2, false);
    EXPECT_EQ(Heading(0).fmt & (HDF_SORTUP | HDF_SORTDOWN), 0);
    EXPECT_NE(Heading(2).fmt & HDF_SORTDOWN, 0);

    RECT second{};
    SendMessageW(Header(), HDM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&second));
    Click(Header(), {second.left + 30, second.top + 5});
    EXPECT_THAT(form.Events, ElementsAre("column 1"));

    SendMessageW(list, LVM_SETCOLUMNWIDTH, 1, 200);
    const int dpi = ui::win32::DpiOf(list);
    EXPECT_EQ(form.lvList.Columns()[1].width, ui::win32::ToTwips(200, dpi)) << "widths of the user reach the model";
    form.lvList.SetView(ui::ListView::View::List);
    form.lvList.SetView(ui::ListView::View::Details);
    Pump();
    EXPECT_EQ(Heading(1).cxy, 200);
    EXPECT_EQ(form.lvList.Columns()[0].width, 3300) << "another view's widths do not";
}

TEST_F(ListViewWindowTest, HasRowsInPlaceAndScrollsToTheSelectionInEveryView)
{
    for (const auto view : Views) {
        SCOPED_TRACE(static_cast<int>(view));
        form.lvList.SetView(view);
        Fill(2);
        Fill(6);
        std::set<std::pair<LONG, LONG>> places;
        for (int row = 0; row < 6; ++row)
            places.emplace(At(row).x, At(row).y);
        EXPECT_EQ(places.size(), 6u) << "those that a refill adds, too";

        Fill(60);
        form.lvList.Select(0);
        Pump();
        for (const auto& [key, row] : {std::pair<WORD, int>{VK_END, 59}, {VK_HOME, 0}}) {
            Press(key);
            Pump();
            EXPECT_EQ(form.lvList.Selected(), row);
            const RECT place = PlaceOfRow(form.lvList, row, LVIR_BOUNDS);
            EXPECT_TRUE(place.top >= 0 && place.bottom <= ClientOf(list).bottom) << place.top << " " << place.bottom;
        }
        // Read again, it stays where the user has scrolled it.
        Send(form.lvList, LVM_ENSUREVISIBLE, 59);
        const RECT before = PlaceOfRow(form.lvList, 59, LVIR_BOUNDS);
        form.lvList.Refreshed(0);
        Pump();
        const RECT after = PlaceOfRow(form.lvList, 59, LVIR_BOUNDS);
        EXPECT_TRUE(EqualRect(&before, &after)) << before.top << " " << after.top;
    }
    // The bar that comes with many rows leaves room for one less in a line, at some of these widths.
    const ui::Rect bounds = form.lvList.Bounds();
    for (int width = bounds.width; width > bounds.width - 2400; width -= 120) {
        form.lvList.SetBounds({bounds.left, bounds.top, width, bounds.height});
        Fill(2);
        Fill(60);
        EXPECT_EQ(GetWindowLongPtrW(list, GWL_STYLE) & (WS_HSCROLL | WS_VSCROLL), WS_VSCROLL) << width;
    }
}

TEST_F(ListViewWindowTest, DrawsTheEmptyTextInItsOwnArea)
{
    form.lvList.SetView(ui::ListView::View::LargeIcons);
    Fill(0);
    const int withText = CountOf(list, 0xFFFFFF);
    form.lvList.SetEmptyText("");
    Pump();
    EXPECT_LT(withText + 50, CountOf(list, 0xFFFFFF));
}

TEST_F(ListViewWindowTest, ARowIsDraggedOntoATreesNode)
{
    Fill(8);
    form.lvList.DropTarget = &form.tvTree;
    std::vector<std::string> dropped;
    form.tvTree.Drop = [&](ui::TreeView::Node& node, ui::Control& source) {
        dropped.push_back(node.text + (&source == &form.lvList ? " from the list, row " : " from elsewhere, row ") +
                          std::to_string(form.lvList.Selected()));
    };
    // Both messages tell the place in the source's client area.
    const auto placeOf = [&](POINT target) {
        MapWindowPoints(tree, list, &target, 1);
        return MAKELPARAM(target.x, target.y);
    };
    const auto drag = [&](POINT target) {
        BeginDrag(form.lvList, 3);
        SendMessageW(list, WM_MOUSEMOVE, MK_LBUTTON, placeOf(target));
    };
    const POINT onNode = PlaceOf(form.tvTree, 0);

    drag(onNode);
    SendMessageW(list, WM_LBUTTONUP, 0, placeOf(onNode));
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_THAT(dropped, ElementsAre("My Favorites from the list, row 3"));

    drag({-50, -50});
    SendMessageW(list, WM_LBUTTONUP, 0, placeOf({-50, -50}));
    drag(onNode);
    Press(VK_ESCAPE);
    SendMessageW(list, WM_LBUTTONUP, 0, placeOf(onNode));
    EXPECT_EQ(dropped.size(), 1u) << "let go beside the nodes, or given up";
}
