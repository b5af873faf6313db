#include "library/FolderTree.h"

#include "platform/Text.h"

namespace library {

namespace {

/// Stands in no folder's name, and in no key.
constexpr char BranchSeparator = '/';

} // namespace

FolderTree::FolderTree(ui::TreeView& tree, const Catalog& catalog) : tree{tree}, catalog{catalog}
{
    tree.Images.SetNamed(treeimage::FolderOpen, "folder-open");
    tree.Images.SetNamed(treeimage::Folder, "folder");
    tree.Images.SetNamed(treeimage::GetMore, "more");
    tree.Images.SetNamed(treeimage::Favorites, "favorites");
    tree.Images.SetNamed(treeimage::Category, "category");
    tree.Images.SetNamed(treeimage::EBook, "ebook");
}

void FolderTree::Show()
{
    const ui::TreeUpdate update{tree};
    toOpen = OpenKeys();
    tree.Clear();
    tree.Images.Shrink(treeimage::EBook);
    for (const Catalog::Folder* root : catalog.Roots()) {
        if (root->kind == Catalog::Kind::GetMore)
            tree.Add(nullptr, "", "", 0, 0); // keeps it apart from the categories
        AddWithChildren(nullptr, *root);
    }
    for (const std::string& key : toOpen)
        if (ui::TreeView::Node* node = tree.Find(key); node != nullptr && !node->children.empty())
            tree.SetExpanded(*node, true);
}

std::set<std::string> FolderTree::OpenKeys() const
{
    if (tree.Count() == 0)
        return toOpen; // a library that did not answer comes back as it was
    std::set<std::string> open;
    tree.ForEach([&](const ui::TreeView::Node& node) {
        if (node.expanded)
            open.insert(node.key);
        return true;
    });
    return open;
}

std::string FolderTree::OpenBranches() const
{
    std::string stored;
    for (const std::string& key : OpenKeys())
        stored += (stored.empty() ? "" : std::string(1, BranchSeparator)) + key;
    return stored;
}

void FolderTree::OpenBranches(std::string_view stored)
{
    const auto keys = platform::text::Split(stored, BranchSeparator);
    toOpen = {keys.begin(), keys.end()};
}

void FolderTree::AddWithChildren(ui::TreeView::Node* parent, const Catalog::Folder& folder)
{
    const bool hasIcon = !folder.iconFile.empty();
    const int image = hasIcon ? tree.Images.AddFile(folder.iconFile, folder.icon) : folder.image;
    ui::TreeView::Node* node = tree.Add(parent, folder.key, folder.text, image, hasIcon ? image : folder.selectedImage);
    if (folder.leads)
        tree.SetBold(*node, true);
    for (const Catalog::Folder* child : folder.children)
        AddWithChildren(node, *child);
}

const Catalog::Folder* FolderTree::Selected() const
{
    return tree.Selected() != nullptr ? Of(*tree.Selected()) : nullptr;
}

bool FolderTree::IsFavoritesSelected() const
{
    const Catalog::Folder* folder = Selected();
    return folder != nullptr && folder->kind == Catalog::Kind::Favorites;
}

void FolderTree::Select(const Catalog::Folder* folder)
{
    ui::TreeView::Node* node = folder != nullptr ? tree.Find(folder->key) : nullptr;
    tree.Select(node);
    if (node != nullptr)
        tree.EnsureVisible(*node);
}

} // namespace library
