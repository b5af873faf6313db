#include "library/CategoryPath.h"

#include "platform/Path.h"

namespace library {

std::string DiskPath(std::string_view templatesPath, std::string_view category)
{
    return platform::path::Join(platform::path::WithoutTrailingSeparator(templatesPath), category);
}

} // namespace library
