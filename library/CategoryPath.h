#pragma once

#include <string>
#include <string_view>

namespace library {

/// A category's full path on disk. `templatesPath` keeps its trailing separators, as the start leaves it.
std::string DiskPath(std::string_view templatesPath, std::string_view category);

} // namespace library
