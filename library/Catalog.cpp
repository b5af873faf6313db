#include "library/Catalog.h"

#include "app/base/StringId.h"
#include "library/CategoryPath.h"
#include "library/TemplateFiles.h"
#include "platform/NaturalOrder.h"
#include "platform/Path.h"
#include "platform/Text.h"
#include "ui/ImageList.h"

#include <algorithm>
#include <utility>

namespace library {
namespace {

/// The one category that leads the tree, in bold.
constexpr std::string_view LeadingCategory = "Tessaly Professional 3.0";

/// A key that is a number would be taken for a position.
constexpr std::string_view NumericEnding = "_TS";

/// Tells keys apart that would be the same; can stand in no folder's name.
constexpr char KeyMark = '|';

using platform::text::EqualIgnoringCase;
using platform::text::Folded;

bool Visit(const std::vector<const Catalog::Folder*>& folders, const std::function<bool(const Catalog::Folder&)>& visit)
{
    return std::ranges::all_of(folders,
                               [&](const auto* folder) { return visit(*folder) && Visit(folder->children, visit); });
}

} // namespace

bool Catalog::Build(const FolderTable& table, FolderListings& listings, app::LoadProgress& progress,
                    const std::string& templatesPath)
{
    Contents made;
    made.templatesPath = templatesPath;
    progress.Increment();
    const std::string myFavorites = strings.LoadString(app::str::MyFavorites);
    const std::string getMore = strings.LoadString(app::str::GetMoreTemplates);
    const auto addSpecial = [&](Kind kind, const std::string& text, int image) {
        return &made.Add({.kind = kind, .key = text, .text = text, .image = image, .selectedImage = image});
    };
    made.favorites = addSpecial(Kind::Favorites, myFavorites, treeimage::Favorites);
    made.getMore = addSpecial(Kind::GetMore, getMore, treeimage::GetMore);
    made.roots.push_back(made.favorites);
    AddLeading(made);

    const std::string recentSearch = strings.LoadString(app::str::RecentDocumentsSearch);
    const std::string createNew = strings.LoadString(app::str::CreateNew);
    const std::string eBook = " " + strings.LoadString(app::str::EBook);
    std::vector<Folder*> byRow(table.Count() + 1);
    for (std::size_t row = 1; row < byRow.size(); ++row) {
        if (!progress.Increment())
            return false;
        const std::string& name = table.Cell(row, FolderTable::Name);
        if (table.Cell(row, FolderTable::HasTemplates) != "True" || name == recentSearch || name == createNew)
            continue;
        const bool isTopLevel = table.Cell(row, FolderTable::Path).empty();
        if (isTopLevel && (name == myFavorites || name == getMore))
            continue; // the user would see two of them
        if (isTopLevel)
            byRow[row] = AddTopLevel(made, name, listings);
        else if (Folder* parent = byRow[table.ParentOf(row)]; parent != nullptr)
            byRow[row] = AddBelow(made, *parent, table, row, listings, eBook);
    }
    made.roots.push_back(made.getMore);
    SortChildren(made);
    contents = std::move(made);
    return true;
}

void Catalog::AddLeading(Contents& made) const
{
    const auto leading = files.Stat(DiskPath(made.templatesPath, LeadingCategory));
    if (leading && leading->IsFolder())
        made.AddCategory(nullptr, {.key = std::string{LeadingCategory},
                                   .path = leading->name,
                                   .text = std::string{LeadingCategory},
                                   .image = treeimage::Category,
                                   .selectedImage = treeimage::Category,
                                   .leads = true});
}

Catalog::Folder* Catalog::AddTopLevel(Contents& made, const std::string& name, FolderListings& listings) const
{
    if (EqualIgnoringCase(name, LeadingCategory)) {
        const auto leading = made.byPath.find(Folded(name));
        return leading != made.byPath.end() ? leading->second : nullptr; // it leads already
    }
    Folder& added =
        made.AddCategory(nullptr, {.key = platform::text::IsNumeric(name) ? name + std::string{NumericEnding} : name,
                                   .path = name,
                                   .text = name + Unanswered(listings.Of(name)),
                                   .image = treeimage::Category,
                                   .selectedImage = treeimage::Category});
    AddIcon(made, added, listings);
    return &added;
}

Catalog::Folder* Catalog::AddBelow(Contents& made, Folder& parent, const FolderTable& table, std::size_t row,
                                   FolderListings& listings, const std::string& eBook) const
{
    const std::string& path = table.PathOf(row);
    const std::string& name = table.Cell(row, FolderTable::Name);
    const auto& listing = listings.Of(path);
    const bool isEBook = listing && std::ranges::any_of(*listing, [](const platform::FileEntry& entry) {
                             return IsPlainFile(entry) && TemplateTypeOf(entry.name) == PdfTemplate;
                         });
    if (isEBook)
        return &made.AddCategory(&parent, {.kind = Kind::EBook,
                                           .key = path + KeyMark + eBook,
                                           .path = path,
                                           .text = name + eBook,
                                           .image = treeimage::EBook,
                                           .selectedImage = treeimage::EBook});
    return &made.AddCategory(&parent, {.key = path,
                                       .path = path,
                                       .text = name + Unanswered(listing),
                                       .image = treeimage::Folder,
                                       .selectedImage = treeimage::FolderOpen});
}

std::string Catalog::Unanswered(const FolderListings::Listing& listing) const
{
    const bool isUnknown = !listing && listing.error() == platform::error::Timeout;
    return isUnknown ? " " + strings.LoadString(app::str::DoesNotAnswer) : std::string{};
}

void Catalog::AddIcon(const Contents& made, Folder& category, FolderListings& listings) const
{
    const auto& listing = listings.Of(category.path);
    if (!listing)
        return;
    const auto icon = std::ranges::find_if(*listing, [](const platform::FileEntry& entry) {
        if (platform::path::LastFour(entry.name).size() != 4 || !IsPlainFile(entry))
            return false;
        const std::string file = Folded(entry.name);
        return file.starts_with("folder") && file.ends_with(".ico");
    });
    if (icon == listing->end())
        return;
    // It may have gone since it was listed.
    std::string file = platform::path::Join(DiskPath(made.templatesPath, category.path), icon->name);
    auto bytes = files.Read(file, ui::ImageList::LargestFile);
    if (!bytes)
        return;
    category.iconFile = std::move(file);
    category.icon = std::move(*bytes);
}

void Catalog::SortChildren(Contents& made) const
{
    const platform::NaturalOrder order{locale};
    for (Folder& folder : made.folders)
        order.Sort(folder.children, &Folder::text);
}

Catalog::Folder& Catalog::Contents::Add(Folder folder)
{
    while (byKey.contains(folder.key))
        folder.key += KeyMark;
    Folder& added = folders.emplace_back(std::move(folder));
    byKey.emplace(added.key, &added);
    return added;
}

Catalog::Folder& Catalog::Contents::AddCategory(Folder* parent, Folder folder)
{
    folder.parent = parent;
    Folder& added = Add(std::move(folder));
    byPath.try_emplace(Folded(added.path), &added);
    (parent != nullptr ? parent->children : roots).push_back(&added);
    return added;
}

void Catalog::ForEach(const std::function<bool(const Folder&)>& visit) const
{
    Visit(contents.roots, visit);
}

const Catalog::Folder* Catalog::FindByKey(std::string_view key) const
{
    const auto found = contents.byKey.find(std::string{key});
    return found == contents.byKey.end() ? nullptr : found->second;
}

const Catalog::Folder* Catalog::FindByPath(std::string_view path) const
{
    const auto found = contents.byPath.find(Folded(path));
    return found == contents.byPath.end() ? nullptr : found->second;
}

const Catalog::Folder* Catalog::FirstCategory() const
{
    const auto found = std::ranges::find_if(contents.roots, &Folder::IsCategory);
    return found == contents.roots.end() ? nullptr : *found;
}

std::string Catalog::RememberedAs(const Folder* folder)
{
    if (folder == nullptr)
        return {};
    return folder->kind == Kind::Favorites ? folder->text : folder->path;
}

const Catalog::Folder* Catalog::FindRemembered(std::string_view stored) const
{
    if (contents.favorites != nullptr && stored == contents.favorites->text)
        return contents.favorites;
    return FindByPath(stored);
}

std::string Catalog::PlaceOf(const std::string& category) const
{
    std::string without = platform::text::Replaced(category, strings.LoadString(app::str::CreateNew) + "\\", "");
    if (without == category || files.Stat(DiskPath(contents.templatesPath, category)))
        return category;
    return without;
}

platform::Result<std::vector<platform::FileEntry>> Catalog::FilesIn(const std::string& place) const
{
    auto listing = files.List(DiskPath(contents.templatesPath, place));
    if (listing)
        std::erase_if(*listing, [](const platform::FileEntry& entry) { return !IsPlainFile(entry); });
    return listing;
}

} // namespace library
