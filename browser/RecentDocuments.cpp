#include "browser/RecentDocuments.h"

#include "app/base/RegistryAccess.h"
#include "app/base/StringId.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>
#include <map>
#include <ranges>
#include <set>
#include <tuple>

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

constexpr std::size_t DayLength = 10; ///< of "2004-03-17"

/// Sorts as the moments do.
std::string MomentText(const LocalTime& moment)
{
    return Padded(moment.year, 4) + "-" + Padded(moment.month, 2) + "-" + Padded(moment.day, 2) + " " +
           Padded(moment.hour, 2) + ":" + Padded(moment.minute, 2) + ":" + Padded(moment.second, 2);
}

/// The day of a moment; what stands behind it is for sorting alone.
std::optional<LocalTime> DayOf(const std::string& text)
{
    const auto parts = platform::text::Split(text.substr(0, DayLength), '-');
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
    if (!settings.Save(Section, file, MomentText(clock.ToLocal(clock.Now()))))
        messages.Stop(app::str::SetValueFailed);
}

void RecentDocuments::GetHistoryListFromRegistry(const std::function<void()>& seen)
{
    documents.clear();
    Places places;
    Read(platform::Hive::CurrentUser, settings.KeyOf(Section), places);
    if (const auto place = app::RegistryAccess::SplitPath(strings.LoadString(app::str::RecentDocumentsKey)))
        Read(place->first, place->second, places);
    std::ranges::stable_sort(documents, std::ranges::greater{}, &Document::recorded);
    LookAtFiles(seen);
}

void RecentDocuments::Read(platform::Hive hive, const std::string& key, Places& places)
{
    const auto names = registry.ValueNames(hive, key);
    if (!names)
        return;
    for (const std::string& name : *names) {
        if (!path::IsAbsolute(name))
            continue;
        const auto value = registry.Query(hive, key, name);
        const bool isDay = value && value->type == platform::ValueType::String && DayOf(value->data);
        const std::string recorded = isDay ? value->data : std::string{};
        const auto [place, isNew] = places.try_emplace(path::Key(name), documents.size());
        if (isNew)
            documents.push_back({.path = name});
        Document& document = documents[place->second];
        document.recorded = std::max(document.recorded, recorded);
        document.stored.push_back({hive, key, name});
    }
}

void RecentDocuments::LookAtFiles(const std::function<void()>& seen)
{
    std::map<std::string, std::vector<std::string>> byServer; // and by drive: one that is away holds up no other
    for (const Document& document : documents) {
        const std::string root = platform::text::Folded(path::Root(document.path));
        byServer[root.substr(0, root.find('\\', 2))].push_back(document.path);
    }
    lookUps.clear();
    auto patience = app::PatientFiles::Moment;
    for (auto& [server, paths] : byServer) {
        const auto isLater = std::make_shared<bool>();
        auto lookUp =
            files.Tell([paths = std::move(paths)](
                           platform::FileSystem& disk) -> platform::Result<Sights> { return LookAt(disk, paths); },
                       [this, seen, isLater](const platform::Result<Sights>& found) {
                           const Sights sights = found.value_or(Sights{});
                           for (Document& document : documents)
                               if (const auto sight = sights.find(document.path); sight != sights.end())
                                   std::tie(document.modified, document.isGone) = sight->second;
                           if (*isLater)
                               seen();
                       },
                       patience);
        *isLater = true;
        if (lookUp) {
            lookUps.push_back(std::move(lookUp));
            patience = {};
        }
    }
}

RecentDocuments::Sights RecentDocuments::LookAt(platform::FileSystem& disk, const std::vector<std::string>& paths)
{
    Sights found;
    std::set<std::string> there; // drives and shares
    for (const std::string& file : paths) {
        const std::string root = platform::text::Folded(path::Root(file));
        const auto entry = disk.Stat(file);
        if (entry) {
            found.try_emplace(file, entry->modified, false);
            there.insert(root);
        } else if (entry.error() == platform::error::AccessDenied || entry.error() == platform::error::InvalidName) {
            continue; // an answer
        } else if (platform::IsNotThere(entry.error()) &&
                   (there.contains(root) || disk.Stat(root))) { // a missing drive is told of in the same words
            found.try_emplace(file, std::nullopt, true);
            there.insert(root);
        } else {
            break;
        }
    }
    return found;
}

void RecentDocuments::ValidateFilesFromHistoryList()
{
    std::erase_if(documents, [this](const Document& document) { return document.isGone && Delete(document); });
}

void RecentDocuments::ValidateHistoryTimePeriod()
{
    const LocalTime today = clock.ToLocal(clock.Now());
    const int months = TimePeriod();
    std::erase_if(documents, [&](const Document& document) {
        return document.modified && IsTooOld(clock.ToLocal(*document.modified), today, months) &&
               WasRecordedTooLongAgo(document, true) && Delete(document);
    });
}

void RecentDocuments::ValidateHistoryTimePeriodNew()
{
    std::erase_if(documents, [&](const Document& document) {
        return !document.modified && WasRecordedTooLongAgo(document, false) && Delete(document);
    });
}

bool RecentDocuments::WasRecordedTooLongAgo(const Document& document, bool unknown) const
{
    const auto day = DayOf(document.recorded);
    return day ? IsTooOld(*day, clock.ToLocal(clock.Now()), TimePeriod()) : unknown;
}

bool RecentDocuments::Delete(const Document& document)
{
    return std::ranges::all_of(document.stored, [this](const Stored& value) {
        const auto deleted = registry.DeleteValue(value.hive, value.key, value.name);
        return deleted || deleted.error() == platform::error::FileNotFound;
    });
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
