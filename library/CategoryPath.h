#pragma once

#include "platform/FileSystem.h"

#include <optional>
#include <string>
#include <string_view>

namespace library {

/// A category's full path on disk. `templatesPath` keeps its trailing separators, as the start leaves it.
std::string DiskPath(std::string_view templatesPath, std::string_view category);

/// Where `path` is after the folder `from` became `to`; nothing when it does not lie in that folder.
std::optional<std::string> MovedPath(std::string_view path, std::string_view from, std::string_view to);

/// Whether the category and every folder above it are folders, none of them a link, and called so: a name with a dot
/// or blank at its end leads to the neighbour without. What this is not true of may belong to somebody else.
bool IsOwnFolder(platform::FileSystem& files, std::string_view templatesPath, std::string_view category);

} // namespace library
