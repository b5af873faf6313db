#pragma once

#include "platform/Error.h"

#include <string_view>

namespace platform {

/// Automation objects of other programs.
class Automation {
public:
    virtual ~Automation() = default;
    /// Creates an object of the class and releases it at once. error::CannotCreateObject when the class is not
    /// registered or its server cannot be started, error::AutomationModuleNotFound when its module is missing; any
    /// other failure as the system gives it.
    virtual Result<> TryCreate(std::string_view progId) = 0;
};

} // namespace platform
