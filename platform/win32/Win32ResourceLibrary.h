#pragma once

#include "platform/ResourceLibrary.h"
#include "platform/win32/Handle.h"

namespace platform::win32 {

class Win32ResourceLibrary final : public ResourceLibrary {
public:
    bool Load(std::string_view file) override;
    std::string LoadString(std::uint16_t id, int buffer) override;

private:
    ModuleHandle library;
};

} // namespace platform::win32
