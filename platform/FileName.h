#pragma once

#include <string_view>

/// Names of files and folders, as opposed to paths: what the system refuses, or quietly makes another name of.
namespace platform::file_name {

/// No name holds one of these, nor a control character.
inline constexpr std::string_view Forbidden = "\\/:*?\"<>|";
/// The same for a message to the user.
inline constexpr const char* ForbiddenShown = "\\ / : * ? \" < > |";
/// What is left of them for a path behind its drive: the separators part its names there.
inline constexpr std::string_view ForbiddenInPaths = Forbidden.substr(2);

/// Whether the text holds one of `Forbidden`.
bool HasForbiddenCharacter(std::string_view text);
bool HasControlCharacter(std::string_view text);

/// Whether the system takes the name for one of its devices, with whatever ending: "CON", "com1.old".
bool IsDevice(std::string_view name);

/// Whether the system cuts a dot or blank off the end of the name, and so finds another file by it. Other systems make
/// such names on shares.
bool IsShortened(std::string_view name);

/// Whether the system would refuse the name, or make another one of it, although its characters may stand in one: one
/// that is shortened, or a device's.
bool IsReserved(std::string_view name);

} // namespace platform::file_name
