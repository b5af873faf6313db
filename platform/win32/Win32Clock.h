#pragma once

#include "platform/Clock.h"

namespace platform::win32 {

class Win32Clock final : public Clock {
public:
    FileTime Now() override;
    LocalTime ToLocal(FileTime time) override;
    void Sleep(std::uint32_t milliseconds) override;
};

} // namespace platform::win32
