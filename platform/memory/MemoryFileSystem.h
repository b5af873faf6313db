#pragma once

#include "platform/FileSystem.h"
#include "platform/memory/FaultPlan.h"
#include "platform/memory/MemoryClock.h"

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::memory {

/// A disk in memory that behaves like the system's: letter case is kept but does not count, doubled separators are
/// harmless, ".." and dots or blanks at the end of a name are resolved, links are followed in the middle of a path.
/// The helpers below the overrides set the scene: they count as no call, meet no fault, and throw std::logic_error
/// for a path that is not there.
class MemoryFileSystem final : public FileSystem {
public:
    /// There is a drive C:. New files and folders carry the clock's time.
    MemoryFileSystem(FaultPlan& plan, MemoryClock& clock);
    ~MemoryFileSystem() override;

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

    // What is there. Each creates the folders above and the drive ("X:" or "\\server\share").
    void AddFolder(std::string_view path);
    /// An empty folder whose name stays as it is, with a dot or blank at its end, as other systems make them on shares:
    /// listings show it, and a path with its name leads to the neighbour without that end.
    void AddShortenedFolder(std::string_view parent, std::string_view name);
    /// Replaces the contents of a file that is there.
    void AddFile(std::string_view path, std::string_view contents = {}, std::optional<FileTime> modified = {});
    /// A link to a folder, by default a junction; the target need not exist.
    void AddLink(std::string_view path, std::string_view target, std::uint32_t reparseTag = JunctionTag);
    /// A file or a folder with all that is in it; of a link the link alone.
    void Remove(std::string_view path);
    bool Exists(std::string_view path) const;
    std::string Contents(std::string_view path) const;

    // How it behaves.
    void SetAttributes(std::string_view path, std::uint32_t attributes);
    /// Makes an ordinary folder a reparse point that is no link, as cloud drives have them (e.g. tag 0x9000001A).
    void SetReparseTag(std::string_view path, std::uint32_t tag);
    void SetModified(std::string_view path, FileTime modified);
    /// The size that listings tell, for files too large to be put here.
    void SetSize(std::string_view path, std::uint64_t size);
    /// Open in another program, which shares reading alone: it cannot be deleted or moved, nor a folder above moved.
    void SetHeldOpen(std::string_view path, bool held = true);
    /// Every listing of this folder fails; error{} makes it readable again.
    void SetUnreadable(std::string_view folder, Error error = error::AccessDenied);
    /// All folders list in the order of their names, as the system's main disk format does, instead of the order of
    /// creation.
    void SetSorted(bool sort = true) { sorted = sort; }
    /// Every write says that it worked, and stores no more than the first half: a disk or a server that lies.
    void SetShortWrites(bool lies = true) { shortWrites = lies; }
    void SetDriveReady(std::string_view drive, bool ready);

    // What became of it.
    /// Every file, folder and link below `folder` (all drives when empty) by path, with its attributes and contents
    /// in one line: two snapshots are equal when nothing has changed.
    std::map<std::string, std::string> Snapshot(std::string_view folder = {}) const;
    /// The sorted paths of the same.
    std::vector<std::string> AllPaths(std::string_view folder = {}) const;
    /// How often each folder has been listed, by its path without links; folders never listed are left out.
    std::map<std::string, std::size_t> Listings() const;
    void ForgetListings();

    static constexpr std::uint32_t JunctionTag = 0xA0000003; ///< IO_REPARSE_TAG_MOUNT_POINT of winnt.h

private:
    struct Node;
    struct Drive;
    struct Place; ///< where an entry is or would be

    Result<Place> Find(std::string_view path, bool followLast, int linksLeft = 63) const;
    /// The same for an entry that must be there; error::FileNotFound.
    Result<Place> FindEntry(std::string_view path, bool followLast) const;
    Result<Node*> FindFollowed(std::string_view path) const;
    Node& Must(std::string_view path) const;
    void AddFolderAt(const Place& place);
    Place MakeRoom(std::string_view path);
    Drive* DriveOf(std::string_view name) const;

    FaultPlan& faults;
    MemoryClock& clock;
    std::vector<std::unique_ptr<Drive>> drives;
    bool sorted{};
    bool shortWrites{};
};

} // namespace platform::memory
