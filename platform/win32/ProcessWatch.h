#pragma once

#include "platform/Jobs.h"
#include "platform/win32/Handle.h"

#include <cstdint>

namespace platform::win32 {

/// Calls `ended` with the exit code on the window's thread once the process has ended. The process runs on when the
/// ticket goes.
Result<Ticket> WatchProcess(ObjectHandle process, Post post, std::function<void(std::uint32_t exitCode)> ended);

} // namespace platform::win32
