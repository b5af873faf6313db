#include "ui/win32/ListViewPeer.h"

#include "ui/win32/Canvas.h"
#include "ui/win32/FormWindow.h"
#include "ui/win32/NativeText.h"
#include "ui/win32/Theme.h"

#include <algorithm>

namespace ui::win32 {
namespace {

constexpr Size OwnSize{4500, 3000}; ///< twips, where nobody asks for another
constexpr int LargeSide = 480;      ///< twips: 32 pixels at 96 dpi
constexpr int SmallSide = 240;
constexpr Size LargeSpacing{1500, 1275}; ///< twips from one large icon to the next
constexpr Size ThumbnailSize{1950, 2250};
constexpr Size ThumbnailSpacing{2400, 3000};
constexpr int ColumnRoom = 240;    ///< twips, beside picture and name in a column of the plain list
constexpr int NameRoom = 120;      ///< twips, beside the name below a picture
constexpr int SelectionWidth = 30; ///< twips of the line around the selected thumbnail
constexpr int EmptyTextMargin = 300;
constexpr int LeastHeight = 600; ///< twips; no row can be shown in less
/// Rows whose texts set the width of the columns of the plain list; enough for any folder that is read, not counted.
constexpr int MeasuredRows = 300;

/// LVFI_SUBSTRING, which the compiler's headers lack: the typed letters of type-ahead.
constexpr UINT SubstringFlag = 0x0004;

/// The rows that a list had are gone, and no others have come at once.
constexpr UINT EmptyMessage = WM_APP + 1;

DWORD NativeView(ListView::View view)
{
    switch (view) {
    case ListView::View::LargeIcons:
    case ListView::View::Thumbnails:
        return LV_VIEW_ICON;
    case ListView::View::SmallIcons:
        return LV_VIEW_SMALLICON;
    case ListView::View::List:
        return LV_VIEW_LIST;
    case ListView::View::Details:
        break;
    }
    return LV_VIEW_DETAILS;
}

bool StartsWith(const std::wstring& text, const std::wstring& start)
{
    return text.size() >= start.size() &&
           CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE | NORM_IGNOREWIDTH, text.c_str(),
                          static_cast<int>(start.size()), start.c_str(), static_cast<int>(start.size())) == CSTR_EQUAL;
}

} // namespace

ListViewPeer::ListViewPeer(ListView& peerList, FormWindow& form, int id)
    : PeerBase{peerList, form}, list{peerList}, thumbnails{peerList, layout, form.Pictures(), form.Jobs()}
{
    Create(WC_LISTVIEWW, LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS | LVS_AUTOARRANGE,
           WS_EX_CLIENTEDGE, id);
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, 0,
         LVS_EX_DOUBLEBUFFER | LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP | LVS_EX_INFOTIP);
    UseExplorerTheme(Handle());
    thumbnails.Attach(Handle());
}

Size ListViewPeer::Preferred(int) const
{
    return OwnSize;
}

void ListViewPeer::DpiChanged()
{
    PeerBase::DpiChanged();
    const ByCode guard{*this};
    SyncImages(true);
    SyncLargeSide();
    SyncColumns();
    SyncView();
    SyncRows();
}

void ListViewPeer::Sync(Aspect aspect)
{
    switch (aspect) {
    case Aspect::Items:
        SyncRows();
        break;
    case Aspect::Selection:
        SyncSelection();
        break;
    case Aspect::View: {
        const Undrawn undrawn{Handle(), list.Visible()};
        layout.Hold(Handle());
        SyncLargeSide();
        SyncView();
        SyncColumns(); // widths that came while another view showed
        layout.Release(Handle(), list.Rows());
        SyncSelection();
        break;
    }
    case Aspect::Columns:
        SyncColumns();
        break;
    case Aspect::Caption:
        InvalidateRect(Handle(), nullptr, TRUE);
        break;
    default:
        break;
    }
}

void ListViewPeer::SyncImages(bool always)
{
    const auto replace = [&](const ui::ImageList& model, std::map<int, ui::ImageList::Picture>& shown,
                             ImageListHandle& images, int side, WPARAM which) {
        if (!always && model.Pictures() == shown)
            return;
        shown = model.Pictures();
        ImageListHandle fresh; // none rather than an empty one, for which the rows would leave room
        if (!shown.empty())
            fresh = Window().Images().Build(shown, Pixels(side));
        if (which != LVSIL_NORMAL || !thumbnails.IsShown())
            Send(LVM_SETIMAGELIST, which, reinterpret_cast<LPARAM>(fresh.get()));
        images = std::move(fresh);
    };
    replace(list.LargeImages, shownLarge, largeImages, LargeSide, LVSIL_NORMAL);
    replace(list.SmallImages, shownSmall, smallImages, SmallSide, LVSIL_SMALL);
}

