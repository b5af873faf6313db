#include "library/FolderTree.h"

#include "app/base/StringId.h"
#include "library/CategoryPath.h"
#include "library/TemplateFiles.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>

namespace library {
namespace {

/// The one category that leads the tree, in bold.
constexpr std::string_view LeadingCategory = "Tessaly Professional 3.0";

/// A key that is a number would be taken for a position.
constexpr std::string_view NumericSuffix = "_TS";

using Node = ui::TreeView::Node;
using platform::text::EqualIgnoringCase;

} // namespace

FolderTree::FolderTree(app::Program& program, ui::TreeView& tree) : program{program}, tree{tree}
{
    tree.Images.SetNamed(treeimage::FolderOpen, "folder-open");
    tree.Images.SetNamed(treeimage::Folder, "folder");
    tree.Images.SetNamed(treeimage::GetMore, "more");
    tree.Images.SetNamed(treeimage::Favorites, "favorites");
    tree.Images.SetNamed(treeimage::Category, "category");
    tree.Images.SetNamed(treeimage::EBook, "ebook");
    tree.Compare = [this](const std::string& a, const std::string& b) {
        return this->program.platform.locale.Compare(a, b);
    };
}

void FolderTree::BuildTreeFromFolderTable(const FolderTable& table, FolderListings& listings)
{
    const ui::TreeUpdate update{tree};
    const std::set<std::string> open = OpenCategories();
    tree.Clear();
    tree.Images.Shrink(treeimage::EBook);
    program.progress.Increment();
    AddSpecial(program.Text(app::str::MyFavorites), treeimage::Favorites);

    const auto leading = program.platform.files.Stat(DiskPath(program.state.TemplatesPath, LeadingCategory));
    if (leading && leading->IsFolder()) {
        Node* node = AddSpecial(std::string{LeadingCategory}, treeimage::Category);
        node->tag = leading->name;
        tree.SetBold(*node, true);
        tree.SetSorted(*node, true);
    }
    program.toolkit.DoEvents();

    const std::string recentSearch = program.Text(app::str::RecentDocumentsSearch);
    const std::string createNew = program.Text(app::str::CreateNew);
    for (std::size_t row = 1; row <= table.Count(); ++row) {
        if (!program.progress.Increment())
            return;
        const std::string& name = table.Cell(row, FolderTable::Name);
        if (table.Cell(row, FolderTable::HasTemplates) != "True" || name == recentSearch || name == createNew)
            continue;
        if (table.Cell(row, FolderTable::Path).empty())
            AddTopLevel(name, listings);
        else
            AddBelow(table, row, listings);
    }

    AddSeparator();
    AddSpecial(program.Text(app::str::GetMoreTemplates), treeimage::GetMore);
    tree.ForEach([&](Node& node) {
        if (!node.children.empty() && open.contains(PathOf(node)))
            tree.SetExpanded(node, true);
        return true;
    });
    SelectLastBrowsed();
}

std::set<std::string> FolderTree::OpenCategories() const
{
    std::set<std::string> open;
    tree.ForEach([&](const Node& node) {
        if (node.expanded && IsCategory(node))
            open.insert(PathOf(node));
        return true;
    });
    return open;
}

Node* FolderTree::AddSpecial(const std::string& text, int image)
{
    return tree.Add(nullptr, text, text, image, image);
}

void FolderTree::AddSeparator()
{
    tree.Add(nullptr, "", "", 0, 0);
}

void FolderTree::AddTopLevel(const std::string& name, FolderListings& listings)
{
    if (EqualIgnoringCase(name, LeadingCategory))
        return; // it leads the tree already
    const std::string key = platform::text::IsNumeric(name) ? name + std::string{NumericSuffix} : name;
    Node* node = tree.Add(nullptr, key, name, treeimage::Category, treeimage::Category);
    if (node == nullptr)
        return; // a folder with the name of a special node
    node->tag = name;
    tree.SetSorted(*node, true);
    if (const std::string icon = IconFileOf(name, listings); !icon.empty()) {
        const int image = tree.Images.AddFile(icon);
        tree.SetImages(*node, image, image);
    }
}

void FolderTree::AddBelow(const FolderTable& table, std::size_t row, FolderListings& listings)
{
    const std::string& path = table.Cell(row, FolderTable::Path);
    const std::string& name = table.Cell(row, FolderTable::Name);
    Node* parent = FindRemembered(platform::path::Parent(path));
    if (parent == nullptr)
        return; // below a folder that is not drawn
    const auto& listing = listings.Of(DiskPath(program.state.TemplatesPath, path));
    const bool isEBook = listing && std::ranges::any_of(*listing, [](const platform::FileEntry& entry) {
                             return IsPlainFile(entry) && TemplateTypeOf(entry.name) == PdfTemplate;
                         });
    const std::string suffix = isEBook ? EBookSuffix() : std::string{};
    Node* node = tree.Add(parent, path + suffix, name + suffix, isEBook ? treeimage::EBook : treeimage::Folder,
                          isEBook ? treeimage::EBook : treeimage::FolderOpen);
    if (node == nullptr)
        return; // "Guides" with .pdf files beside a folder "Guides eBook"
    node->tag = path;
    tree.SetSorted(*node, true);
}

std::string FolderTree::EBookSuffix() const
{
    return " " + program.Text(app::str::EBook);
}

std::string FolderTree::IconFileOf(const std::string& category, FolderListings& listings) const
{
    const std::string folder = DiskPath(program.state.TemplatesPath, category);
    const auto& listing = listings.Of(folder);
    if (!listing)
        return {};
    const auto icon = std::ranges::find_if(*listing, [](const platform::FileEntry& entry) {
        const std::string name = platform::text::Folded(entry.name);
        return IsPlainFile(entry) && name.starts_with("folder") && platform::path::LastFour(name) == ".ico";
    });
    if (icon == listing->end())
        return {};
    // It may have gone since it was listed.
    std::string file = platform::path::Join(folder, icon->name);
    return program.platform.files.Stat(file) ? file : std::string{};
}

bool FolderTree::IsFavorites(const Node& node) const
{
    return !IsCategory(node) && node.key == program.Text(app::str::MyFavorites);
}

bool FolderTree::IsGetMore(const Node& node) const
{
    return !IsCategory(node) && node.key == program.Text(app::str::GetMoreTemplates);
}

std::string FolderTree::RememberedPath(const Node* node) const
{
    if (node == nullptr)
        return {};
    return IsFavorites(*node) ? node->key : PathOf(*node);
}

Node* FolderTree::FindRemembered(std::string_view path) const
{
    // Most keys are the path itself; those of numeric categories and e-book folders have a suffix.
    for (const std::string& suffix : {std::string{}, std::string{NumericSuffix}, EBookSuffix()})
        if (Node* node = tree.Find(std::string{path} + suffix); node != nullptr && RememberedPath(node) == path)
            return node;
    Node* found = nullptr;
    tree.ForEach([&](Node& node) {
        const std::string remembered = RememberedPath(&node);
        if (!remembered.empty() && EqualIgnoringCase(remembered, path))
            found = &node;
        return found == nullptr;
    });
    return found;
}

Node* FolderTree::FirstCategory() const
{
    const auto found = std::ranges::find_if(tree.Roots(), [](const auto& node) { return IsCategory(*node); });
    return found == tree.Roots().end() ? nullptr : found->get();
}

void FolderTree::SelectLastBrowsed()
{
    const std::string last = program.settings.Text("Browser", "LastFolderBrowsed");
    Node* node = last.empty() || last == program.Text(app::str::ProductCaption) ? nullptr : FindRemembered(last);
    if (node == nullptr)
        node = FirstCategory();
    if (node == nullptr && !tree.Roots().empty())
        node = tree.Roots().front().get();
    tree.Select(node);
    if (node != nullptr)
        tree.EnsureVisible(*node);
}

} // namespace library
