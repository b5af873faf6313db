#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Helpers for UTF-8 text. "Characters" are UTF-16 units, the unit in which the system's buffers are measured.
namespace platform::text {

/// Without leading and trailing blanks (U+0020 only: a tab is part of a name).
std::string Trimmed(std::string_view text);

/// Lower case by the simple one-to-one mapping of the Latin, Greek, Cyrillic and Armenian letters. It does not depend
/// on the user's locale, so a comparison made with it gives the same result on every machine.
std::string Folded(std::string_view text);

bool EqualIgnoringCase(std::string_view a, std::string_view b);
bool ContainsIgnoringCase(std::string_view text, std::string_view part);
bool EndsWithIgnoringCase(std::string_view text, std::string_view ending);

/// The pieces between `separator`s; an empty text gives one empty piece.
std::vector<std::string> Split(std::string_view text, char separator);

/// Every occurrence of `what` (not empty) replaced.
std::string Replaced(std::string text, std::string_view what, std::string_view by);

/// The length in UTF-16 units. Malformed bytes count one each.
std::size_t Length(std::string_view text);

/// The first `units` UTF-16 units, never cutting a character in two.
std::string_view Left(std::string_view text, std::size_t units);

/// Whether the text is a number: digits, with optional blanks around, one sign before or after, and one decimal
/// separator. At least one digit.
bool IsNumeric(std::string_view text, char decimalSeparator = '.');

/// The whole number that the text starts with (blanks, sign, digits), else `otherwise`; clamped to [low, high].
/// Settings are read with it: whatever stands in the registry, the result is in range.
int ToInt(std::string_view text, int otherwise, int low, int high);

/// "True"/"False" in any case, or a number (0 is false); anything else gives `otherwise`.
bool ToBool(std::string_view text, bool otherwise);

} // namespace platform::text