void ListViewPeer::SyncLargeSide()
{
    const bool showsThumbnails = list.GetView() == ListView::View::Thumbnails;
    Size spacing = showsThumbnails ? ThumbnailSpacing : LargeSpacing;
    // With a large font, two lines of common names.
    const SIZE name = Measure("Presentation", NormalFont());
    const Size picture = showsThumbnails ? ThumbnailSize : Size{LargeSide, LargeSide};
    spacing.width = std::max(spacing.width, Twips(name.cx) + NameRoom);
    spacing.height = std::max(spacing.height, picture.height + 2 * Twips(name.cy) + NameRoom);
    ImageListHandle room;
    if (showsThumbnails)
        room.reset(ImageList_Create(Pixels(ThumbnailSize.width), Pixels(ThumbnailSize.height), ILC_COLOR32, 0, 1));
    // The pictures come last: they make the control take the height of a line anew, by which it scrolls.
    Send(LVM_SETICONSPACING, 0, MAKELPARAM(Pixels(spacing.width), Pixels(spacing.height)));
    Send(LVM_SETIMAGELIST, LVSIL_NORMAL, reinterpret_cast<LPARAM>(showsThumbnails ? room.get() : largeImages.get()));
    thumbnailRoom = std::move(room); // the former one goes only now that the control has let go of it
    ResetThumbnails();
}

void ListViewPeer::ResetThumbnails()
{
    thumbnails.Reset(list.GetView() == ListView::View::Thumbnails,
                     {Pixels(ThumbnailSize.width), Pixels(ThumbnailSize.height)}, Pixels(ThumbnailSpacing.width),
                     PictureEnlargement(Dpi()));
}

LRESULT ListViewPeer::OnCustomDraw(const NMLVCUSTOMDRAW& draw)
{
    const bool marksRows = !thumbnails.IsShown() && GetFocus() != Handle() && UnfocusedSelectionIsInvisible();
    if (!thumbnails.IsShown() && !marksRows)
        return CDRF_DODEFAULT;
    switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
        return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT:
        return CDRF_NOTIFYPOSTPAINT;
    case CDDS_ITEMPOSTPAINT:
        if (marksRows)
            MarkRow(draw.nmcd.hdc, static_cast<int>(draw.nmcd.dwItemSpec));
        else
            DrawThumbnail(draw.nmcd.hdc, static_cast<int>(draw.nmcd.dwItemSpec));
        return CDRF_DODEFAULT;
    default:
        return CDRF_DODEFAULT;
    }
}

void ListViewPeer::DrawThumbnail(HDC context, int row)
{
    const RECT room = thumbnails.PlaceOf(row);
    if (!thumbnails.Draw(context, row) && row < list.Rows()) {
        int width = 0;
        int height = 0;
        ImageList_GetIconSize(largeImages.get(), &width, &height);
        ImageList_Draw(largeImages.get(), list.Model()->Icon(row), context, (room.left + room.right - width) / 2,
                       (room.top + room.bottom - height) / 2, ILD_NORMAL);
    }
    // The native state: rows are drawn before the model hears of another selection.
    if (Send(LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) == 0)
        return;
    // Thinner without the focus, in the colour that stands out from every window's.
    DrawSelectionFrame(context, room, Pixels(GetFocus() == Handle() ? SelectionWidth : SelectionWidth / 2));
}

void ListViewPeer::MarkRow(HDC context, int row)
{
    if (Send(LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) == 0)
        return;
    RECT place{};
    // Below a large icon only the name is marked: the row's own place may reach far below it.
    place.left = list.GetView() == ListView::View::LargeIcons ? LVIR_LABEL : LVIR_BOUNDS;
    Send(LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
    DrawSelectionFrame(context, place, Pixels(SelectionWidth / 2));
}

void ListViewPeer::SyncRows()
{
    SyncImages(false);
    const auto top = static_cast<int>(Send(LVM_GETTOPINDEX));
    const RECT first = thumbnails.PlaceOf(0);
    layout.Hold(Handle());
    Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(list.Rows()), 0);
    ResetThumbnails();
    SyncView();
    if (list.Rows() == 0) {
        // Others mostly come before the next message: the scroll bar need not go and come back in between.
        PostMessageW(Handle(), EmptyMessage, 0, 0);
        return;
    }
    const Undrawn undrawn{Handle(), list.Visible()};
    layout.Release(Handle(), list.Rows());
    if (list.Selected() < 0) {
        Send(WM_VSCROLL, SB_TOP);
        Send(WM_HSCROLL, SB_LEFT);
    }
    SyncSelection();
    if (list.KeepsScrollPlace())
        ScrollBackTo(top, first);
}

