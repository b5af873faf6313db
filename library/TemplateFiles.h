#pragma once

#include "platform/FileSystem.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace library {

/// One kind of template: everything that the program says and shows of it.
struct TemplateKind {
    std::string_view ending;     ///< that makes a file a template
    std::string_view image;      ///< of its files, its tab and its menu entry
    std::string_view tab;        ///< key of its tab; "" for a kind that only the tab for all shows
    std::string_view tabSetting; ///< whether the tab is shown: key in section "Browser"
    std::string_view tabCommand; ///< the menu entry that hides the tab and shows it again
    // String numbers.
    std::uint16_t notInstalled{}; ///< told when no program opens it
    int tabCaption{};
    int tabCommandCaption{}, tabToolTip{};
    int noneInFolder{}; ///< shown instead of an empty list; 0 for the general text
};

/// In the order in which a list has them. The position chooses icons and launch rules.
// clang-format off
inline constexpr std::array<TemplateKind, 5> TemplateKinds{{
    {".swt", "word", "Word", "ShowWordTemplates", "mnuSettingsWord", 567, 184, 122, 149, 166},
    {".ccw", "excel", "Excel", "ShowXLTemplates", "mnuSettingsXL", 568, 185, 124, 150, 167},
    {".prt", "ppt", "PPT", "ShowPPTTemplates", "mnuSettingsPPT", 569, 186, 123, 151, 168},
    {".pdf", "pdf", {}, {}, {}, 570},
    {".mst", "photo", "Photo", "ShowPhotoTemplates", "mnuSettingsPhoto", 569, 161, 125, 152},
}};
// clang-format on

/// A sub-folder of this name holds the pictures of a folder's templates; it is never a category.
inline constexpr std::string_view PreviewsFolder = "Previews";
/// The library's picture for a template that has none.
inline constexpr std::string_view NoPictureFile = "NF.jpg";

enum TemplateType : std::size_t { WordTemplate, SpreadsheetTemplate, PresentationTemplate, PdfTemplate, PhotoTemplate };

/// The endings alone, in the same order.
inline constexpr auto TemplateExtensions = [] {
    std::array<std::string_view, TemplateKinds.size()> endings;
    for (std::size_t i = 0; i < endings.size(); ++i)
        endings[i] = TemplateKinds[i].ending;
    return endings;
}();

/// Position of the name's ending among the kinds of templates, letter case ignored. The real last four characters
/// count, so that a short name on the disk never lets "x.swtx" through.
std::optional<std::size_t> TemplateTypeOf(std::string_view name);

/// Neither hidden nor a system entry: what a plain directory listing shows, and what the user put there.
bool IsShown(const platform::FileEntry& entry);

/// Neither a folder nor hidden nor a system file.
bool IsPlainFile(const platform::FileEntry& entry);

} // namespace library
