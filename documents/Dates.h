#pragma once

#include "documents/Facts.h"
#include "platform/Clock.h"

#include <optional>
#include <string_view>

namespace documents {

/// What the calendar showed at a moment whose zone is not known, or of UTC.
platform::LocalTime OnCalendar(platform::FileTime time);

/// In steps of 100 nanoseconds since 1601-01-01; nothing for a day that no calendar has, and for years outside of 1601
/// to 9999.
std::optional<platform::FileTime> ToFileTime(const platform::LocalTime& time);

/// "2004-03-07T17:07:00Z", also with fractions of a second, an offset ("+01:00") or neither; a day alone is local.
std::optional<Date> ParseIsoDate(std::string_view text);

/// "D:20040307170700+01'00'", from the year on as long as it goes; a leading "D:" may be missing.
std::optional<Date> ParsePdfDate(std::string_view text);

} // namespace documents
