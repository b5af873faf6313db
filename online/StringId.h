#pragma once

#include "app/base/StringId.h"

#include <cstdint>

/// Names for the string numbers that the online services ask for.
namespace online::str {

// What other parts of the program say as well.
using namespace app::str;

inline constexpr std::uint16_t BugReportSubject = 404, NoMailAccount = 405, ReportNotHandedOver = 660, BannerName = 663;

} // namespace online::str
