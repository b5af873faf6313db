#pragma once

#include "platform/Process.h"
#include "platform/win32/Handle.h"

namespace platform::win32 {

class Win32Process final : public Process {
public:
    bool ClaimSingleInstance() override;
    void ReleaseSingleInstance() override;

private:
    ObjectHandle mark;
};

} // namespace platform::win32
