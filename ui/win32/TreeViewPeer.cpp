#include "ui/win32/TreeViewPeer.h"

#include "ui/win32/Canvas.h"
#include "ui/win32/FormWindow.h"
#include "ui/win32/NativeText.h"
#include "ui/win32/Theme.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace ui::win32 {
namespace {

constexpr Size OwnSize{3000, 3000}; ///< twips, where nobody asks for another
constexpr int RowRoom = 60;         ///< twips above and below a row's picture and text together
constexpr int ImageSide = 240;      ///< twips: 16 pixels at 96 dpi
constexpr int SelectionFrame = 15;  ///< twips
/// Sent to itself when a notification has ended during which the model changed or the pop-up menu was asked for.
constexpr UINT CatchUp = WM_APP + 1;
/// Sent to itself when the user has typed a label: the handler may show boxes, which the native tree must not be in
/// the middle of closing its edit box for.
constexpr UINT LabelTyped = WM_APP + 2;
/// Sent to itself behind that, and when nothing was typed.
constexpr UINT LabelClosed = WM_APP + 3;

UINT StateOf(bool bold, bool expanded)
{
    return (bold ? TVIS_BOLD : 0u) | (expanded ? TVIS_EXPANDED : 0u);
}

} // namespace

TreeViewPeer::TreeViewPeer(TreeView& peerTree, FormWindow& form, int id) : PeerBase{peerTree, form}, tree{peerTree}
{
    // The system's own theme marks branches without lines; lines stand in where there is no theme.
    // Without them the whole row can be selected and clicked.
    const DWORD lines = IsThemed() ? static_cast<DWORD>(TVS_FULLROWSELECT) : static_cast<DWORD>(TVS_HASLINES);
    Create(WC_TREEVIEWW, TVS_HASBUTTONS | TVS_LINESATROOT | TVS_SHOWSELALWAYS | TVS_EDITLABELS | lines,
           WS_EX_CLIENTEDGE, id);
    UseExplorerTheme(Handle());
}

Size TreeViewPeer::Preferred(int) const
{
    return OwnSize;
}

void TreeViewPeer::DpiChanged()
{
    PeerBase::DpiChanged();
    const ByCode guard{*this};
    SyncImages(true);
    // Room above and below the picture, as the font alone would set them too tight.
    const int height = std::max<int>(Measure("", NormalFont()).cy, Pixels(ImageSide)) + Pixels(RowRoom);
    Send(TVM_SETITEMHEIGHT, static_cast<WPARAM>(height + height % 2));
    SyncItems();
}

void TreeViewPeer::Sync(Aspect aspect)
{
    if (aspect == Aspect::Items) {
        SyncItems();
    } else if (aspect == Aspect::Selection) {
        SyncSelection();
    } else if (aspect == Aspect::LabelEdit) {
        OpenLabel();
    } else if (aspect == Aspect::Scroll) {
        SyncItems();
        if (tree.Selected() != nullptr)
            if (const HTREEITEM item = ItemOf(tree.Selected()->key))
                BringIntoView(item);
    }
}

void TreeViewPeer::SyncImages(bool always)
{
    if (!always && tree.Images.Pictures() == shownPictures)
        return;
    shownPictures = tree.Images.Pictures();
    ImageListHandle fresh = Window().Images().Build(tree.Images.Pictures(), Pixels(ImageSide));
    Send(TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(fresh.get()));
    images = std::move(fresh);
}

std::vector<TreeViewPeer::Row> TreeViewPeer::Wanted() const
{
    std::vector<Row> wanted;
    wanted.reserve(tree.Count());
    std::unordered_map<const TreeView::Node*, int> places;
    tree.ForEach([&](TreeView::Node& node) {
        places[&node] = static_cast<int>(wanted.size());
        wanted.push_back({node.key, node.text, node.image, node.selectedImage, node.bold, node.expanded,
                          node.parent != nullptr ? places.at(node.parent) : -1, nullptr});
        return true;
    });
    return wanted;
}

