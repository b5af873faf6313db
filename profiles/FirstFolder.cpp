#include "profiles/FirstFolder.h"

#include "platform/Path.h"
#include "platform/Text.h"

namespace profiles {

namespace path = platform::path;
namespace text = platform::text;
using platform::KnownFolder;

std::string FirstFolder(const platform::Platform& system, std::string_view last)
{
    const std::string folder{path::WithoutTrailingSeparator(last)};
    const auto isIn = [&](KnownFolder known) {
        const auto above = system.shell.FolderPath(known);
        return above && text::Folded(folder + "\\").starts_with(text::Folded(*above + "\\"));
    };
    if (path::IsAbsolute(folder) && !isIn(KnownFolder::ProgramFolder) && !isIn(KnownFolder::Windows))
        return std::string{last};
    return system.shell.FolderPath(KnownFolder::Personal).value_or("");
}

} // namespace profiles
