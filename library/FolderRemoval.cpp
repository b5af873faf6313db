#include "library/FolderRemoval.h"

#include "library/CategoryPath.h"
#include "library/TemplateFiles.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>
#include <ranges>

namespace library {
namespace {

namespace path = platform::path;
using platform::Result;
using platform::text::EqualIgnoringCase;

/// MAX_PATH without the terminator: the shell deletes nothing whose path is longer.
constexpr std::size_t LongestShellPath = 259;

bool IsBelowTopLevel(const std::string& category)
{
    const auto names = platform::text::Split(category, '\\');
    return names.size() > 1 && std::ranges::none_of(names, [](const std::string& name) {
               return name.empty() || name == "." || name == ".." || name.find_first_of("/:") != std::string::npos;
           });
}

} // namespace

std::optional<std::size_t> FolderRemoval::CountTemplates(const std::string& category)
{
    const app::PatientFiles::Operation whole{files};
    if (!List(category))
        return std::nullopt;
    std::size_t count = 0;
    for (const Folder& folder : folders)
        count += folder.isPreviews ? 0 : folder.doomed.size();
    return count;
}

bool FolderRemoval::List(const std::string& category)
{
    if (!IsBelowTopLevel(category) || !IsOwnFolder(files, templatesPath, path::Parent(category)))
        return false;
    // All is listed before anything is deleted: a deletion changes what a running listing gives, and a folder that
    // cannot be listed should be known of before half of it is gone.
    folders.clear();
    return ListAll(category);
}

Result<> FolderRemoval::Remove(const std::string& category)
{
    const app::PatientFiles::Operation whole{files};
    if (!List(category))
        return std::unexpected{platform::error::AccessDenied};
    const bool isWhole = std::ranges::none_of(
        folders, [this](const Folder& folder) { return folder.isLink || folder.holdsOthers || IsBeyondShell(folder); });
    if (isWhole && IsOwnFolder(files, templatesPath, category)) {
        const std::string place = DiskPath(templatesPath, category);
        const auto recycled =
            files.Change(place, [place, &recycler = shell](platform::FileSystem&) { return recycler.Recycle(place); });
        if (recycled || recycled.error() != platform::error::NotSupported)
            return recycled;
    }
    bool isRemoved = true;
    for (const Folder& folder : folders | std::views::reverse)
        isRemoved = DeleteFolderAndContent(folder) && isRemoved;
    if (!isRemoved)
        return std::unexpected{platform::error::AccessDenied};
    return {};
}

bool FolderRemoval::IsBeyondShell(const Folder& folder) const
{
    const std::size_t place = platform::text::Length(DiskPath(templatesPath, folder.path));
    return place > LongestShellPath || std::ranges::any_of(folder.doomed, [place](const std::string& name) {
               return place + 1 + platform::text::Length(name) > LongestShellPath;
           });
}

bool FolderRemoval::ListAll(const std::string& category)
{
    const auto entry = files.Stat(DiskPath(templatesPath, category));
    if (!entry || !entry->IsFolder())
        return false;
    folders.push_back({category, entry->IsLink(), false, false, {}});
    for (std::size_t i = 0; i < folders.size(); ++i)
        if (!IsCalledSo(folders[i]) || (!folders[i].isLink && !ListFolder(i)))
            return false;
    return true;
}

bool FolderRemoval::IsCalledSo(const Folder& folder) const
{
    // By a name with a dot or blank at its end the system finds the neighbour without.
    const auto entry = files.Stat(DiskPath(templatesPath, folder.path));
    return entry && EqualIgnoringCase(entry->name, path::Name(folder.path));
}

bool FolderRemoval::ListFolder(std::size_t index)
{
    const std::string folder = folders[index].path;
    const auto listing = files.List(DiskPath(templatesPath, folder));
    if (!listing)
        return false;
    for (const platform::FileEntry& entry : *listing) {
        if (entry.IsFolder())
            folders.push_back({path::Join(folder, entry.name),
                               entry.IsLink(),
                               EqualIgnoringCase(entry.name, PreviewsFolder),
                               false,
                               {}});
        else if (folders[index].isPreviews || TemplateTypeOf(entry.name))
            folders[index].doomed.push_back(entry.name);
        else
            folders[index].holdsOthers = true;
    }
    return true;
}

bool FolderRemoval::DeleteFolderAndContent(const Folder& folder)
{
    // A folder may have been replaced by a link since it was listed. Then the files behind it belong to somebody else.
    if (!IsOwnFolder(files, templatesPath, folder.isLink ? path::Parent(folder.path) : folder.path))
        return false;
    const std::string place = DiskPath(templatesPath, folder.path);
    bool isRemoved = true;
    for (const std::string& name : folder.doomed)
        isRemoved = files.DeleteFile(path::Join(place, name)).has_value() && isRemoved;
    return files.RemoveFolder(place).has_value() && isRemoved;
}

} // namespace library
