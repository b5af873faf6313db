#include "library/TemplateFiles.h"

#include "platform/Path.h"

#include <algorithm>
#include <iterator>

namespace library {

std::optional<std::size_t> TemplateTypeOf(std::string_view name)
{
    const std::string_view ending = platform::path::LastFour(name);
    if (ending.size() != 4 || ending.front() != '.')
        return std::nullopt;
    // Every file of the library comes through here. The endings are plain letters, for which one bit is all there is to
    // letter case; comparing them as texts of any script took most of a load's own time.
    constexpr auto small = [](char c) { return static_cast<char>(c | 0x20); };
    const char letters[] = {'.', small(ending[1]), small(ending[2]), small(ending[3])};
    const auto found = std::ranges::find(TemplateExtensions, std::string_view{letters, std::size(letters)});
    if (found != TemplateExtensions.end())
        return static_cast<std::size_t>(found - TemplateExtensions.begin());
    return std::nullopt;
}

bool IsShown(const platform::FileEntry& entry)
{
    return (entry.attributes & (platform::attribute::Hidden | platform::attribute::System)) == 0;
}

bool IsPlainFile(const platform::FileEntry& entry)
{
    return !entry.IsFolder() && IsShown(entry);
}

} // namespace library
