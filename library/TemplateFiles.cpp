#include "library/TemplateFiles.h"

#include "platform/Path.h"
#include "platform/Text.h"

namespace library {

std::optional<std::size_t> TemplateTypeOf(std::string_view name)
{
    const std::string_view ending = platform::path::LastFour(name);
    if (ending.size() != 4 || ending.front() != '.')
        return std::nullopt;
    for (std::size_t i = 0; i < TemplateExtensions.size(); ++i)
        if (platform::text::EqualIgnoringCase(ending, TemplateExtensions[i]))
            return i;
    return std::nullopt;
}

bool IsPlainFile(const platform::FileEntry& entry)
{
    using namespace platform;
    return (entry.attributes & (attribute::Folder | attribute::Hidden | attribute::System)) == 0;
}

} // namespace library
