#pragma once

#include "platform/Shell.h"

namespace platform::win32 {

/// The thread that calls Open has COM initialised.
class Win32Shell final : public Shell {
public:
    int Open(std::string_view target) override;
    Result<> Run(std::string_view application, std::string_view commandLine, WindowStyle style) override;
    Result<std::uint32_t> RunAndWait(std::string_view application, std::string_view commandLine, WindowStyle style,
                                     std::uint32_t milliseconds) override;
    Result<std::string> FolderPath(KnownFolder folder) override;
};

} // namespace platform::win32
