#pragma once

#include "platform/ByteSource.h"
#include "platform/Error.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// 100-nanosecond steps since 1601-01-01 UTC, the unit of the system's file times.
using FileTime = std::int64_t;

namespace attribute { // the system's attribute bits
inline constexpr std::uint32_t ReadOnly = 0x1;
inline constexpr std::uint32_t Hidden = 0x2;
inline constexpr std::uint32_t System = 0x4;
inline constexpr std::uint32_t Folder = 0x10;
inline constexpr std::uint32_t Archive = 0x20;
inline constexpr std::uint32_t ReparsePoint = 0x400;
} // namespace attribute

/// What a listing tells of one file or folder.
struct FileEntry {
    std::string name;
    std::uint32_t attributes{};
    std::uint32_t reparseTag{}; ///< meaningful only with attribute::ReparsePoint
    std::uint64_t size{};       ///< bytes
    FileTime modified{};
    FileTime created{};

    bool IsFolder() const { return (attributes & attribute::Folder) != 0; }
    /// A junction or symbolic link, which must not be followed by anything that removes. Other reparse points (the
    /// folders of cloud drives) are ordinary. A name surrogate has bit 0x20000000; tag 0 is what Wine gives a link.
    bool IsLink() const
    {
        return (attributes & attribute::ReparsePoint) != 0 && (reparseTag == 0 || (reparseTag & 0x20000000) != 0);
    }
};

/// Files and folders. Paths are absolute Windows paths in UTF-8, of any length.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    /// Every entry of a folder but "." and "..", in the order in which the system returns them. A listing that breaks
    /// off in the middle is an error, never a short list.
    virtual Result<std::vector<FileEntry>> List(std::string_view folder) = 0;
    /// The entry of one file or folder (a link itself, not its target), with its name as it stands on the disk.
    virtual Result<FileEntry> Stat(std::string_view path) = 0;

    /// Never replaces: error::FileExists when `to` is there.
    virtual Result<> CopyFile(std::string_view from, std::string_view to) = 0;
    /// One rename of a file or folder, on one volume; never replaces (error::AlreadyExists), never copies.
    virtual Result<> Move(std::string_view from, std::string_view to) = 0;
    virtual Result<> DeleteFile(std::string_view path) = 0;
    /// Takes the write protection off a file, without which it can be neither deleted nor replaced.
    virtual Result<> MakeWritable(std::string_view path) = 0;
    /// Removes a folder that is empty, or a link to a folder; error::DirectoryNotEmpty otherwise.
    virtual Result<> RemoveFolder(std::string_view path) = 0;
    /// One folder; its parent must exist. error::AlreadyExists when it is there.
    virtual Result<> CreateFolder(std::string_view path) = 0;

    /// The whole file; error::FileTooLarge when it has more than `limit` bytes.
    virtual Result<std::string> Read(std::string_view path, std::uint64_t limit) = 0;
    /// A file to be read by ranges, whatever its size. Others may write, move and delete it meanwhile.
    virtual Result<std::unique_ptr<ByteSource>> Open(std::string_view path) = 0;
    /// A new file with these bytes; error::FileExists when it is there. Of a write that breaks off nothing stays.
    virtual Result<> Write(std::string_view path, std::string_view bytes) = 0;
    /// One rename of a file on one volume that takes the place of a file `to` if there is one: at every moment `to` is
    /// the old file or the new one. error::AccessDenied when `to` is a folder, write-protected, or held open
    /// by anybody.
    virtual Result<> Replace(std::string_view from, std::string_view to) = 0;
};

} // namespace platform