void TreeViewPeer::SyncItems()
{
    if (tree.Updating())
        return;
    // The native tree must not lose its items while it is still telling about them.
    if (IsNotifying()) {
        behind = true;
        return;
    }
    behind = false;
    const ByCode guard{*this};
    SyncImages(false);
    std::vector<Row> wanted = Wanted();
    const auto samePlace = [](const Row& a, const Row& b) { return a.key == b.key && a.parent == b.parent; };
    // A tree that was read again, and in which nobody chose anything else, stays where the user scrolled it.
    const bool scrolls = tree.Selected() != nullptr && tree.Selected()->key != KeyOf(TVGN_CARET);
    if (std::ranges::equal(wanted, rows, samePlace)) {
        Adjust(std::move(wanted));
        SyncSelection(scrolls);
        return;
    }
    const auto top = KeyOf(TVGN_FIRSTVISIBLE);
    const DrawnLater drawing{*this};
    Rebuild(std::move(wanted));
    SyncSelection(scrolls);
    if (const HTREEITEM item = top && !scrolls ? ItemOf(*top) : nullptr)
        Send(TVM_SELECTITEM, TVGN_FIRSTVISIBLE, reinterpret_cast<LPARAM>(item));
}

std::optional<std::string> TreeViewPeer::KeyOf(WPARAM which)
{
    const Row* row = RowOf(reinterpret_cast<HTREEITEM>(Send(TVM_GETNEXTITEM, which)));
    return row != nullptr ? std::optional{row->key} : std::nullopt; // "" is a key, too
}

void TreeViewPeer::Rebuild(std::vector<Row> wanted)
{
    Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    rows = std::move(wanted);
    byKey.clear();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        Row& row = rows[i];
        std::wstring text = ToNative(row.text);
        TVINSERTSTRUCTW insert{};
        insert.hParent = row.parent < 0 ? TVI_ROOT : rows[static_cast<std::size_t>(row.parent)].item;
        insert.hInsertAfter = TVI_LAST;
        insert.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_STATE | TVIF_PARAM;
        insert.item.pszText = text.data();
        insert.item.iImage = row.image;
        insert.item.iSelectedImage = row.selectedImage;
        insert.item.stateMask = TVIS_BOLD | TVIS_EXPANDED;
        insert.item.state = StateOf(row.bold, row.expanded);
        insert.item.lParam = static_cast<LPARAM>(i);
        row.item = reinterpret_cast<HTREEITEM>(Send(TVM_INSERTITEMW, 0, &insert));
        byKey.emplace(row.key, i);
    }
}

void TreeViewPeer::Adjust(std::vector<Row> wanted)
{
    for (std::size_t i = 0; i < rows.size(); ++i) {
        Row& row = rows[i];
        Row& goal = wanted[i];
        goal.item = row.item;
        TVITEMW item{};
        std::wstring text;
        item.hItem = row.item;
        if (row.text != goal.text) {
            text = ToNative(goal.text);
            item.mask |= TVIF_TEXT;
            item.pszText = text.data();
        }
        if (row.image != goal.image || row.selectedImage != goal.selectedImage) {
            item.mask |= TVIF_IMAGE | TVIF_SELECTEDIMAGE;
            item.iImage = goal.image;
            item.iSelectedImage = goal.selectedImage;
        }
        if (row.bold != goal.bold) {
            item.mask |= TVIF_STATE;
            item.stateMask = TVIS_BOLD;
            item.state = StateOf(goal.bold, false);
        }
        if (item.mask != 0) {
            item.mask |= TVIF_HANDLE;
            Send(TVM_SETITEMW, 0, &item);
        }
        if (row.expanded != goal.expanded)
            Send(TVM_EXPAND, goal.expanded ? TVE_EXPAND : TVE_COLLAPSE, reinterpret_cast<LPARAM>(row.item));
    }
    rows = std::move(wanted);
}

