#pragma once

#include <string>
#include <string_view>

/// Windows paths as UTF-8 text. Both "\" and a doubled "\" separate; "/" is accepted where a user may have typed it.
namespace platform::path {

/// `folder`, one "\" and `name`; an empty `folder` gives `name` alone.
std::string Join(std::string_view folder, std::string_view name);

/// What stands before the last "\"; "" when there is none. Trailing separators are left out first.
std::string Parent(std::string_view path);

/// What stands after the last "\" (the whole text when there is none).
std::string_view Name(std::string_view path);

/// The last four characters (bytes) of a name: its ending, dot included, for the three-letter endings used here.
/// A shorter name is returned whole.
std::string_view LastFour(std::string_view name);

/// `name` without its last four characters; "" when it has no more than four.
std::string_view WithoutLastFour(std::string_view name);

/// The path without trailing separators; a drive root keeps its one ("C:\").
std::string_view WithoutTrailingSeparator(std::string_view path);

/// Separators folded to single "\" (a leading "\\" of a share stays), none at the end except after "X:".
std::string Normalized(std::string_view path);

/// The same for all paths that name the same place: letter case, doubled and trailing separators do not count.
std::string Key(std::string_view path);
bool Same(std::string_view a, std::string_view b);

/// Whether the path lies somewhere below the folder, as the two are written: letter case alone does not count. A
/// separator at the folder's end may be there or not.
bool IsBelow(std::string_view path, std::string_view folder);

/// "X:\" or "\\server\share" of an absolute path; "" for another one.
std::string Root(std::string_view path);

/// "X:\..." or "\\server\share...".
bool IsAbsolute(std::string_view path);

} // namespace platform::path
