#pragma once

#include "app/base/StringId.h"

#include <cstdint>

/// Names for the string numbers that the online services ask for.
namespace online::str {

using app::str::FileNotFound;

} // namespace online::str
