#pragma once

#include "platform/FileSystem.h"
#include "platform/Shell.h"

#include <string_view>

namespace library {

/// Whether the folder can serve as the templates path: a category in it, as deep as the walk goes and among as many
/// folders as the table holds, has a template.
bool HoldsTemplates(platform::FileSystem& files, std::string_view templatesPath);

/// Whether empty folders below this path may be the library's litter. Not so in the system's own folder, nor in one
/// that has that, the user's documents, this program or the temporary files in it: a template somewhere in there makes
/// no library of it.
bool MayBeTidied(platform::Shell& shell, std::string_view templatesPath);

} // namespace library
