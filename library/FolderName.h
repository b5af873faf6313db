#pragma once

#include <string_view>

namespace library {

/// Characters of a folder's name at most.
inline constexpr std::size_t LongestFolderName = 40;

/// Whether the name holds one of \ / : * ? " < > |.
bool HasForbiddenCharacter(std::string_view name);

/// Whether the system would refuse the name, or quietly make another one of it: control characters, a dot or blank at
/// the end, the names of devices ("CON", "com1.old").
bool IsNoFolderName(std::string_view name);

/// Whether the system cuts a dot or blank off the end of the name, and so finds another folder by it. Other systems
/// make such names on shares.
bool IsShortened(std::string_view name);

} // namespace library
