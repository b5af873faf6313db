#include "library/CategoryPath.h"

#include "platform/Path.h"
#include "platform/Text.h"

namespace library {

std::string DiskPath(std::string_view templatesPath, std::string_view category)
{
    return platform::path::Join(platform::path::WithoutTrailingSeparator(templatesPath), category);
}

std::string WithoutCreateNew(std::string path, std::string_view createNew)
{
    return platform::text::Replaced(std::move(path), std::string{createNew} + "\\", "");
}

} // namespace library
