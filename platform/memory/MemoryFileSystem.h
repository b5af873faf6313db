#pragma once

#include "platform/FileSystem.h"
#include "platform/memory/FaultPlan.h"
#include "platform/memory/MemoryDisk.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform::memory {

/// A file system in memory that behaves like the system's. Each of its calls is counted and can be made to fail.
class MemoryFileSystem final : public FileSystem, public MemoryDisk {
public:
    MemoryFileSystem(FaultPlan& plan, MemoryClock& clock) : MemoryDisk{clock}, faults{plan} {}

    Result<std::vector<FileEntry>> List(std::string_view folder) override;
    Result<FileEntry> Stat(std::string_view path) override;
    Result<> CopyFile(std::string_view from, std::string_view to) override;
    Result<> Move(std::string_view from, std::string_view to) override;
    Result<> DeleteFile(std::string_view path) override;
    Result<> MakeWritable(std::string_view path) override;
    Result<> RemoveFolder(std::string_view path) override;
    Result<> CreateFolder(std::string_view path) override;
    Result<std::string> Read(std::string_view path, std::uint64_t limit) override;
    Result<std::unique_ptr<ByteSource>> Open(std::string_view path) override;
    Result<> Write(std::string_view path, std::string_view bytes) override;
    Result<> Replace(std::string_view from, std::string_view to) override;

    /// Every write says that it worked, and stores no more than the first half: a disk or a server that lies.
    void SetShortWrites(bool lies = true) { shortWrites = lies; }
    /// All folders list in the order of their names, as the system's main disk format does, instead of the order of
    /// creation.
    void SetSorted(bool sort = true) { sorted = sort; }

private:
    FaultPlan& faults;
    bool sorted{};
    bool shortWrites{};

    /// Counts the call and finds its path's entry, which may be a link.
    Result<Place> Begin(std::string_view call, std::string_view path);
    /// The same for a file whose bytes are wanted.
    Result<Node*> BeginToRead(std::string_view call, std::string_view path);
};

} // namespace platform::memory
