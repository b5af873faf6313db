#include "WindowTest.h"

#include <set>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr ui::ListView::View Views[] = {ui::ListView::View::LargeIcons, ui::ListView::View::SmallIcons,
                                        ui::ListView::View::List, ui::ListView::View::Details,
                                        ui::ListView::View::Thumbnails};

class ListViewWindowTest : public WindowTest {
protected:
    DemoForm form{toolkit};
    HWND list{};

    void SetUp() override
    {
        Open(form);
        Focus(form.lvList);
        list = HandleOf(form.lvList);
    }

    int NativeSelection() const
    {
        return static_cast<int>(SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    }

    POINT At(int row) const { return PlaceOf(form.lvList, row); }

    HDITEMW Heading(WPARAM column) const
    {
        HDITEMW item{};
        item.mask = HDI_FORMAT | HDI_WIDTH;
        SendMessageW(reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0)), HDM_GETITEMW, column,
                     reinterpret_cast<LPARAM>(&item));
        return item;
    }
};

} // namespace

TEST_F(ListViewWindowTest, TurnsEachKeyAndButtonIntoOneEvent)
{
    form.Rows.Count = 8;
    form.lvList.Refill();
    Pump();
    struct Act {
        const char* name;
        std::function<void()> run;
        std::vector<std::string> events;
    };
    const Act acts[] = {
        {"end", [&] { Press(VK_END); }, {"row 7"}},
        {"enter", [&] { Press(VK_RETURN); }, {"open 7"}},
        {"right button", [&] { RightClick(list, At(4)); }, {"row 4", "context 4"}},
        {"context key", [&] { SendMessageW(list, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list), -1); }, {"context 4"}},
        {"beside the rows",
         [&] {
             Click(list, {20, At(7).y + 100});
         },
         {"row -1"}},
        {"typing", [&] { Type(L"L"); }, {"row 5"}},
    };
    for (const Act& act : acts) {
        form.Events.clear();
        act.run();
        EXPECT_EQ(form.Events, act.events) << act.name;
        EXPECT_EQ(NativeSelection(), form.lvList.Selected()) << act.name;
    }
}

TEST_F(ListViewWindowTest, AsksOnlyForWhatItShowsOfTenThousandRows)
{
    form.lvList.Select(40);
    for (const auto view : Views) {
        form.lvList.SetView(view);
        Pump();
        EXPECT_EQ(NativeSelection(), 40) << static_cast<int>(view);
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

    const HWND header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    RECT second{};
    SendMessageW(header, HDM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&second));
    Click(header, {second.left + 30, second.top + 5});
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

TEST_F(ListViewWindowTest, GivesRowsThatARefillAddsAPlaceInEveryView)
{
    for (const auto view : Views) {
        form.lvList.SetView(view);
        std::set<std::pair<LONG, LONG>> places;
        for (const int count : {2, 6}) {
            form.Rows.Count = count;
            form.lvList.Refill();
            UpdateWindow(list);
        }
        for (int row = 0; row < 6; ++row)
            places.emplace(At(row).x, At(row).y);
        EXPECT_EQ(places.size(), 6u) << "view " << static_cast<int>(view);
    }
}

TEST_F(ListViewWindowTest, TheKeyboardScrollsTheSelectionIntoViewInEveryView)
{
    for (const auto view : Views) {
        form.lvList.SetView(view);
        form.lvList.Select(0);
        Pump();
        for (const WORD key : {WORD{VK_END}, WORD{VK_HOME}}) {
            Press(key);
            Pump();
            RECT client{};
            GetClientRect(list, &client);
            RECT place{};
            place.left = LVIR_BOUNDS;
            SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(form.lvList.Selected()),
                         reinterpret_cast<LPARAM>(&place));
            EXPECT_EQ(form.lvList.Selected(), key == VK_END ? form.Rows.Count - 1 : 0);
            EXPECT_TRUE(place.top >= 0 && place.bottom <= client.bottom)
                << "view " << static_cast<int>(view) << ": " << place.top << " to " << place.bottom << " of "
                << client.bottom;
        }
    }
}

TEST_F(ListViewWindowTest, DrawsTheEmptyTextInItsOwnArea)
{
    const auto inked = [&] {
        UpdateWindow(list);
        const auto pixels = Capture(list);
        return std::ranges::count_if(pixels, [](unsigned pixel) { return pixel != 0xFFFFFF; });
    };
    form.lvList.SetView(ui::ListView::View::LargeIcons);
    form.Rows.Count = 0;
    form.lvList.Refill();
    Pump();
    const auto withText = inked();
    form.lvList.SetEmptyText("");
    Pump();
    EXPECT_GT(withText, inked() + 50);
}

TEST_F(ListViewWindowTest, ARowIsDraggedOntoATreesNode)
{
    form.Rows.Count = 8;
    form.lvList.Refill();
    form.lvList.DropTarget = &form.tvTree;
    std::vector<std::string> dropped;
    form.tvTree.Drop = [&](ui::TreeView::Node& node, ui::Control& source) {
        dropped.push_back(node.text + (&source == &form.lvList ? " from the list, row " : " from elsewhere, row ") +
                          std::to_string(form.lvList.Selected()));
    };
    HWND tree = HandleOf(form.tvTree);
    // Both messages tell the place in the source's client area.
    const auto placeOf = [&](POINT target) {
        MapWindowPoints(tree, list, &target, 1);
        return MAKELPARAM(target.x, target.y);
    };
    const auto drag = [&](POINT target) {
        NMLISTVIEW begins{};
        begins.hdr = {list, static_cast<UINT_PTR>(GetDlgCtrlID(list)), static_cast<UINT>(LVN_BEGINDRAG)};
        begins.iItem = 3;
        SendMessageW(GetParent(list), WM_NOTIFY, begins.hdr.idFrom, reinterpret_cast<LPARAM>(&begins));
        EXPECT_EQ(GetCapture(), list);
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
