#include "platform/win32/Win32FileSystem.h"

#include "platform/Path.h"
#include "platform/win32/Handle.h"
#include "platform/win32/Native.h"

#include <algorithm>

namespace platform::win32 {

namespace {

constexpr std::uint64_t Join(DWORD high, DWORD low)
{
    return std::uint64_t{high} << 32 | low;
}

FileTime ToFileTime(FILETIME time)
{
    return static_cast<FileTime>(Join(time.dwHighDateTime, time.dwLowDateTime));
}

FileEntry ToEntry(const WIN32_FIND_DATAW& found)
{
    return {.name = ToUtf8(found.cFileName),
            .attributes = found.dwFileAttributes,
            .reparseTag = (found.dwFileAttributes & attribute::ReparsePoint) != 0 ? found.dwReserved0 : 0,
            .size = Join(found.nFileSizeHigh, found.nFileSizeLow),
            .modified = ToFileTime(found.ftLastWriteTime),
            .created = ToFileTime(found.ftCreationTime)};
}

bool IsDotName(const wchar_t* name)
{
    return name[0] == L'.' && (name[1] == L'\0' || (name[1] == L'.' && name[2] == L'\0'));
}

/// "X:\" or "\\server\share", which no listing has as an entry.
bool IsRoot(std::string_view path)
{
    const std::string normalized = path::Normalized(path);
    return normalized.starts_with("\\\\") ? std::ranges::count(normalized, '\\') == 3 : normalized.size() <= 3;
}

FindHandle FindFirst(const std::wstring& pattern, WIN32_FIND_DATAW& found)
{
    // Without short names, and in large portions: the fastest way there is. Old network drivers refuse the portions.
    FindHandle search{FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &found, FindExSearchNameMatch, nullptr,
                                       FIND_FIRST_EX_LARGE_FETCH)};
    if (!search && GetLastError() == ERROR_INVALID_PARAMETER) {
        search = FindHandle{
            FindFirstFileExW(pattern.c_str(), FindExInfoStandard, &found, FindExSearchNameMatch, nullptr, 0)};
    }
    return search;
}

/// Why there is nothing to list: the system tells a missing folder from a file and from an empty drive only roughly.
Result<std::vector<FileEntry>> NothingListed(const std::wstring& folder, DWORD code)
{
    // A file below which something is looked for has the wrong name to some systems; the path itself was checked.
    if (code != ERROR_FILE_NOT_FOUND && code != ERROR_PATH_NOT_FOUND && code != ERROR_DIRECTORY &&
        code != ERROR_INVALID_NAME)
        return std::unexpected{Error{code}};
    const DWORD attributes = GetFileAttributesW(folder.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return std::unexpected{GetLastError() == ERROR_NOT_READY ? error::NotReady : error::PathNotFound};
    if ((attributes & attribute::Folder) == 0)
        return std::unexpected{error::InvalidFolder};
    if (code == ERROR_FILE_NOT_FOUND) // the root of an empty drive has not even "."
        return std::vector<FileEntry>{};
    return std::unexpected{Error{code}};
}

Result<FileHandle> OpenToRead(std::string_view path, DWORD access)
{
    const auto native = ToNativePath(path);
    if (!native)
        return std::unexpected{native.error()};
    FileHandle file{CreateFileW(native->c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                nullptr, OPEN_EXISTING, access, nullptr)};
    if (!file)
        return LastError();
    return file;
}

Result<std::uint64_t> SizeOf(const FileHandle& file)
{
    LARGE_INTEGER size;
    if (!GetFileSizeEx(file.Get(), &size))
        return LastError();
    return static_cast<std::uint64_t>(size.QuadPart);
}

class OpenedFile final : public ByteSource {
public:
    OpenedFile(FileHandle opened, std::uint64_t bytes) : file{std::move(opened)}, size{bytes} {}
    std::uint64_t Size() const override { return size; }
    std::size_t Read(std::uint64_t offset, std::span<char> room) override
    {
        std::size_t filled = 0;
        while (filled < room.size()) {
            OVERLAPPED place{};
            place.Offset = static_cast<DWORD>(offset + filled);
            place.OffsetHigh = static_cast<DWORD>((offset + filled) >> 32);
            const DWORD portion = static_cast<DWORD>(std::min<std::size_t>(room.size() - filled, 1u << 24));
            DWORD read{};
            if (!ReadFile(file.Get(), room.data() + filled, portion, &read, &place) || read == 0)
                break;
            filled += read;
        }
        return filled;
    }

private:
    FileHandle file;
    std::uint64_t size;
};

} // namespace

Result<std::vector<FileEntry>> Win32FileSystem::List(std::string_view folder)
{
    const auto path = ToNativePath(folder);
    if (!path)
        return std::unexpected{path.error()};
    WIN32_FIND_DATAW found;
    const FindHandle search = FindFirst(*path + (path->ends_with(L'\\') ? L"*" : L"\\*"), found);
    if (!search)
        return NothingListed(*path, GetLastError());

    std::vector<FileEntry> entries;
    do {
        if (!IsDotName(found.cFileName))
            entries.push_back(ToEntry(found));
    } while (FindNextFileW(search.Get(), &found));
    if (GetLastError() != ERROR_NO_MORE_FILES)
        return LastError();
    return entries;
}

Result<FileEntry> Win32FileSystem::Stat(std::string_view path)
{
    const auto native = ToNativePath(path);
    if (!native)
        return std::unexpected{native.error()};
    if (IsRoot(path)) {
        WIN32_FILE_ATTRIBUTE_DATA data;
        if (!GetFileAttributesExW(native->c_str(), GetFileExInfoStandard, &data))
            return std::unexpected{GetLastError() == ERROR_FILE_NOT_FOUND ? error::PathNotFound : LastError().error()};
        return FileEntry{.name = std::string{path::WithoutTrailingSeparator(path).substr(0, 2)},
                         .attributes = data.dwFileAttributes,
                         .modified = ToFileTime(data.ftLastWriteTime),
                         .created = ToFileTime(data.ftCreationTime)};
    }
    WIN32_FIND_DATAW found;
    const FindHandle search = FindFirst(*native, found);
    if (!search)
        return LastError();
    return ToEntry(found);
}

Result<> Win32FileSystem::CopyFile(std::string_view from, std::string_view to)
{
    const auto source = ToNativePath(from);
    const auto target = ToNativePath(to);
    if (!source || !target)
        return std::unexpected{error::InvalidName};
    constexpr BOOL failIfExists = TRUE;
    return Outcome(CopyFileW(source->c_str(), target->c_str(), failIfExists));
}

Result<> Win32FileSystem::Move(std::string_view from, std::string_view to)
{
    const auto source = ToNativePath(from);
    const auto target = ToNativePath(to);
    if (!source || !target)
        return std::unexpected{error::InvalidName};
    constexpr DWORD neitherReplaceNorCopy = 0;
    return Outcome(MoveFileExW(source->c_str(), target->c_str(), neitherReplaceNorCopy));
}

Result<> Win32FileSystem::DeleteFile(std::string_view path)
{
    const auto native = ToNativePath(path);
    if (!native)
        return std::unexpected{native.error()};
    return Outcome(DeleteFileW(native->c_str()));
}

Result<> Win32FileSystem::MakeWritable(std::string_view path)
{
    const auto native = ToNativePath(path);
    if (!native)
        return std::unexpected{native.error()};
    const DWORD attributes = GetFileAttributesW(native->c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return LastError();
    const DWORD without = attributes & ~FILE_ATTRIBUTE_READONLY;
    return Outcome(SetFileAttributesW(native->c_str(), without != 0 ? without : FILE_ATTRIBUTE_NORMAL));
}

Result<> Win32FileSystem::RemoveFolder(std::string_view path)
{
    const auto native = ToNativePath(path);
    if (!native)
        return std::unexpected{native.error()};
    return Outcome(RemoveDirectoryW(native->c_str()));
}

Result<> Win32FileSystem::CreateFolder(std::string_view path)
{
    const auto native = ToNativePath(path);
    if (!native)
        return std::unexpected{native.error()};
    return Outcome(CreateDirectoryW(native->c_str(), nullptr));
}

Result<std::string> Win32FileSystem::Read(std::string_view path, std::uint64_t limit)
{
    const auto file = OpenToRead(path, FILE_FLAG_SEQUENTIAL_SCAN);
    if (!file)
        return std::unexpected{file.error()};
    const auto size = SizeOf(*file);
    if (!size)
        return std::unexpected{size.error()};
    if (*size > limit)
        return std::unexpected{error::FileTooLarge};

    std::string contents;
    // One byte more than is expected shows a file that has grown since.
    std::size_t room = static_cast<std::size_t>(*size) + 1;
    for (;;) {
        const std::size_t filled = contents.size();
        contents.resize(filled + room);
        DWORD read{};
        const DWORD portion = static_cast<DWORD>(std::min<std::size_t>(room, 1u << 24));
        if (!ReadFile(file->Get(), contents.data() + filled, portion, &read, nullptr))
            return LastError();
        contents.resize(filled + read);
        if (contents.size() > limit)
            return std::unexpected{error::FileTooLarge};
        if (read == 0)
            return contents;
        room = room > read ? room - read : 1u << 16;
    }
}

Result<std::unique_ptr<ByteSource>> Win32FileSystem::Open(std::string_view path)
{
    auto file = OpenToRead(path, FILE_FLAG_RANDOM_ACCESS);
    if (!file)
        return std::unexpected{file.error()};
    const auto size = SizeOf(*file);
    if (!size)
        return std::unexpected{size.error()};
    return std::make_unique<OpenedFile>(std::move(*file), *size);
}

Result<> Win32FileSystem::Write(std::string_view path, std::string_view bytes)
{
    const auto native = ToNativePath(path);
    if (!native)
        return std::unexpected{native.error()};
    FileHandle file{
        CreateFileW(native->c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr)};
    if (!file)
        return LastError();
    Result<> outcome;
    while (outcome && !bytes.empty()) {
        DWORD written{};
        const DWORD portion = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1u << 24));
        outcome = Outcome(::WriteFile(file.Get(), bytes.data(), portion, &written, nullptr));
        if (outcome && written == 0)
            outcome = std::unexpected{error::DiskFull};
        bytes.remove_prefix(written);
    }
    if (outcome) // a file that others count on is on the disk before its place is given to it
        outcome = Outcome(FlushFileBuffers(file.Get()));
    file.Reset();
    if (!outcome)
        (void)DeleteFileW(native->c_str());
    return outcome;
}

Result<> Win32FileSystem::Replace(std::string_view from, std::string_view to)
{
    const auto source = ToNativePath(from);
    const auto target = ToNativePath(to);
    if (!source || !target)
        return std::unexpected{error::InvalidName};
    const DWORD attributes = GetFileAttributesW(source->c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & attribute::Folder) != 0)
        return std::unexpected{error::AccessDenied};
    // Systems differ in what they say of a folder or a protected file that is in the way.
    const DWORD old = GetFileAttributesW(target->c_str());
    if (old != INVALID_FILE_ATTRIBUTES && (old & (attribute::Folder | attribute::ReadOnly)) != 0)
        return std::unexpected{error::AccessDenied};
    return Outcome(MoveFileExW(source->c_str(), target->c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
}

} // namespace platform::win32
