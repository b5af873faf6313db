#pragma once

#include "library/Catalog.h"
#include "ui/TreeView.h"

#include <set>
#include <string>
#include <string_view>

namespace library {

/// Shows the catalogue in the tree view. A node has its folder's key; nothing else of a folder is kept there.
class FolderTree {
public:
    FolderTree(ui::TreeView& tree, const Catalog& catalog);

    /// Holds the tree's drawing back for a scope.
    ui::TreeUpdate Update() { return ui::TreeUpdate{tree}; }

    /// Fills the tree again. Open branches stay open; nothing is selected.
    void Show();

    /// The keys of the open branches as one text, and the same for a tree that is filled from now on.
    std::string OpenBranches() const;
    void OpenBranches(std::string_view stored);

    /// The node's folder; null for a separator.
    const Catalog::Folder* Of(const ui::TreeView::Node& node) const { return catalog.FindByKey(node.key); }
    /// The selected node's folder; null when there is none.
    const Catalog::Folder* Selected() const;
    bool IsFavoritesSelected() const;
    /// Selects the folder's node and brings it into view. Null selects nothing.
    void Select(const Catalog::Folder* folder);

private:
    ui::TreeView& tree;
    const Catalog& catalog;
    std::set<std::string> toOpen; ///< keys

    std::set<std::string> OpenKeys() const;

    void AddWithChildren(ui::TreeView::Node* parent, const Catalog::Folder& folder);
};

} // namespace library
