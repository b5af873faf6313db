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

} // namespace

FolderWalk::FolderWalk(const app::StringTable& strings, app::LoadProgress& progress, FolderListings& listings,
                       std::string templatesPath)
    : strings{strings}, progress{progress}, listings{listings}, templatesPath{std::move(templatesPath)}
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
    const auto& listing = listings.Of(DiskPath(templatesPath, ""));
    if (!listing)
        return false;
    const std::string recentSearch = strings.LoadString(app::str::RecentDocumentsSearch);
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
    const auto& listing = listings.Of(DiskPath(templatesPath, nodes[parent].path));
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
    const auto& listing = listings.Of(DiskPath(templatesPath, nodes[child].path));
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
