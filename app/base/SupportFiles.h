#pragma once

#include "app/base/Program.h"

#include <string>
#include <string_view>

namespace app {

/// One value of a private-profile file, at most 2047 characters; "" when it is missing.
std::string ReadIni(Program& program, std::string_view section, std::string_view key, std::string_view file);

/// The full path of the file that "Support.ini" names under this key for the current product caption, in the
/// installation's support folder; "" when it names none or the file is not there.
std::string SupportFile(Program& program, std::string_view key);

} // namespace app