void ListViewPeer::ShowEmpty()
{
    if (!layout.Holds())
        return;
    const Undrawn undrawn{Handle(), list.Visible()};
    layout.Release(Handle(), list.Rows());
}

void ListViewPeer::ScrollBackTo(int top, const RECT& first)
{
    const bool hasTopRow = list.GetView() == ListView::View::Details || list.GetView() == ListView::View::List;
    if (hasTopRow && list.Rows() > 0) {
        // Shown from below, the row comes to the top.
        Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(list.Rows() - 1), FALSE);
        Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(std::min(top, list.Rows() - 1)), FALSE);
        return;
    }
    // By the first row's place: systems do not agree on the sign of the origin.
    const RECT now = thumbnails.PlaceOf(0);
    if (list.Rows() > 0)
        Send(LVM_SCROLL, static_cast<WPARAM>(now.left - first.left), static_cast<LPARAM>(now.top - first.top));
}

void ListViewPeer::SyncSelection()
{
    LVITEMW item{};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    const int before = NativeSelection();
    if (before != list.Selected())
        Send(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), &item);
    if (list.Selected() < 0)
        return;
    item.state = LVIS_SELECTED | LVIS_FOCUSED;
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(list.Selected()), &item);
    ShowSelection();
}

void ListViewPeer::ShowSelection()
{
    // A list without room would scroll as far as it can.
    RECT client{};
    GetClientRect(Handle(), &client);
    scrollLater = client.bottom < Pixels(LeastHeight);
    if (!scrollLater && list.Selected() >= 0 && !list.KeepsScrollPlace())
        Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(list.Selected()), FALSE);
}

void ListViewPeer::SyncView()
{
    const DWORD view = NativeView(list.GetView());
    if (static_cast<DWORD>(Send(LVM_GETVIEW)) != view)
        Send(LVM_SETVIEW, view);
    if (list.GetView() != ListView::View::List && list.GetView() != ListView::View::SmallIcons)
        return;
    int widest = Pixels(LargeSpacing.width);
    for (int row = 0; row < std::min(list.Rows(), MeasuredRows); ++row)
        widest = std::max<int>(widest, Measure(list.Model()->Text(row, 0), NormalFont()).cx);
    if (list.GetView() == ListView::View::List)
        Send(LVM_SETCOLUMNWIDTH, 0, widest + Pixels(SmallSide) + Pixels(ColumnRoom));
}

void ListViewPeer::SyncColumns()
{
    const auto& columns = list.Columns();
    for (; shownColumns > columns.size(); --shownColumns)
        Send(LVM_DELETECOLUMN, shownColumns - 1);
    const HWND header = reinterpret_cast<HWND>(Send(LVM_GETHEADER));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        std::wstring text = ToNative(columns[i].text);
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_FMT | LVCF_SUBITEM;
        // A width set while another view shows would become that view's own.
        if (i >= shownColumns || list.GetView() == ListView::View::Details) {
            column.mask |= LVCF_WIDTH;
            column.cx = Pixels(columns[i].width);
        }
        column.pszText = text.data();
        column.iSubItem = static_cast<int>(i);
        column.fmt = columns[i].rightAligned ? LVCFMT_RIGHT : LVCFMT_LEFT;
        if (i < shownColumns) {
            Send(LVM_SETCOLUMNW, i, &column);
        } else {
            Send(LVM_INSERTCOLUMNW, i, &column);
            ++shownColumns;
        }
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        if (SendMessageW(header, HDM_GETITEMW, i, reinterpret_cast<LPARAM>(&item)) == 0)
            continue;
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (static_cast<int>(i) == list.SortColumn())
            item.fmt |= list.SortAscending() ? HDF_SORTUP : HDF_SORTDOWN;
        SendMessageW(header, HDM_SETITEMW, i, reinterpret_cast<LPARAM>(&item));
    }
}

