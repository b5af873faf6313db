#include "browser/TemplateRow.h"

#include "platform/Path.h"

namespace browser {

void SetListItemDetails(TemplateRow& row, SharedText inFolder, std::uint64_t size, platform::FileTime modified)
{
    row.inFolder = std::move(inFolder);
    row.hasDetails = true;
    row.size = size;
    row.modified = modified;
}

std::string FullPath(const TemplateRow& row)
{
    return platform::path::Join(row.folder, row.file);
}

std::string SizeText(std::uint64_t bytes)
{
    return std::to_string(bytes / 1024) + "KB";
}

std::string ModifiedText(platform::Clock& clock, platform::Locale& locale, platform::FileTime time)
{
    const platform::LocalTime local = clock.ToLocal(time);
    return locale.ShortDate(local) + " " + locale.MediumTime(local);
}

} // namespace browser
