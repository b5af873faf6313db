#pragma once

#include "platform/FileSystem.h"
#include "platform/Shell.h"

#include <string>
#include <string_view>

namespace online {

/// The program's own folder below the user's temporary one, without a trailing separator; every folder of the path that
/// is missing is made. A file or a link in its place is an error: somebody else may have put it there.
platform::Result<std::string> GetTempFolderPath(platform::Shell& shell, platform::FileSystem& files);

/// Writes the file, in the place of an earlier one.
platform::Result<> SaveFile(platform::FileSystem& files, std::string_view path, std::string_view bytes);

/// A page as it stands in a file; "" when it cannot be read, or is longer than any page that is looked at.
std::string ReadHTML(platform::FileSystem& files, std::string_view path);

} // namespace online
