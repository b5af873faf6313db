// What the tree and the list add to the bare controls of the system that they are made of.
#include "bench/Measure.h"

#include "ui/Form.h"
#include "ui/ListView.h"
#include "ui/TreeView.h"
#include "ui/win32/PeerBase.h"
#include "ui/win32/Win32Toolkit.h"

#include <string>

namespace bench {
namespace {

constexpr int Rounds = 7;
constexpr int Categories = 100;
constexpr int NodesBelow = 4;
constexpr int ListRows = 10'000;

class BenchForm final : public ui::Form {
public:
    explicit BenchForm(ui::Toolkit& toolkit) : Form{toolkit, "BenchForm", Style::Sizable}
    {
        SetPlacement({300, 300, 15000, 11000});
        tree.SetBounds({0, 0, 4000, 10000});
        list.SetBounds({4000, 0, 10000, 10000});
        list.SetView(ui::ListView::View::Details);
    }
    ui::TreeView tree{*this};
    ui::ListView list{*this};
};

struct TenThousandRows final : ui::ListModel {
    int Rows() const override { return ListRows; }
    std::string Text(int row, int) const override { return "row " + std::to_string(row); }
    int Icon(int) const override { return 0; }
    int SmallIcon(int) const override { return 0; }
};

HWND Bare(const wchar_t* className, DWORD style, HWND parent)
{
    return CreateWindowW(className, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, 260, 660, parent, nullptr, nullptr,
                         nullptr);
}

HTREEITEM Insert(HWND tree, HTREEITEM parent, std::wstring text)
{
    TVINSERTSTRUCTW item{};
    item.hParent = parent;
    item.hInsertAfter = TVI_LAST;
    item.item.mask = TVIF_TEXT;
    item.item.pszText = text.data();
    return reinterpret_cast<HTREEITEM>(SendMessageW(tree, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
}

void RebuildBare(HWND tree)
{
    SendMessageW(tree, WM_SETREDRAW, FALSE, 0);
    SendMessageW(tree, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    for (int i = 0; i < Categories; ++i) {
        const HTREEITEM parent = Insert(tree, TVI_ROOT, L"Category " + std::to_wstring(i));
        for (int k = 0; k < NodesBelow; ++k)
            Insert(tree, parent, std::to_wstring(k));
        if (i % 2 == 0)
            SendMessageW(tree, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(parent));
    }
    SendMessageW(tree, WM_SETREDRAW, TRUE, 0);
    UpdateWindow(tree);
}

void Rebuild(ui::TreeView& tree)
{
    const ui::TreeUpdate update{tree};
    tree.Clear();
    for (int i = 0; i < Categories; ++i) {
        const std::string key = "Category " + std::to_string(i);
        ui::TreeView::Node* parent = tree.Add(nullptr, key, key, 0, 0);
        for (int k = 0; k < NodesBelow; ++k)
            tree.Add(parent, key + "\\" + std::to_string(k), std::to_string(k), 0, 0);
        tree.SetExpanded(*parent, i % 2 == 0);
    }
}

/// A bare list that holds its rows itself, redraw off: what a list that is not virtual costs at least.
void FillBare(HWND list)
{
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
    for (int row = 0; row < ListRows; ++row) {
        std::wstring text = L"row " + std::to_wstring(row);
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.pszText = text.data();
        SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    UpdateWindow(list);
}

int Run()
{
    ui::win32::Win32Toolkit toolkit;
    BenchForm form{toolkit};
    form.Show();
    const HWND tree = dynamic_cast<const ui::win32::PeerBase&>(*form.tree.Peer()).Handle();
    const HWND parent = GetParent(tree);
    const HWND bareTree = Bare(WC_TREEVIEWW, TVS_HASLINES | TVS_HASBUTTONS | TVS_LINESATROOT, parent);
    const HWND bareList = Bare(WC_LISTVIEWW, LVS_REPORT, parent);
    TenThousandRows rows;
    const auto least =
        LeastTimes(Rounds, {[&] { RebuildBare(bareTree); },
                            [&] {
                                Rebuild(form.tree);
                                UpdateWindow(tree);
                            },
                            [&] { FillBare(bareList); },
                            [&] {
                                form.list.SetModel(nullptr);
                                form.list.SetModel(&rows);
                                for (const auto view : {ui::ListView::View::LargeIcons, ui::ListView::View::Details}) {
                                    form.list.SetView(view);
                                    toolkit.DoEvents();
                                }
                            }});
    const bool treeKept = Print("tree of 500 nodes / bare control", least[1], least[0], 8);
    const bool listKept = Print("list of 10,000 rows, two views / bare fill", least[3], least[2], 1.5);
    return treeKept && listKept ? 0 : 1;
}

} // namespace
} // namespace bench

int main()
{
    return bench::Run();
}
