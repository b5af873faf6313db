#pragma once

#include "platform/IniFile.h"
#include "platform/memory/FaultPlan.h"
#include "platform/memory/MemoryFileSystem.h"

namespace platform::memory {

/// Reads the files of a memory file system.
class MemoryIniFile final : public IniFile {
public:
    MemoryIniFile(FaultPlan& plan, const MemoryFileSystem& fileSystem) : faults{plan}, files{fileSystem} {}

    std::string Read(std::string_view section, std::string_view key, std::string_view file, int buffer) override;

private:
    FaultPlan& faults;
    const MemoryFileSystem& files;
};

} // namespace platform::memory
