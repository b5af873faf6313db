#include "bench/Disk.h"

#include "platform/Path.h"
#include "platform/memory/System.h"

#include <algorithm>

namespace bench {
namespace {

class MemoryDisk final : public Disk {
public:
    platform::Platform AsPlatform() override { return system.AsPlatform(); }
    bool IsReal() const override { return false; }
    std::string Root() const override { return "C:\\Bench"; }
    void AddFolder(const std::string& path) override { system.files.AddFolder(path); }
    void AddFile(const std::string& path) override { system.files.AddFile(path); }

    std::size_t Enumerate(const std::string& folder) override
    {
        const auto entries = system.files.List(folder).value();
        std::size_t count = entries.size();
        for (const platform::FileEntry& entry : entries)
            if (entry.IsFolder())
                count += Enumerate(platform::path::Join(folder, entry.name));
        return count;
    }

    std::size_t Search(const std::string& folder, std::string_view ending) override
    {
        const auto entries = system.files.List(folder).value();
        return static_cast<std::size_t>(std::ranges::count_if(
            entries, [&](const platform::FileEntry& entry) { return entry.name.ends_with(ending); }));
    }

private:
    platform::memory::System system;
};

} // namespace

std::unique_ptr<Disk> MakeDisk()
{
    return std::make_unique<MemoryDisk>();
}

} // namespace bench
