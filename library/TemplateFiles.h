#pragma once

#include "platform/FileSystem.h"

#include <array>
#include <optional>
#include <string_view>

namespace library {

/// The endings that make a file a template. The position chooses icons and launch rules.
inline constexpr std::array<std::string_view, 5> TemplateExtensions{".swt", ".ccw", ".prt", ".pdf", ".mst"};

/// A sub-folder of this name holds the pictures of a folder's templates; it is never a category.
inline constexpr std::string_view PreviewsFolder = "Previews";

enum TemplateType : std::size_t { WordTemplate, SpreadsheetTemplate, PresentationTemplate, PdfTemplate, PhotoTemplate };

/// Position of the name's ending among the template extensions, letter case ignored. The real last four characters
/// count, so that a short name on the disk never lets "x.swtx" through.
std::optional<std::size_t> TemplateTypeOf(std::string_view name);

/// Neither hidden nor a system entry: what a plain directory listing shows, and what the user put there.
bool IsShown(const platform::FileEntry& entry);

/// Neither a folder nor hidden nor a system file.
bool IsPlainFile(const platform::FileEntry& entry);

} // namespace library
