#include "profiles/ProfileList.h"

#include "platform/Text.h"

#include <algorithm>

namespace profiles {

namespace {

std::string Comparable(std::string_view name)
{
    return platform::text::Folded(platform::text::Trimmed(name));
}

} // namespace

bool ProfileList::FillProfileList(const std::string& blankEntry)
{
    const bool read = profiles.ListProfiles();
    names = profiles.Names();
    std::vector<std::string> shown;
    if (!blankEntry.empty())
        shown.push_back(blankEntry);
    first = static_cast<int>(shown.size());
    shown.insert(shown.end(), names.begin(), names.end());
    box.SetItems(std::move(shown));
    ShowDefaultMark();
    return read;
}

void ProfileList::ShowDefaultMark()
{
    const std::string defaultName = Comparable(profiles.GetDefaultProfile());
    for (std::size_t i = 0; i < names.size(); ++i) {
        const bool isDefault = Comparable(names[i]) == defaultName;
        box.SetItem(static_cast<std::size_t>(first) + i, names[i] + std::string{isDefault ? DefaultSuffix : ""});
    }
}

std::string ProfileList::At(int row) const
{
    const int index = row - first;
    return index >= 0 && index < static_cast<int>(names.size()) ? names[static_cast<std::size_t>(index)]
                                                                : std::string{};
}

bool ProfileList::Select(std::string_view name)
{
    const auto found = std::ranges::find(names, Comparable(name), Comparable);
    const bool isThere = found != names.end();
    box.Select(isThere ? first + static_cast<int>(found - names.begin()) : -1);
    return isThere;
}

} // namespace profiles
