#pragma once

#include "platform/IniFile.h"

namespace platform::win32 {

class Win32IniFile final : public IniFile {
public:
    std::string Read(std::string_view section, std::string_view key, std::string_view file, int buffer) override;
};

} // namespace platform::win32
