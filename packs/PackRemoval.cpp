#include "packs/PackRemoval.h"

#include "library/CategoryPath.h"
#include "library/TemplateFiles.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>
#include <ranges>

namespace packs {
namespace {

namespace path = platform::path;
namespace text = platform::text;

/// A category's own icon; it comes with its templates.
bool IsFolderIcon(std::string_view name)
{
    return text::Folded(name).starts_with("folder") && text::EndsWithIgnoringCase(name, ".ico");
}

/// A call that need not find what it was to remove.
bool IsGone(const platform::Result<>& removed)
{
    return removed || IsNotThere(removed.error());
}

} // namespace

void PackRemoval::Claim::Add(const PackFolder& folder)
{
    path = folder.path;
    isWhole = isWhole || !folder.files;
    for (const std::string& name : folder.files.value_or(std::vector<std::string>{}))
        names.insert(text::Folded(name));
}

bool PackRemoval::Claim::Has(std::string_view file) const
{
    return names.contains(text::Folded(file)) || (isWhole && (library::TemplateTypeOf(file) || IsFolderIcon(file)));
}

bool PackRemoval::Claim::HasPreview(std::string_view picture) const
{
    if (!text::EndsWithIgnoringCase(picture, ".jpg"))
        return false;
    const std::string shown = text::Folded(path::WithoutLastFour(picture));
    return isWhole ||
           std::ranges::any_of(names, [&](const std::string& name) { return path::WithoutLastFour(name) == shown; });
}

PackRemoval::PackRemoval(platform::FileSystem& files, std::string templatesPath,
                         const std::vector<SolutionPack>& removed, const std::vector<SolutionPack>& others)
    : files{files}, templatesPath{std::move(templatesPath)}, removedClaims{ClaimsOf(removed)},
      otherClaims{ClaimsOf(others)}
{
}

PackRemoval::Claims PackRemoval::ClaimsOf(const std::vector<SolutionPack>& packs)
{
    Claims claims;
    for (const SolutionPack& pack : packs)
        for (const PackFolder& folder : pack.folders)
            claims[text::Folded(folder.path)].Add(folder);
    return claims;
}

void PackRemoval::Run()
{
    // Without its drive or share every folder would seem to be gone.
    const auto root = files.Stat(path::WithoutTrailingSeparator(templatesPath));
    for (const auto& [key, claim] : removedClaims | std::views::reverse) { // what lies in a folder comes before it
        const auto other = otherClaims.find(key);
        if (root)
            RemoveFolder(claim, other != otherClaims.end() ? &other->second : nullptr);
        else
            notRemoved.push_back(claim.path);
    }
}

PackRemoval::Standing PackRemoval::StandingOf(const std::string& folder) const
{
    // From the top down: the folder itself is looked at last, just before it is used.
    for (auto end = folder.find('\\');; end = folder.find('\\', end + 1)) {
        const std::string upper = folder.substr(0, end);
        const auto entry = files.Stat(library::DiskPath(templatesPath, upper));
        if (!entry)
            return IsNotThere(entry.error()) ? Standing::Gone : Standing::Unknown;
        if (!entry->IsFolder() || entry->IsLink() || !text::EqualIgnoringCase(entry->name, path::Name(upper)))
            return Standing::Foreign;
        if (end == std::string::npos)
            return Standing::Own;
    }
}

bool PackRemoval::IsOwn(const std::string& folder)
{
    const Standing standing = StandingOf(folder);
    if (standing == Standing::Foreign)
        kept.push_back(folder);
    else if (standing == Standing::Unknown)
        notRemoved.push_back(folder);
    return standing == Standing::Own;
}

void PackRemoval::RemoveFolder(const Claim& claim, const Claim* other)
{
    if (!IsOwn(claim.path))
        return;
    const std::string previews = path::Join(claim.path, library::PreviewsFolder);
    Empty(
        claim.path, [&](std::string_view file) { return claim.Has(file); },
        [&](std::string_view file) { return other != nullptr && other->Has(file); });
    Empty(
        previews, [&](std::string_view file) { return claim.HasPreview(file); },
        [&](std::string_view file) { return other != nullptr && other->HasPreview(file); });
    if (other == nullptr) {
        RemoveWhenEmpty(previews);
        RemoveWhenEmpty(claim.path);
    }
}

void PackRemoval::Empty(const std::string& folder, const Belongs& isOurs, const Belongs& isTheirs)
{
    if (!IsOwn(folder))
        return;
    const std::string place = library::DiskPath(templatesPath, folder);
    const auto listing = files.List(place);
    if (!listing) {
        if (!IsNotThere(listing.error()))
            notRemoved.push_back(folder);
        return;
    }
    // It may have been replaced by a link since. Then the files behind it belong to somebody else.
    if (!IsOwn(folder))
        return;
    for (const platform::FileEntry& entry : *listing) {
        const std::string within = path::Join(folder, entry.name);
        if (entry.IsFolder() ? IsOfPacks(within) : isTheirs(entry.name))
            continue;
        if (entry.IsFolder() || !isOurs(entry.name))
            kept.push_back(within);
        else if (!IsGone(DeleteFile(path::Join(place, entry.name), entry)))
            notRemoved.push_back(within);
    }
}

platform::Result<> PackRemoval::DeleteFile(const std::string& file, const platform::FileEntry& entry)
{
    auto deleted = files.DeleteFile(file);
    if (deleted || deleted.error() != platform::error::AccessDenied ||
        (entry.attributes & platform::attribute::ReadOnly) == 0)
        return deleted;
    // So it came from a CD.
    if (const auto writable = files.MakeWritable(file); !writable)
        return writable;
    return files.DeleteFile(file);
}

bool PackRemoval::IsOfPacks(const std::string& folder) const
{
    const std::string key = text::Folded(folder);
    return text::EqualIgnoringCase(path::Name(folder), library::PreviewsFolder) || removedClaims.contains(key) ||
           otherClaims.contains(key);
}

void PackRemoval::RemoveWhenEmpty(const std::string& folder)
{
    // A link would be removed itself. What else is said of the folder was said when it was emptied.
    const Standing standing = StandingOf(folder);
    if (standing == Standing::Unknown && std::ranges::find(notRemoved, folder) == notRemoved.end())
        notRemoved.push_back(folder);
    if (standing != Standing::Own)
        return;
    const auto removed = files.RemoveFolder(library::DiskPath(templatesPath, folder));
    if (!IsGone(removed) && removed.error() != platform::error::DirectoryNotEmpty)
        notRemoved.push_back(folder);
}

} // namespace packs
