#pragma once

#include "platform/FileSystem.h"
#include "platform/memory/MemoryClock.h"

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace platform::memory {

/// The drives of a MemoryFileSystem with what is on them, and how paths lead there: letter case is kept but does not
/// count, doubled separators are harmless, ".." and dots or blanks at the end of a name are resolved, links are
/// followed in the middle of a path. What is public sets the scene or looks at it: it counts as no call, meets no
/// fault, and throws std::logic_error for a path that is not there.
class MemoryDisk {
public:
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

protected:
    struct Node {
        FileEntry entry;
        std::string contents;
        std::string target; ///< of a link
        Node* parent{};
        std::vector<std::unique_ptr<Node>> children;   ///< in listing order
        std::unordered_map<std::string, Node*> byName; ///< by folded name
        Error listError{};
        bool heldOpen{};
        std::size_t listings{};

        bool IsLink() const { return !target.empty(); }
        std::string Path() const;
        Node* Child(std::string_view name) const;
        bool AnyHeldOpen() const;
        /// Whether this is the other one, or below it.
        bool IsWithin(const Node& other) const;
        Node& Add(std::unique_ptr<Node> child);
        std::unique_ptr<Node> Take(Node& child);
        void Rename(Node& child, std::string_view name);
        template <class Visit>
        void ForEachBelow(const Visit& visit) const;
    };

    /// Where an entry is or would be.
    struct Place {
        Node* parent{};        ///< null for the root of a drive
        std::string_view name; ///< of the last component, as asked for
        Node* node{};          ///< null when there is no such entry in `parent`
    };

    /// There is a drive C:. New files and folders carry the clock's time.
    explicit MemoryDisk(MemoryClock& clock);
    ~MemoryDisk() = default;

    Result<Place> Find(std::string_view path, bool followLast, int linksLeft = 63) const;
    /// The same for an entry that must be there; error::FileNotFound.
    Result<Place> FindEntry(std::string_view path, bool followLast) const;
    void AddFolderAt(const Place& place);

private:
    struct Drive {
        Node root;
        bool ready{true};
    };

    MemoryClock& clock;
    std::vector<std::unique_ptr<Drive>> drives;

    Node& Must(std::string_view path) const;
    Place MakeRoom(std::string_view path);
    Drive* DriveOf(std::string_view name) const;
};

} // namespace platform::memory
