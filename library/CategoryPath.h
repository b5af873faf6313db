#pragma once

#include <string>
#include <string_view>

namespace library {

/// A category's full path on disk. `templatesPath` keeps its trailing separators, as the start leaves it.
std::string DiskPath(std::string_view templatesPath, std::string_view category);

/// The path of the category with every "Create New\" removed: such a node stands for the folder below it.
std::string WithoutCreateNew(std::string path, std::string_view createNew);

} // namespace library
