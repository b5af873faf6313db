#pragma once

#include "app/base/Program.h"
#include "library/FolderListings.h"
#include "library/FolderTable.h"
#include "ui/TreeView.h"

#include <set>
#include <string>

namespace library {

/// Entries of the tree's image list. Icons of categories ("folder*.ico") come after the last of these.
namespace treeimage {
inline constexpr int FolderOpen = 1, Folder = 2, GetMore = 13, Favorites = 15, Category = 17, EBook = 18;
}

/// The tree pass: fills the tree view from the folder table, and knows which node stands for what.
class FolderTree {
public:
    FolderTree(app::Program& program, ui::TreeView& tree);

    /// Clears the tree and builds it again, selecting the node that was last browsed (else the first category). Open
    /// branches stay open.
    void BuildTreeFromFolderTable(const FolderTable& table, FolderListings& listings);

    /// Whether the node is a category (not a special node, not a separator).
    static bool IsCategory(const ui::TreeView::Node& node) { return !node.tag.empty(); }
    /// The category's path relative to the templates path.
    static const std::string& PathOf(const ui::TreeView::Node& node) { return node.tag; }
    bool IsFavorites(const ui::TreeView::Node& node) const;
    bool IsGetMore(const ui::TreeView::Node& node) const;
    /// What is remembered of a selected node: a category's path, or the favourites' name; "" for the others.
    std::string RememberedPath(const ui::TreeView::Node* node) const;
    /// The node remembered so; null when there is none.
    ui::TreeView::Node* FindRemembered(std::string_view path) const;
    /// The first category; null in a tree without one.
    ui::TreeView::Node* FirstCategory() const;

    /// The first "folder*.ico" of a top-level category in directory order; "" when there is none.
    std::string IconFileOf(const std::string& category, FolderListings& listings) const;

private:
    app::Program& program;
    ui::TreeView& tree;

    ui::TreeView::Node* AddSpecial(const std::string& text, int image);
    void AddSeparator();
    void AddTopLevel(const std::string& name, FolderListings& listings);
    void AddBelow(const FolderTable& table, std::size_t row, FolderListings& listings);
    std::string EBookSuffix() const;
    /// Paths of the categories whose branches are open.
    std::set<std::string> OpenCategories() const;
    void SelectLastBrowsed();
};

} // namespace library
