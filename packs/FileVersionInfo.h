#pragma once

#include "app/base/Messages.h"
#include "packs/VersionResource.h"
#include "platform/FileSystem.h"

#include <expected>
#include <string>

namespace packs {

/// The version of a file, as it stands in its version resource.
class FileVersionInfo {
public:
    using Reading = std::expected<std::string, VersionFailure>;

    FileVersionInfo(platform::FileSystem& files, app::Messages& messages) : files{files}, messages{messages} {}

    /// Looks at the file, which may lie on a share: for a job. Tells nothing.
    static Reading Read(platform::FileSystem& files, const std::string& file);
    /// "" for a version that could not be read, which is told.
    std::string Told(const Reading& reading);
    /// Both at once.
    std::string GetProductVersion(const std::string& file) { return Told(Read(files, file)); }

private:
    platform::FileSystem& files;
    app::Messages& messages;
};

} // namespace packs
