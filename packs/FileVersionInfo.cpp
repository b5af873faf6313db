#include "packs/FileVersionInfo.h"

#include "packs/StringId.h"

namespace packs {

FileVersionInfo::Reading FileVersionInfo::Read(platform::FileSystem& files, const std::string& file)
{
    const auto source = files.Open(file);
    if (!source)
        return std::unexpected{VersionFailure::NoInformation};
    return ProductVersionOf(**source);
}

std::string FileVersionInfo::Told(const Reading& reading)
{
    if (reading)
        return *reading;
    switch (reading.error()) {
    case VersionFailure::NoInformation:
        messages.Plain(str::NoVersionInfo);
        break;
    case VersionFailure::Unreadable:
        messages.Plain(str::VersionInfoUnreadable);
        break;
    case VersionFailure::NoValue:
        messages.Plain(str::VersionValueMissing);
        break;
    }
    return {};
}

} // namespace packs