int ListViewPeer::NativeSelection() const
{
    return static_cast<int>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

std::optional<LRESULT> ListViewPeer::OnNotify(NMHDR& header)
{
    switch (header.code) {
    case LVN_GETDISPINFOW:
        FillIn(reinterpret_cast<NMLVDISPINFOW&>(header));
        return 0;
    case NM_CUSTOMDRAW:
        return OnCustomDraw(reinterpret_cast<const NMLVCUSTOMDRAW&>(header));
    case LVN_ODFINDITEMW:
        return FindRow(reinterpret_cast<const NMLVFINDITEMW&>(header));
    case LVN_ITEMCHANGED:
        OnRowChanged(reinterpret_cast<const NMLISTVIEW&>(header));
        return 0;
    case LVN_BEGINDRAG: {
        const auto& begin = reinterpret_cast<const NMLISTVIEW&>(header);
        OnBeginDrag(begin.iItem, begin.ptAction);
        return 0;
    }
    case LVN_COLUMNCLICK:
        list.UserClicksColumn(reinterpret_cast<const NMLISTVIEW&>(header).iSubItem);
        return 0;
    case NM_DBLCLK: {
        const int row = reinterpret_cast<const NMITEMACTIVATE&>(header).iItem;
        if (row >= 0)
            list.UserActivates(row);
        return 0;
    }
    default:
        return std::nullopt;
    }
}

void ListViewPeer::OnRowChanged(const NMLISTVIEW& change)
{
    const bool selects = (change.uNewState & LVIS_SELECTED) != 0 && (change.uOldState & LVIS_SELECTED) == 0;
    if (!IsByCode() && selects && change.iItem >= 0)
        list.UserSelects(change.iItem);
}

void ListViewPeer::OnBeginDrag(int row, POINT grip)
{
    const Watch watch{*this};
    list.UserSelects(row);
    if (watch.Gone() || list.Selected() != row)
        return;
    POINT corner{};
    ImageListHandle picture{reinterpret_cast<HIMAGELIST>(Send(LVM_CREATEDRAGIMAGE, static_cast<WPARAM>(row), &corner))};
    drag.Begin(Handle(), std::move(picture), {grip.x - corner.x, grip.y - corner.y});
}

void ListViewPeer::FillIn(NMLVDISPINFOW& info) const
{
    LVITEMW& item = info.item;
    const bool exists = item.iItem >= 0 && item.iItem < list.Rows();
    if ((item.mask & LVIF_TEXT) != 0 && item.cchTextMax > 0) {
        const std::wstring text = exists ? ToNative(list.Model()->Text(item.iItem, item.iSubItem)) : std::wstring{};
        lstrcpynW(item.pszText, text.c_str(), item.cchTextMax);
    }
    if ((item.mask & LVIF_IMAGE) != 0 && item.iSubItem == 0) {
        if (thumbnails.IsShown() || !exists)
            item.iImage = I_IMAGENONE; // thumbnails are drawn by DrawThumbnail
        else if (list.GetView() == ListView::View::LargeIcons)
            item.iImage = list.Model()->Icon(item.iItem);
        else
            item.iImage = list.Model()->SmallIcon(item.iItem);
    }
}

int ListViewPeer::FindRow(const NMLVFINDITEMW& search) const
{
    const int rows = list.Rows();
    if ((search.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL | SubstringFlag)) == 0 || search.lvfi.psz == nullptr)
        return -1;
    const std::wstring wanted = search.lvfi.psz;
    const bool isPartial = (search.lvfi.flags & (LVFI_PARTIAL | SubstringFlag)) != 0;
    // Typing goes on from the last row to the first; a search behind the last row begins there.
    const int first = search.iStart < rows ? std::max(search.iStart, 0) : 0;
    for (int i = 0; i < rows; ++i) {
        const int row = (first + i) % rows;
        const std::wstring text = ToNative(list.Model()->Text(row, 0));
        if (StartsWith(text, wanted) && (isPartial || text.size() == wanted.size()))
            return row;
    }
    return -1;
}

bool ListViewPeer::UsesKey(const Key& key)
{
    if (drag.Running() && key == Plain(KeyCode::Escape)) {
        drag.End();
        return true;
    }
    const Watch watch{*this};
    if (list.KeyDown && list.KeyDown(key))
        return true;
    if (watch.Gone() || key != Plain(KeyCode::Enter) || list.Selected() < 0)
        return watch.Gone();
    list.UserActivates(list.Selected());
    return true;
}

