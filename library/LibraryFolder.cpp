#include "library/LibraryFolder.h"

#include "library/CategoryPath.h"
#include "library/FolderTable.h"
#include "library/FolderWalk.h"
#include "library/TemplateFiles.h"
#include "platform/Path.h"

#include <algorithm>
#include <array>
#include <deque>
#include <string>

namespace library {
namespace {

bool IsWithin(const std::string& path, const std::string& folder)
{
    return platform::path::Same(path, folder) || platform::path::IsBelow(path, folder);
}

} // namespace

bool HoldsTemplates(platform::FileSystem& files, std::string_view templatesPath)
{
    struct Folder {
        std::string path; ///< relative to the templates path
        int level{};      ///< 0: the templates path itself, whose files are no category's
    };
    std::deque<Folder> waiting(1);
    for (std::size_t looked = 0; !waiting.empty() && looked < FolderTable::Rows; ++looked) {
        const Folder folder = std::move(waiting.front());
        waiting.pop_front();
        const auto listing = files.List(DiskPath(templatesPath, folder.path));
        if (!listing)
            continue;
        for (const platform::FileEntry& entry : *listing) {
            if (folder.level > 0 && IsPlainFile(entry) && TemplateTypeOf(entry.name))
                return true;
            if (folder.level < FolderWalk::Levels && FolderWalk::IsCategory(entry))
                waiting.push_back({folder.level == 0 ? entry.name : folder.path + "\\" + entry.name, folder.level + 1});
        }
    }
    return false;
}

bool MayBeTidied(platform::Shell& shell, std::string_view templatesPath)
{
    using enum platform::KnownFolder;
    const std::string library = platform::path::Normalized(platform::path::WithoutTrailingSeparator(templatesPath));
    return std::ranges::none_of(std::array{Windows, Personal, ProgramFolder, Temporary}, [&](auto known) {
        const auto folder = shell.FolderPath(known);
        return !folder || IsWithin(*folder, library) || (known == Windows && IsWithin(library, *folder));
    });
}

} // namespace library
