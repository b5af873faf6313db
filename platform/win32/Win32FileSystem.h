#pragma once

#include "platform/FileSystem.h"

namespace platform::win32 {

class Win32FileSystem final : public FileSystem {
public:
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
};

} // namespace platform::win32