std::optional<LRESULT> ListViewPeer::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (thumbnails.Handles(message, wParam))
        return 0;
    switch (message) {
    case EmptyMessage:
        ShowEmpty();
        return 0;
    case WM_TIMER:
        if (wParam != DragOntoTree::Timer)
            return std::nullopt;
        drag.Mark();
        return 0;
    case WM_NOTIFY:
        return OnHeaderNotify(wParam, lParam);
    case WM_LBUTTONDOWN:
    case WM_KEYDOWN:
    case WM_CHAR: {
        const Watch watch{*this};
        const LRESULT result = Default(message, wParam, lParam);
        if (!watch.Gone())
            FoldSelection();
        return result;
    }
    case WM_MOUSEMOVE:
        if (!drag.Running())
            return std::nullopt;
        drag.Move(lParam);
        return 0;
    case WM_LBUTTONUP:
        if (!drag.Running())
            return std::nullopt;
        return OnDrop(wParam, lParam);
    case WM_CAPTURECHANGED:
        // Another window took the mouse: the drag counts as given up.
        if (reinterpret_cast<HWND>(lParam) != Handle())
            drag.End();
        return std::nullopt;
    case WM_RBUTTONDOWN:
        OnRightButton({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        return 0;
    case WM_RBUTTONUP:
        if (list.ContextMenu)
            list.ContextMenu(InForm({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}));
        return 0;
    case WM_CONTEXTMENU:
        if (reinterpret_cast<HWND>(wParam) == Handle())
            OpenMenuAtSelection();
        else // the header passes its own on
            OpenHeaderMenu({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        return 0;
    case WM_PAINT: {
        const LRESULT result = Default(message, wParam, lParam);
        if (list.Rows() == 0 && !list.EmptyText().empty())
            PaintEmptyText();
        return result;
    }
    case WM_SIZE:
        // The text for an empty list stands in the middle: all of it is drawn anew.
        if (list.Rows() == 0)
            InvalidateRect(Handle(), nullptr, TRUE);
        if (scrollLater) {
            const LRESULT result = Default(message, wParam, lParam);
            ShowSelection();
            return result;
        }
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

LRESULT ListViewPeer::OnHeaderNotify(WPARAM wParam, LPARAM lParam)
{
    const Watch watch{*this};
    const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
    const UINT code = header.code;
    const auto change = code == HDN_ITEMCHANGEDW ? reinterpret_cast<const NMHEADERW&>(header) : NMHEADERW{};
    const LRESULT result = Default(WM_NOTIFY, wParam, lParam);
    if (!watch.Gone() && code == HDN_ITEMCHANGEDW && !IsByCode() && change.pitem != nullptr &&
        (change.pitem->mask & HDI_WIDTH) != 0 && list.GetView() == ListView::View::Details)
        list.UserSizesColumn(static_cast<std::size_t>(change.iItem), ToTwips(change.pitem->cxy, Dpi()));
    return result;
}

LRESULT ListViewPeer::OnDrop(WPARAM wParam, LPARAM lParam)
{
    const Watch watch{*this};
    drag.Move(lParam);
    const std::string key = drag.End();
    const LRESULT result = Default(WM_LBUTTONUP, wParam, lParam);
    if (!watch.Gone() && !key.empty())
        list.DropTarget->UserDrops(key, list);
    return result;
}

void ListViewPeer::FoldSelection()
{
    if (!IsByCode() && NativeSelection() < 0)
        list.UserSelects(-1);
}

void ListViewPeer::OnRightButton(POINT point)
{
    const Watch watch{*this};
    SetFocus(Handle());
    if (watch.Gone())
        return;
    LVHITTESTINFO hit{};
    hit.pt = point;
    const int row = static_cast<int>(Send(LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
    LVITEMW item{};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = row >= 0 ? item.stateMask : 0;
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(row), &item);
    if (!watch.Gone())
        FoldSelection();
}

void ListViewPeer::OpenMenuAtSelection()
{
    RECT place{};
    if (list.Selected() >= 0) {
        // It may have been scrolled out of sight.
        Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(list.Selected()), FALSE);
        place.left = LVIR_LABEL;
        Send(LVM_GETITEMRECT, static_cast<WPARAM>(list.Selected()), reinterpret_cast<LPARAM>(&place));
    }
    if (list.ContextMenu)
        list.ContextMenu(InForm({place.left, place.bottom}));
}

void ListViewPeer::OpenHeaderMenu(POINT onScreen)
{
    if (!list.HeaderContextMenu)
        return;
    ScreenToClient(Handle(), &onScreen);
    list.HeaderContextMenu(InForm(onScreen));
}

void ListViewPeer::PaintEmptyText()
{
    RECT room{};
    GetClientRect(Handle(), &room);
    const HWND header = reinterpret_cast<HWND>(Send(LVM_GETHEADER));
    if (RECT top{}; list.GetView() == ListView::View::Details && header != nullptr && GetWindowRect(header, &top))
        room.top += top.bottom - top.top;
    InflateRect(&room, -Pixels(EmptyTextMargin), -Pixels(EmptyTextMargin));

    HDC context = GetDC(Handle());
    DrawNote(context, list.EmptyText(), NormalFont(), room);
    ReleaseDC(Handle(), context);
}

} // namespace ui::win32
