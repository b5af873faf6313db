#pragma once

#include "app/base/StringId.h"

#include <cstdint>

/// Names for the string numbers that the solution packs ask for. Captions stand as plain numbers where a control is
/// declared.
namespace packs::str {

// What other parts of the program say as well.
using namespace app::str;

inline constexpr std::uint16_t LastPack = 110, VersionInfoUnreadable = 163, VersionValueMissing = 164,
                               InstallRuns = 192, WaitForInstall = 193, CannotLoadPack = 257, NoPack = 258,
                               ProductWord = 307, ContentKey = 381, ContentUrl = 384, ChoosePack = 510,
                               PackFilter = 511, DeleteAllQuestion = 527, DeleteQuestion = 528, DeleteQuestionEnd = 529,
                               NoPacks = 642, LeftInPlace = 643, AndMore = 644, NotRemoved = 740;

} // namespace packs::str
