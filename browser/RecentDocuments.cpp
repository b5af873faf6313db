#include "browser/RecentDocuments.h"

#include "app/base/RegistryAccess.h"
#include "app/base/StringId.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>
#include <optional>
#include <ranges>

namespace browser {
namespace {

namespace path = platform::path;
using platform::LocalTime;

constexpr std::string_view Section = "Browser\\History List";
constexpr std::string_view PeriodSetting = "History List Time Period";
constexpr int DefaultMonths = 12;

std::string Padded(int number, std::size_t digits)
{
    const std::string text = std::to_string(number);
    return std::string(digits - std::min(digits, text.size()), '0') + text;
}

std::string DayText(const LocalTime& day)
{
    return Padded(day.year, 4) + "-" + Padded(day.month, 2) + "-" + Padded(day.day, 2);
}

std::optional<LocalTime> DayOf(const std::string& text)
{
    const auto parts = platform::text::Split(text, '-');
    if (parts.size() != 3)
        return std::nullopt;
    LocalTime day;
    day.year = platform::text::ToInt(parts[0], 0, 0, 9999);
    day.month = platform::text::ToInt(parts[1], 0, 0, 99);
    day.day = platform::text::ToInt(parts[2], 0, 0, 99);
    const bool isDay = day.year > 1600 && day.month >= 1 && day.month <= 12 && day.day >= 1 && day.day <= 31;
    return isDay ? std::optional{day} : std::nullopt;
}

} // namespace

bool IsTooOld(const LocalTime& document, const LocalTime& today, int months)
{
    if (document.year - today.year > 1)
        return true;
    const int difference = (document.year - today.year) * 12 + document.month - today.month;
    if (difference > -months)
        return difference == 0 && document.day > today.day;
    return difference < -months || document.day < today.day;
}

void RecentDocuments::Add(const std::string& file)
{
    const LocalTime now = clock.ToLocal(clock.Now());
    if (!settings.Save(Section, file, DayText(now)))
        messages.Stop(app::str::SetValueFailed);
}

void RecentDocuments::GetHistoryListFromRegistry()
{
    documents.clear();
    for (const bool isOwn : {true, false}) {
        const auto [hive, key] = KeyOf(isOwn);
        Read(hive, key, isOwn);
    }
    std::ranges::stable_sort(documents, std::ranges::greater{}, &Document::recorded);
}

void RecentDocuments::Read(platform::Hive hive, const std::string& key, bool isOwn)
{
    const auto names = registry.ValueNames(hive, key);
    if (!names)
        return;
    for (const std::string& name : *names) {
        if (!path::IsAbsolute(name) ||
            std::ranges::any_of(documents, [&](const Document& known) { return path::Same(known.path, name); }))
            continue;
        const auto value = registry.Query(hive, key, name);
        const bool isDay = value && value->type == platform::ValueType::String && DayOf(value->data);
        documents.push_back({name, isDay ? value->data : std::string{}, isOwn});
    }
}

std::pair<platform::Hive, std::string> RecentDocuments::KeyOf(bool isOwn) const
{
    if (!isOwn)
        if (auto place = app::RegistryAccess::SplitPath(strings.LoadString(app::str::RecentDocumentsKey)))
            return std::move(*place);
    return {platform::Hive::CurrentUser, settings.KeyOf(Section)};
}

void RecentDocuments::ValidateFilesFromHistoryList()
{
    std::erase_if(documents, [this](const Document& document) { return IsGone(document.path) && Delete(document); });
}

bool RecentDocuments::IsGone(const std::string& file) const
{
    const auto entry = files.Stat(file);
    if (entry || !platform::IsNotThere(entry.error()))
        return false;
    // The system tells of a missing drive in the same words as of a missing file.
    const bool isDrive = file.size() > 2 && file[1] == ':';
    return isDrive && files.List(file.substr(0, 2) + "\\").has_value();
}

void RecentDocuments::ValidateHistoryTimePeriod()
{
    const LocalTime today = clock.ToLocal(clock.Now());
    const int months = TimePeriod();
    std::erase_if(documents, [&](const Document& document) {
        const auto entry = files.Stat(document.path);
        if (!entry || !IsTooOld(clock.ToLocal(entry->modified), today, months))
            return false;
        const auto recorded = DayOf(document.recorded);
        return (!recorded || IsTooOld(*recorded, today, months)) && Delete(document);
    });
}

bool RecentDocuments::Delete(const Document& document)
{
    const auto [hive, key] = KeyOf(document.isOwn);
    const auto deleted = registry.DeleteValue(hive, key, document.path);
    return deleted || deleted.error() == platform::error::FileNotFound;
}

bool RecentDocuments::Remove(const std::string& file)
{
    const auto document = std::ranges::find(documents, file, &Document::path);
    if (document == documents.end())
        return true;
    if (!Delete(*document)) {
        messages.Stop(app::str::DeleteValueFailed);
        return false;
    }
    documents.erase(document);
    return true;
}

bool RecentDocuments::Clear()
{
    while (!documents.empty())
        if (!Remove(std::string{documents.back().path}))
            return false;
    return true;
}

int RecentDocuments::TimePeriod() const
{
    return settings.Number("Options", PeriodSetting, DefaultMonths, LeastMonths, MostMonths);
}

bool RecentDocuments::SaveTimePeriod(int months)
{
    if (settings.SaveNumber("Options", PeriodSetting, months))
        return true;
    messages.Stop(app::str::SetValueFailed);
    return false;
}

} // namespace browser
