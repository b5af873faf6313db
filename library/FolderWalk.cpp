#include "library/FolderWalk.h"

#include "app/base/StringId.h"
#include "library/CategoryPath.h"
#include "library/TemplateFiles.h"
#include "platform/FileName.h"
#include "platform/NameOrder.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>

namespace library {
namespace {

/// Sub-folder names that one folder of the second level can hold; one more ends the walk there.
constexpr std::size_t ThirdLevelNames = 101;

/// Such a folder is a category whose contents are not known, and none of those behind it has to suffer.
bool DoesNotAnswer(const FolderListings::Listing& listing)
{
    return !listing && listing.error() == platform::error::Timeout;
}

} // namespace

FolderWalk::FolderWalk(const app::StringTable& strings, app::LoadProgress& progress, FolderListings& listings)
    : recentSearch{strings.LoadString(app::str::RecentDocumentsSearch)}, progress{progress}, listings{listings}
{
}

void FolderWalk::Run()
{
    if (!WalkTopLevel())
        return;
    for (std::size_t i = 0; i < roots.size(); ++i)
        if (!ScanForSubfolders(roots[i]))
            return;
    for (std::size_t i = 0; i < roots.size(); ++i)
        for (std::size_t c = 0; c < nodes[roots[i]].children.size(); ++c)
            if (!WalkThirdLevel(nodes[roots[i]].children[c]))
                return;
}

bool FolderWalk::WalkTopLevel()
{
    const auto& listing = listings.Of({});
    if (!listing)
        return false;
    for (const platform::FileEntry& entry : *listing) {
        if (!IsCategory(entry))
            continue;
        if (entry.name != recentSearch) {
            AddNode(-1, entry, entry.name);
            if (!platform::text::IsNumeric(entry.name))
                folderNames.push_back(entry.name);
        }
        if (!progress.Increment())
            return false;
    }
    return true;
}

bool FolderWalk::ScanForSubfolders(std::size_t parent)
{
    const auto& listing = listings.Of(nodes[parent].path);
    if (DoesNotAnswer(listing))
        return progress.Increment();
    if (!listing)
        return false;
    for (const platform::FileEntry& entry : *listing) {
        if (EndsScan(entry))
            break;
        if (IsCategory(entry))
            AddChild(parent, entry);
    }
    return progress.Increment();
}

bool FolderWalk::WalkThirdLevel(std::size_t child)
{
    const auto& listing = listings.Of(nodes[child].path);
    if (DoesNotAnswer(listing))
        return true;
    if (!listing)
        return false;
    std::vector<const platform::FileEntry*> names;
    for (const platform::FileEntry& entry : *listing) {
        if (!IsCategory(entry))
            continue;
        if (names.size() == ThirdLevelNames)
            return false;
        names.push_back(&entry);
    }
    for (const platform::FileEntry* entry : names) {
        AddChild(child, *entry);
        if (!ScanForSubfolders(nodes.size() - 1))
            return false;
    }
    return true;
}

std::vector<std::string> FolderWalk::FollowersOf(const std::string& folder,
                                                 const std::vector<platform::FileEntry>& listing) const
{
    const auto level = folder.empty() ? 0 : 1 + std::ranges::count(folder, '\\');
    std::vector<std::string> paths;
    for (const platform::FileEntry& entry : listing) {
        if (level == Levels || (level % 2 == 1 && EndsScan(entry)))
            break;
        if (IsCategory(entry) && (level > 0 || entry.name != recentSearch))
            paths.push_back(platform::path::Join(folder, entry.name));
    }
    return paths;
}

void FolderWalk::AddChild(std::size_t parent, const platform::FileEntry& entry)
{
    std::string path = nodes[parent].path + "\\" + entry.name;
    AddNode(static_cast<int>(parent), entry, path);
    folderNames.push_back(std::move(path));
}

void FolderWalk::AddNode(int parent, const platform::FileEntry& entry, std::string path)
{
    const std::size_t index = nodes.size();
    const bool behindLink = entry.IsLink() || (parent >= 0 && nodes[static_cast<std::size_t>(parent)].behindLink);
    nodes.push_back({entry.name, std::move(path), behindLink, parent, {}});
    (parent < 0 ? roots : nodes[static_cast<std::size_t>(parent)].children).push_back(index);
}

bool FolderWalk::IsCategory(const platform::FileEntry& entry)
{
    return entry.IsFolder() && IsShown(entry) && entry.name != PreviewsFolder &&
           !platform::file_name::IsShortened(entry.name);
}

bool FolderWalk::EndsScan(const platform::FileEntry& entry)
{
    return IsShown(entry) && (platform::path::LastFour(entry.name) == ".jpg" || entry.name == PreviewsFolder);
}

std::optional<std::string> FolderWalk::Hides(platform::FileSystem& files, const std::string& templatesPath,
                                             const std::string& category, const std::string& name)
{
    // The folders of the second level are listed to their end.
    if (std::ranges::count(category, '\\') == 1)
        return std::nullopt;
    const auto order = [](const platform::FileEntry& entry) { return platform::NameOrderKey(entry.name); };
    const auto listing = files.List(DiskPath(templatesPath, category));
    if (!listing || !std::ranges::is_sorted(*listing, {}, order))
        return std::nullopt;
    const auto end = std::ranges::find_if(*listing, EndsScan);
    if (end == listing->end() || platform::NameOrderKey(name) < order(*end))
        return std::nullopt;
    return end->name;
}

} // namespace library
