#pragma once

#include "platform/Web.h"

namespace platform::win32 {

class Win32Web final : public Web {
public:
    Result<WebReply> Get(std::string_view address, const WebBounds& bounds, const Cancelled& cancelled) override;
};

} // namespace platform::win32
