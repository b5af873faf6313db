#include "browser/SpreadsheetFolder.h"

#include "library/TemplateFiles.h"
#include "platform/Path.h"
#include "platform/Text.h"

namespace browser {

using platform::path::Join;

void SpreadsheetFolder::GetQuenbyFileOption(std::string_view keyPath, std::string_view valueName)
{
    workingDirectory = registry.QueryTextByPath(keyPath, valueName);
    RequireFolder();
}

void SpreadsheetFolder::RequireFolder()
{
    if (!workingDirectory.empty())
        if (const auto entry = files.Stat(workingDirectory); entry && entry->IsFolder())
            return;
    workingDirectory = shell.FolderPath(platform::KnownFolder::Personal).value_or(std::string{});
}

platform::Result<std::string> SpreadsheetFolder::SaveFile(std::string_view fileName, std::string_view folder)
{
    if (!platform::text::EndsWithIgnoringCase(fileName, library::TemplateExtensions[library::SpreadsheetTemplate]))
        return std::string{};
    const app::PatientFiles::Operation whole{files};
    RequireFolder();
    const std::string_view baseName = platform::path::WithoutLastFour(fileName);
    // A name that was free a moment ago can be taken by now; the copy never replaces, so ask for the next one.
    for (int attempt = 0;; ++attempt) {
        std::string copy = Join(workingDirectory, FreeName(baseName));
        const auto copied = files.CopyFile(Join(folder, fileName), copy);
        if (copied) {
            if (const auto writable = files.MakeWritable(copy); !writable) {
                (void)files.DeleteFile(copy);
                return std::unexpected{writable.error()};
            }
            return copy;
        }
        if (copied.error() != platform::error::FileExists || attempt == 9)
            return std::unexpected{copied.error()};
    }
}

std::string SpreadsheetFolder::FreeName(std::string_view baseName)
{
    const auto isThere = [this](const std::string& name) {
        return files.Stat(Join(workingDirectory, name)).has_value();
    };
    const std::string ending{library::TemplateExtensions[library::SpreadsheetTemplate]};
    std::string name = std::string{baseName} + ending;
    for (int n = 1; isThere(name); ++n)
        name = std::string{baseName} + std::to_string(n) + ending;
    return name;
}

} // namespace browser
