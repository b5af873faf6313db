#include "library/CategoryPath.h"

#include "platform/Path.h"
#include "platform/Text.h"

namespace library {

using platform::text::EqualIgnoringCase;

std::string DiskPath(std::string_view templatesPath, std::string_view category)
{
    return platform::path::Join(platform::path::WithoutTrailingSeparator(templatesPath), category);
}

std::optional<std::string> MovedPath(std::string_view path, std::string_view from, std::string_view to)
{
    if (!platform::path::IsBelow(path, from))
        return std::nullopt;
    return std::string{to}.append(path.substr(from.size()));
}

bool IsOwnFolder(platform::FileSystem& files, std::string_view templatesPath, std::string_view category)
{
    // From the top down: the folder itself is looked at last, just before it is used.
    for (auto end = category.find('\\');; end = category.find('\\', end + 1)) {
        const std::string_view folder = category.substr(0, end);
        const auto entry = files.Stat(DiskPath(templatesPath, folder));
        if (!entry || !entry->IsFolder() || entry->IsLink() ||
            !EqualIgnoringCase(entry->name, platform::path::Name(folder)))
            return false;
        if (end == std::string_view::npos)
            return true;
    }
}

} // namespace library
