#pragma once

#include "browser/SharedText.h"
#include "platform/Clock.h"
#include "platform/Locale.h"
#include "ui/ListView.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace browser {

/// One template as the list shows it.
struct TemplateRow {
    std::string text;    ///< base name
    std::string file;    ///< file name with its ending
    SharedText folder;   ///< full path of its folder
    std::size_t type{};  ///< position among the template extensions
    SharedText inFolder; ///< what the "In Folder" column shows
    bool hasDetails{};   ///< size and modified are known
    std::uint64_t size{};
    platform::FileTime modified{};
    std::shared_ptr<const ui::Thumbnail> thumbnail; ///< only in the thumbnail view
};
using TemplateRows = std::vector<TemplateRow>;

/// What the columns beside the name show.
void SetListItemDetails(TemplateRow& row, SharedText inFolder, std::uint64_t size, platform::FileTime modified);

std::string FullPath(const TemplateRow& row);
/// Bytes in whole kilobytes, cut: 5,000 bytes are "4KB".
std::string SizeText(std::uint64_t bytes);
/// Short date, a blank, medium time, on the user's clock.
std::string ModifiedText(platform::Clock& clock, platform::Locale& locale, platform::FileTime time);

} // namespace browser