void TreeViewPeer::SyncSelection(bool scrolls)
{
    if (behind || tree.Updating())
        return;
    const ByCode guard{*this};
    const HTREEITEM item = tree.Selected() != nullptr ? ItemOf(tree.Selected()->key) : nullptr;
    if (reinterpret_cast<HTREEITEM>(Send(TVM_GETNEXTITEM, TVGN_CARET)) != item)
        Send(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
    if (item == nullptr)
        return;
    if (scrolls)
        BringIntoView(item);
    // Showing a node opens its ancestors in the native tree.
    for (int parent = rows[byKey.at(tree.Selected()->key)].parent; parent >= 0;) {
        Row& row = rows[static_cast<std::size_t>(parent)];
        row.expanded = true;
        parent = row.parent;
    }
}

void TreeViewPeer::BringIntoView(HTREEITEM item)
{
    Send(TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
    ScrollToTheLeft();
}

void TreeViewPeer::ScrollToTheLeft()
{
    for (int before = 0, place = 0; (place = GetScrollPos(Handle(), SB_HORZ)) > 0 && place != before; before = place)
        Send(WM_HSCROLL, SB_PAGELEFT);
}

HTREEITEM TreeViewPeer::ItemOf(const std::string& key) const
{
    const auto found = byKey.find(key);
    return found == byKey.end() ? nullptr : rows[found->second].item;
}

TreeViewPeer::Row* TreeViewPeer::RowOf(HTREEITEM item)
{
    TVITEMW native{};
    native.mask = TVIF_HANDLE | TVIF_PARAM;
    native.hItem = item;
    if (item == nullptr || Send(TVM_GETITEMW, 0, &native) == 0)
        return nullptr;
    const auto index = static_cast<std::size_t>(native.lParam);
    return index < rows.size() ? &rows[index] : nullptr;
}

void TreeViewPeer::OpenLabel()
{
    SyncItems();
    const HTREEITEM item = tree.EditedLabel() ? ItemOf(tree.EditedLabel()->key) : nullptr;
    SetFocus(Handle());
    if (item == nullptr || Send(TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(item)) == 0)
        tree.UserCancelsLabelEdit();
}

LRESULT TreeViewPeer::OnLabelOpens(const NMTVDISPINFOW& info)
{
    const Row* row = RowOf(info.item.hItem);
    if (row == nullptr)
        return TRUE;
    if (!IsByCode() && !tree.UserStartsLabelEdit(std::string{row->key}))
        return TRUE;
    if (!tree.EditedLabel())
        return TRUE;
    SetWindowTextW(reinterpret_cast<HWND>(Send(TVM_GETEDITCONTROL)), ToNative(tree.EditedLabel()->text).c_str());
    return FALSE;
}

void TreeViewPeer::OnLabelCloses(const NMTVDISPINFOW& info)
{
    if (info.item.pszText == nullptr || IsByCode()) {
        tree.UserCancelsLabelEdit();
    } else {
        typedLabel = FromNative(info.item.pszText);
        PostMessageW(Handle(), LabelTyped, 0, 0);
    }
    PostMessageW(Handle(), LabelClosed, 0, 0); // to show the whole box, the native tree may have scrolled
}

bool TreeViewPeer::ShowDropTarget(POINT onScreen)
{
    TVHITTESTINFO hit{};
    hit.pt = onScreen;
    ScreenToClient(Handle(), &hit.pt);
    RECT room{};
    GetClientRect(Handle(), &room);
    const bool isInside = PtInRect(&room, hit.pt) != FALSE;
    const int edge = Pixels(ImageSide);
    if (isInside && (hit.pt.y < edge || hit.pt.y >= room.bottom - edge))
        Send(WM_VSCROLL, hit.pt.y < edge ? SB_LINEUP : SB_LINEDOWN);
    Send(TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    constexpr UINT anywhereInRow = TVHT_ONITEM | TVHT_ONITEMBUTTON | TVHT_ONITEMINDENT | TVHT_ONITEMRIGHT;
    const Row* row = isInside && (hit.flags & anywhereInRow) != 0 ? RowOf(hit.hItem) : nullptr;
    if (row != nullptr && row->key.empty())
        row = nullptr; // the line between nodes takes nothing
    droppedOn = row != nullptr ? row->key : std::string{};
    const ByCode guard{*this};
    Send(TVM_SELECTITEM, TVGN_DROPHILITE, reinterpret_cast<LPARAM>(row != nullptr ? row->item : nullptr));
    return row != nullptr;
}

std::string TreeViewPeer::EndDrop()
{
    const ByCode guard{*this};
    Send(TVM_SELECTITEM, TVGN_DROPHILITE, 0);
    return std::exchange(droppedOn, {});
}

std::optional<LRESULT> TreeViewPeer::OnNotify(NMHDR& header)
{
    if (header.code == TVN_BEGINLABELEDITW)
        return OnLabelOpens(reinterpret_cast<const NMTVDISPINFOW&>(header));
    if (header.code == TVN_ENDLABELEDITW) {
        OnLabelCloses(reinterpret_cast<const NMTVDISPINFOW&>(header));
        return FALSE; // the model decides what the node is called
    }
    if (header.code == NM_CUSTOMDRAW)
        return OnCustomDraw(reinterpret_cast<const NMTVCUSTOMDRAW&>(header).nmcd);
    if (IsByCode())
        return std::nullopt;
    switch (header.code) {
    case TVN_SELCHANGEDW:
        if (!expanding)
            OnSelected(reinterpret_cast<const NMTREEVIEWW&>(header));
        return 0;
    case TVN_ITEMEXPANDINGW:
        expanding = true;
        return 0;
    case TVN_ITEMEXPANDEDW:
        expanding = false;
        OnExpanded(reinterpret_cast<const NMTREEVIEWW&>(header));
        return 0;
    case NM_DBLCLK:
        if (TreeView::Node* node = tree.Selected(); node != nullptr && clickedSelected && tree.DblClick)
            tree.DblClick(*node);
        return 0;
    default:
        return std::nullopt;
    }
}

LRESULT TreeViewPeer::OnCustomDraw(const NMCUSTOMDRAW& draw)
{
    if (GetFocus() == Handle() || !UnfocusedSelectionIsInvisible())
        return CDRF_DODEFAULT;
    if (draw.dwDrawStage == CDDS_PREPAINT)
        return CDRF_NOTIFYITEMDRAW;
    if (draw.dwDrawStage == CDDS_ITEMPREPAINT)
        return (draw.uItemState & CDIS_SELECTED) != 0 ? CDRF_NOTIFYPOSTPAINT : CDRF_DODEFAULT;
    if (draw.dwDrawStage != CDDS_ITEMPOSTPAINT)
        return CDRF_DODEFAULT;
    RECT place{};
    std::memcpy(&place, &draw.dwItemSpec,
                sizeof(draw.dwItemSpec)); // the message takes the item in the place of its answer
    if (Send(TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&place)) != 0)
        DrawSelectionFrame(draw.hdc, place, Pixels(SelectionFrame));
    return CDRF_DODEFAULT;
}

void TreeViewPeer::OnSelected(const NMTREEVIEWW& change)
{
    const Row* row = RowOf(change.itemNew.hItem);
    if (row == nullptr)
        return;
    const std::string key = row->key;
    const Watch watch{*this};
    tree.UserSelects(key);
    AfterNotification(watch);
}

void TreeViewPeer::OnExpanded(const NMTREEVIEWW& change)
{
    Row* row = RowOf(change.itemNew.hItem);
    if (row == nullptr)
        return;
    const std::string key = row->key;
    row->expanded = change.action == TVE_EXPAND;
    const Watch watch{*this};
    if (row->expanded)
        tree.UserExpands(key);
    else
        tree.UserCollapses(key);
    if (watch.Gone())
        return;
    selectionMayMove = true;
    AfterNotification(watch);
}

void TreeViewPeer::FoldSelection()
{
    // A branch that closes over the selection takes it to its own node, with or without telling.
    if (!std::exchange(selectionMayMove, false) || behind)
        return;
    const Row* current = RowOf(reinterpret_cast<HTREEITEM>(Send(TVM_GETNEXTITEM, TVGN_CARET)));
    if (current != nullptr && (tree.Selected() == nullptr || tree.Selected()->key != current->key))
        tree.UserSelects(std::string{current->key});
}

void TreeViewPeer::AfterNotification(const Watch& watch)
{
    if (!watch.Gone() && (behind || menuWanted))
        PostMessageW(Handle(), CatchUp, 0, 0);
}

bool TreeViewPeer::UsesKey(const Key& key)
{
    return tree.KeyDown && tree.KeyDown(key);
}

std::optional<LRESULT> TreeViewPeer::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case CatchUp:
        if (behind)
            SyncItems();
        if (menuWanted && !IsNotifying())
            ShowMenu(*std::exchange(menuWanted, std::nullopt));
        return 0;
    case LabelClosed:
        if (!tree.EditedLabel())
            ScrollToTheLeft();
        return 0;
    case LabelTyped:
        tree.UserEndsLabelEdit(std::exchange(typedLabel, {}));
        return 0;
    case WM_SETFOCUS: {
        // The native tree selects its first item by itself when it has none; the user did not.
        const ByCode guard{*this};
        const LRESULT result = Default(message, wParam, lParam);
        SyncSelection(false); // a click may be under way on what the user has scrolled to
        return result;
    }
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_KEYDOWN:
    case WM_CHAR:
        return OnInput(message, wParam, lParam);
    case WM_RBUTTONDOWN:
        OnRightButton({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        return 0;
    case WM_RBUTTONUP:
        // The handler of the selection may yield: what the menu is about shows first.
        if (IsNotifying())
            menuWanted = POINT{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
        else
            ShowMenu({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        return 0;
    case WM_MOUSEWHEEL:
        if ((GET_KEYSTATE_WPARAM(wParam) & MK_SHIFT) == 0)
            return std::nullopt;
        TurnSideways(GET_WHEEL_DELTA_WPARAM(wParam));
        return 0;
    case WM_SYSKEYDOWN:
        // Not every native tree hands Shift+F10 on to the system, which turns it into WM_CONTEXTMENU.
        if (wParam == VK_F10)
            return DefWindowProcW(Handle(), message, wParam, lParam);
        return std::nullopt;
    case WM_CONTEXTMENU:
        // The mouse's way is answered above; this is the keyboard's.
        OpenMenuAtSelection();
        return 0;
    default:
        return std::nullopt;
    }
}

LRESULT TreeViewPeer::OnInput(UINT message, WPARAM wParam, LPARAM lParam)
{
    const Watch watch{*this};
    const bool isClick = message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK;
    clickedSelected = isClick && IsSelected(ItemAt({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}));
    const LRESULT result = Default(message, wParam, lParam);
    expanding = false; // of a node without branches some systems tell the beginning only
    if (!watch.Gone())
        FoldSelection();
    if (message == WM_LBUTTONDOWN && clickedSelected && !watch.Gone())
        tree.UserClicksAgain();
    AfterNotification(watch);
    return result;
}

void TreeViewPeer::TurnSideways(int turned)
{
    constexpr int linesAStep = 3;
    for (int i = 0; i < linesAStep; ++i)
        Send(WM_HSCROLL, turned > 0 ? SB_LINELEFT : SB_LINERIGHT);
}

void TreeViewPeer::OpenMenuAtSelection()
{
    RECT place{};
    const auto item = reinterpret_cast<HTREEITEM>(Send(TVM_GETNEXTITEM, TVGN_CARET));
    if (item != nullptr) {
        BringIntoView(item);
        // The message takes the item in the place of the rectangle that it gives.
        std::memcpy(&place, &item, sizeof(item));
        Send(TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&place));
    }
    ShowMenu({place.left, place.bottom});
}

void TreeViewPeer::ShowMenu(POINT point)
{
    if (tree.ContextMenu)
        tree.ContextMenu(InForm(point));
}

void TreeViewPeer::OnRightButton(POINT point)
{
    const Watch watch{*this};
    SetFocus(Handle());
    if (const HTREEITEM item = watch.Gone() ? nullptr : ItemAt(point))
        Send(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
    AfterNotification(watch);
}

bool TreeViewPeer::IsSelected(HTREEITEM item)
{
    const Row* row = RowOf(item);
    return row != nullptr && tree.Selected() != nullptr && tree.Selected()->key == row->key;
}

HTREEITEM TreeViewPeer::ItemAt(POINT point) const
{
    TVHITTESTINFO hit{};
    hit.pt = point;
    Send(TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    const bool isWholeRow = (GetWindowLongPtrW(Handle(), GWL_STYLE) & TVS_FULLROWSELECT) != 0;
    const UINT wanted = TVHT_ONITEM | (isWholeRow ? TVHT_ONITEMRIGHT | TVHT_ONITEMINDENT : 0u);
    return (hit.flags & wanted) != 0 ? hit.hItem : nullptr;
}

} // namespace ui::win32
