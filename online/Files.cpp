#include "online/Files.h"

#include "online/PageText.h"
#include "platform/Path.h"

namespace online {
namespace {

using platform::Result;

Result<> MakeFolder(platform::FileSystem& files, const std::string& folder)
{
    const auto made = files.CreateFolder(folder);
    if (made || made.error() == platform::error::AlreadyExists)
        return {};
    const std::string parent = platform::path::Parent(folder);
    if (made.error() != platform::error::PathNotFound || parent.size() <= platform::path::Root(folder).size())
        return made;
    if (const auto above = MakeFolder(files, parent); !above)
        return above;
    return files.CreateFolder(folder);
}

} // namespace

Result<std::string> GetTempFolderPath(platform::Shell& shell, platform::FileSystem& files)
{
    const auto temporary = shell.FolderPath(platform::KnownFolder::Temporary);
    if (!temporary)
        return temporary;
    std::string folder = platform::path::Join(*temporary, "TSBrowser");
    if (const auto made = MakeFolder(files, folder); !made)
        return std::unexpected{made.error()};
    const auto entry = files.Stat(folder);
    if (!entry)
        return std::unexpected{entry.error()};
    if (!entry->IsFolder() || entry->IsLink())
        return std::unexpected{platform::error::AccessDenied};
    return folder;
}

Result<> SaveFile(platform::FileSystem& files, std::string_view path, std::string_view bytes)
{
    const auto written = files.Write(path, bytes);
    if (written || written.error() != platform::error::FileExists)
        return written;
    if (const auto removed = files.DeleteFile(path); !removed)
        return removed;
    return files.Write(path, bytes);
}

std::string ReadHTML(platform::FileSystem& files, std::string_view path)
{
    return files.Read(path, PageText::Longest).value_or(std::string{});
}

} // namespace online
