#pragma once

#include "platform/Locale.h"

#include <string_view>

namespace platform {

/// Compares names as a user counts: runs of digits by their value ("z2" before "z10"), all else as the language sorts.
/// Negative, 0 or positive.
int CompareNaturally(Locale& locale, std::string_view a, std::string_view b);

} // namespace platform
