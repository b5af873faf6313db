#pragma once

#include "platform/Automation.h"

namespace platform::win32 {

/// The calling thread has COM initialised.
class Win32Automation final : public Automation {
public:
    Result<> TryCreate(std::string_view progId) override;
};

} // namespace platform::win32
