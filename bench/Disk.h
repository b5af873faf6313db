#pragma once

#include "platform/Platform.h"

#include <cstddef>
#include <memory>
#include <string>

namespace bench {

/// The disk that is measured on, with a folder of its own that is gone when the bench ends.
class Disk {
public:
    Disk() = default;
    Disk(const Disk&) = delete;
    Disk& operator=(const Disk&) = delete;
    virtual ~Disk() = default;

    /// Wakes the window's thread, where it sleeps while another one reads.
    platform::Post Wake;

    virtual platform::Platform AsPlatform() = 0;
    /// Whether reading it costs what reading costs: memory is too fast to be a measure of anything.
    virtual bool IsReal() const = 0;
    virtual std::string Root() const = 0;
    virtual void AddFolder(const std::string& path) = 0;
    virtual void AddFile(const std::string& path) = 0;

    /// Entries below the folder, met in one enumeration of everything with nothing between it and the system.
    virtual std::size_t Enumerate(const std::string& folder) = 0;
    /// Files in the folder (not below it) that a search for "*" and this ending finds.
    virtual std::size_t Search(const std::string& folder, std::string_view ending) = 0;
};

/// The real disk in a Windows build, else one in memory.
std::unique_ptr<Disk> MakeDisk();

} // namespace bench
