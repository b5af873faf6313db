#pragma once

#include "ui/TreeView.h"
#include "ui/win32/PeerBase.h"

#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace ui::win32 {

/// Keeps the native tree like the model's. The native items know their nodes by key only, so they may lag behind a
/// model that changes while a notification of theirs is being handled.
class TreeViewPeer final : public PeerBase {
public:
    TreeViewPeer(TreeView& peerTree, FormWindow& form, int id);
    Size Preferred(int width) const override;
    void DpiChanged() override;
    std::optional<LRESULT> OnNotify(NMHDR& header) override;
    bool UsesKey(const Key& key) override;
    /// Marks the node under a point of the screen as the one that something would be dropped on. False when there is
    /// no node. Near the upper and lower edge the tree scrolls on.
    bool ShowDropTarget(POINT onScreen);
    /// Takes the mark away. The key of the node that had it; "" for none.
    std::string EndDrop();
    int BackgroundColour() const override { return COLOR_WINDOW; }

protected:
    void Sync(Aspect aspect) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    /// One node as the native tree shows it; `parent` is an index, -1 for roots.
    struct Row {
        std::string key;
        std::string text;
        int image{};
        int selectedImage{};
        bool bold{};
        bool expanded{};
        int parent{-1};
        HTREEITEM item{};
    };

    TreeView& tree;
    ImageListHandle images;
    std::map<int, ui::ImageList::Picture> shownPictures;
    std::vector<Row> rows;
    std::unordered_map<std::string, std::size_t> byKey;
    bool expanding{};                ///< the selection that moves with a closing branch is told after that
    bool clickedSelected{};          ///< the click that is being handled is on the selected node
    bool selectionMayMove{};         ///< a branch opened or closed during the message that is being handled
    std::string droppedOn;           ///< key of the marked node
    std::string typedLabel;          ///< waits until the native tree has closed the label
    std::optional<POINT> menuWanted; ///< asked for inside a notification
    bool behind{};                   ///< the model changed inside a notification

    void SyncItems();
    void SyncSelection(bool scrolls = true);
    void SyncImages(bool always);
    void Rebuild(std::vector<Row> wanted);
    void Adjust(std::vector<Row> wanted);
    std::vector<Row> Wanted() const;
    Row* RowOf(HTREEITEM item);
    /// The key of the item that TVGN_... names; nothing when there is none.
    std::optional<std::string> KeyOf(WPARAM which);
    HTREEITEM ItemOf(const std::string& key) const;
    /// Scrolls to the item, never sideways: the pictures and branch marks of all nodes would be out of sight.
    void BringIntoView(HTREEITEM item);
    void ScrollToTheLeft();
    void FoldSelection();
    void OpenLabel();
    LRESULT OnLabelOpens(const NMTVDISPINFOW& info);
    void OnLabelCloses(const NMTVDISPINFOW& info);
    void AfterNotification(const Watch& watch);
    /// Marks the selected row where its colour without the focus would be the tree's own.
    LRESULT OnCustomDraw(const NMCUSTOMDRAW& draw);
    void OnSelected(const NMTREEVIEWW& change);
    void OnExpanded(const NMTREEVIEWW& change);
    /// A click or a key, which may move the selection.
    LRESULT OnInput(UINT message, WPARAM wParam, LPARAM lParam);
    /// By the wheel and Shift, for names that are longer than the tree is wide.
    void TurnSideways(int turned);
    void OnRightButton(POINT point);
    /// Null where a click selects nothing.
    HTREEITEM ItemAt(POINT point) const;
    bool IsSelected(HTREEITEM item);
    void OpenMenuAtSelection();
    void ShowMenu(POINT point);
};

} // namespace ui::win32
