#pragma once

#include "platform/Platform.h"

#include <string>
#include <string_view>

namespace profiles {

/// Where the user is first offered to keep or look for files of his: the folder that he used last, else his documents.
/// Never the program's or the system's folder, where an earlier start or the system itself may have put the offer. ""
/// when there is nothing to offer.
std::string FirstFolder(const platform::Platform& system, std::string_view last);

} // namespace profiles
