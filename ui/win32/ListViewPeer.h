#pragma once

#include "ui/ListView.h"
#include "ui/win32/DragOntoTree.h"
#include "ui/win32/ListLayout.h"
#include "ui/win32/ListThumbnails.h"
#include "ui/win32/PeerBase.h"

#include <map>

namespace ui::win32 {

/// A virtual list: the native control asks for the rows that it shows.
class ListViewPeer final : public PeerBase {
public:
    ListViewPeer(ListView& peerList, FormWindow& form, int id);
    Size Preferred(int width) const override;
    void DpiChanged() override;
    std::optional<LRESULT> OnNotify(NMHDR& header) override;
    bool UsesKey(const Key& key) override;
    const pictures::win32::ThumbnailStore& Thumbnails() const { return thumbnails.Store(); }

protected:
    void Sync(Aspect aspect) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    ListView& list;
    DragOntoTree drag{list};
    ImageListHandle largeImages;
    ImageListHandle smallImages;
    std::map<int, ui::ImageList::Picture> shownLarge;
    std::map<int, ui::ImageList::Picture> shownSmall;
    std::size_t shownColumns{};
    ListLayout layout;
    bool scrollLater{};
    ImageListHandle thumbnailRoom; ///< no pictures, but the size that the native control leaves for them
    ListThumbnails thumbnails;

    int NativeSelection() const;
    void SyncRows();
    /// The list stays without rows.
    void ShowEmpty();
    /// Shows again what was shown while row `top` was the uppermost and the first one stood there.
    void ScrollBackTo(int top, const RECT& first);
    void SyncSelection();
    void ShowSelection();
    void SyncView();
    void SyncColumns();
    void SyncImages(bool always);
    void FillIn(NMLVDISPINFOW& info) const;
    void SyncLargeSide();
    void ResetThumbnails();
    LRESULT OnCustomDraw(const NMLVCUSTOMDRAW& draw);
    void MarkRow(HDC context, int row);
    void DrawThumbnail(HDC context, int row);
    int FindRow(const NMLVFINDITEMW& search) const;
    void OnRowChanged(const NMLISTVIEW& change);
    void OnBeginDrag(int row, POINT grip);
    LRESULT OnHeaderNotify(WPARAM wParam, LPARAM lParam);
    /// The button is let go while a row is dragged.
    LRESULT OnDrop(WPARAM wParam, LPARAM lParam);
    void OnRightButton(POINT point);
    void OpenMenuAtSelection();
    void OpenHeaderMenu(POINT onScreen);
    void PaintEmptyText();
    /// Selecting nothing is told once the native control has finished, since selecting another row starts with it.
    void FoldSelection();
};

} // namespace ui::win32
