#include "profiles/FirstFolder.h"

#include "platform/Path.h"

namespace profiles {

namespace path = platform::path;
using platform::KnownFolder;

std::string FirstFolder(const platform::Platform& system, std::string_view last)
{
    const std::string folder{path::WithoutTrailingSeparator(last)};
    const auto is = [&](KnownFolder known) {
        const auto unwanted = system.shell.FolderPath(known);
        return unwanted && path::Same(folder, *unwanted);
    };
    if (path::IsAbsolute(folder) && !is(KnownFolder::ProgramFolder) && !is(KnownFolder::Windows))
        return std::string{last};
    return system.shell.FolderPath(KnownFolder::Personal).value_or("");
}

} // namespace profiles
