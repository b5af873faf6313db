#include "browser/RecentFiles.h"

#include "app/base/StringId.h"
#include "library/CategoryPath.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>

namespace browser {
namespace {

namespace path = platform::path;

constexpr std::string_view Section = "Browser\\Recent Files";

std::string ValueName(std::size_t number)
{
    return "File " + std::to_string(number);
}

} // namespace

void RecentFiles::GetRecentFilesFromRegistry()
{
    files.clear();
    for (std::size_t number = 1; number <= Limit; ++number) {
        std::string stored = settings.Text(Section, ValueName(number));
        if (path::IsAbsolute(stored) &&
            std::ranges::none_of(files, [&](const std::string& file) { return path::Same(file, stored); }))
            files.push_back(std::move(stored));
    }
}

void RecentFiles::AddRecentFileToList(const std::string& file)
{
    if (platform::text::EqualIgnoringCase(path::LastFour(file), ".doc"))
        return;
    std::erase_if(files, [&](const std::string& entry) { return path::Same(entry, file); });
    if (files.size() >= Limit)
        files.resize(Limit - 1);
    files.insert(files.begin(), file);
    SaveRecentFilesToRegistry();
}

void RecentFiles::SaveRecentFilesToRegistry()
{
    // From the last to the first: a new file moves the others down, so that a save that ends in the middle has
    // overwritten none that does not stand further down already.
    const std::size_t count = files.size();
    for (std::size_t number = count; number >= 1; --number) {
        // A list of eight is stored in seven values: the last entry takes the place of the one before it. Readers of
        // the store count on that.
        if (count == 8 && number == 7)
            continue;
        const std::size_t place = count == 8 && number == 8 ? 7 : number;
        if (!settings.Save(Section, ValueName(place), files[number - 1])) {
            messages.Stop(app::str::SetValueFailed);
            return;
        }
    }
}

void RecentFiles::FolderRenamed(const std::string& from, const std::string& to)
{
    bool isChanged = false;
    std::vector<std::string> renamed;
    for (const std::string& file : files) {
        auto moved = library::MovedPath(file, from, to);
        isChanged = isChanged || moved;
        std::string now = std::move(moved).value_or(file);
        // The list may know the file under its new name from before.
        if (std::ranges::none_of(renamed, [&](const std::string& known) { return path::Same(known, now); }))
            renamed.push_back(std::move(now));
    }
    files = std::move(renamed);
    if (isChanged)
        SaveRecentFilesToRegistry();
}

std::string RecentFiles::MenuText(std::size_t number) const
{
    if (number < 1 || number > files.size())
        return {};
    // A single "&" would underline the letter after it.
    return std::to_string(number) + " " +
           platform::text::Replaced(std::string{path::Name(files[number - 1])}, "&", "&&");
}

} // namespace browser
