#include "packs/PackFolders.h"

#include "library/TemplateFiles.h"
#include "platform/FileName.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>

namespace packs {
namespace {

namespace text = platform::text;

constexpr std::size_t LongestName = 255; ///< characters: no file system in use has longer ones
constexpr std::size_t LongestPath = 1000;

/// Whether the text names an entry of a folder, and no other one than it says.
bool IsPlainName(const std::string& name)
{
    namespace file_name = platform::file_name;
    return !name.empty() && text::Length(name) <= LongestName && !file_name::HasForbiddenCharacter(name) &&
           !file_name::HasControlCharacter(name) && !file_name::IsReserved(name);
}

bool IsFolderName(const std::string& name)
{
    return IsPlainName(name) && !text::EqualIgnoringCase(name, library::PreviewsFolder); // goes with its folder
}

} // namespace

std::vector<PackFolder> ParsePackFolders(std::string_view record)
{
    std::vector<PackFolder> folders;
    for (const std::string& line : text::Split(text::Replaced(std::string{record}, "\r", "\n"), '\n')) {
        std::vector<std::string> fields = text::Split(line, '|');
        for (std::string& field : fields)
            field = text::Trimmed(field);
        const std::string path{platform::path::WithoutTrailingSeparator(fields.front())};
        if (text::Length(path) > LongestPath || !std::ranges::all_of(text::Split(path, '\\'), IsFolderName))
            continue;
        PackFolder& folder = folders.emplace_back(path);
        if (fields.size() == 1)
            continue;
        fields.erase(fields.begin());
        std::erase_if(fields, [](const std::string& name) { return !IsPlainName(name); });
        folder.files = std::move(fields);
    }
    return folders;
}

} // namespace packs
