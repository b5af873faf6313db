#include "search/Criteria.h"

#include "app/base/Mnemonics.h"
#include "app/base/StringId.h"
#include "app/base/StringTable.h"
#include "documents/Dates.h"
#include "platform/Text.h"
#include "search/Words.h"

#include <algorithm>
#include <utility>

namespace search {
namespace {

namespace text = platform::text;

constexpr std::string_view Section = "Browser\\Find";
constexpr std::int64_t StepsADay = 864'000'000'000; ///< file times count 100 nanoseconds

/// The numbers in a text; one that is far too long is 0.
std::vector<int> NumbersIn(std::string_view text)
{
    std::vector<int> numbers;
    bool inNumber = false;
    for (const char c : text) {
        const bool isDigit = c >= '0' && c <= '9';
        if (isDigit && !inNumber)
            numbers.push_back(0);
        if (isDigit)
            numbers.back() = numbers.back() > 9999 ? 0 : numbers.back() * 10 + (c - '0');
        inNumber = isDigit;
    }
    return numbers;
}

/// Those of a day as the user writes it; a month that is written by its name counts as its number.
std::vector<int> NumbersIn(platform::Locale& locale, const platform::LocalTime& day)
{
    constexpr std::string_view digits = "0123456789";
    std::string shown = locale.ShortDate(day);
    shown.erase(shown.find_last_of(digits) + 1); // a word behind the year is none of a month
    std::vector<int> numbers = NumbersIn(shown);
    if (numbers.size() == 2) {
        const auto isOfName = [](unsigned char c) { return c >= 'A'; };
        const auto name = std::find_if(shown.rbegin(), shown.rend(), isOfName).base();
        const auto before = NumbersIn({shown.begin(), name}).size();
        numbers.insert(numbers.begin() + static_cast<std::ptrdiff_t>(before), day.month);
    }
    return numbers;
}

/// In days since 1601-01-01; nothing for what is no day.
std::optional<std::int64_t> DayOf(std::string_view value, platform::Locale& locale)
{
    const std::vector<int> numbers = NumbersIn(value);
    if (numbers.size() != 3)
        return std::nullopt;
    platform::LocalTime day{numbers[0], numbers[1], numbers[2], 0, 0, 0};
    if (numbers[0] <= 31) {
        // The user's order shows in how a day is written whose three numbers are different.
        constexpr platform::LocalTime pattern{2033, 11, 22, 0, 0, 0};
        const std::vector<int> written = NumbersIn(locale, pattern);
        day = {0, 1, 1, 0, 0, 0};
        for (std::size_t i = 0; i < written.size() && i < numbers.size(); ++i)
            (written[i] == pattern.month ? day.month : written[i] == pattern.day ? day.day : day.year) = numbers[i];
    }
    constexpr int century = 2000, lastOfCentury = 30; // two digits: as the system's own calendars take them
    if (day.year < 100)
        day.year += day.year < lastOfCentury ? century : century - 100;
    const auto time = documents::ToFileTime(day);
    return time ? std::optional{*time / StepsADay} : std::nullopt;
}

std::int64_t DayOf(const documents::Date& date, platform::Clock& clock)
{
    if (date.isLocal)
        return date.time / StepsADay;
    const platform::LocalTime local = clock.ToLocal(date.time);
    return documents::ToFileTime({local.year, local.month, local.day, 0, 0, 0}).value_or(date.time) / StepsADay;
}

std::string Own(std::uint16_t number)
{
    return Plain(std::string{app::StringTable::Own(number)});
}

} // namespace

std::string Plain(std::string label)
{
    label = app::WithoutMnemonic(std::move(label));
    std::erase(label, ':');
    return label;
}

std::vector<Condition> ConditionsOf(const Property& property)
{
    using enum Condition;
    return property.date != nullptr
               ? std::vector{Equals, IsBefore, IsAfter}
               : std::vector{BeginsWith, EndsWith, Contains, IncludesWords, IncludesPhrases, Equals};
}

std::optional<Criteria> Criteria::Of(const Property& property, Condition condition, std::string_view value,
                                     platform::Locale& locale)
{
    Criteria criteria;
    criteria.property = &property;
    criteria.condition = condition;
    criteria.value = text::Trimmed(Folded(locale, value));
    criteria.words = WordsOf(criteria.value);
    if (criteria.value.empty())
        return std::nullopt;
    if (property.date != nullptr) {
        const auto day = DayOf(criteria.value, locale);
        if (!day)
            return std::nullopt;
        criteria.day = *day;
    }
    return criteria;
}

bool Criteria::Fits(const documents::Facts& facts, platform::Clock& clock, const platform::Locale& locale) const
{
    if (property->date == nullptr)
        return FitsText(Folded(locale, facts.*property->text));
    const auto& date = facts.*property->date;
    if (!date)
        return false;
    const std::int64_t its = DayOf(*date, clock);
    return condition == Condition::IsBefore ? its < day : condition == Condition::IsAfter ? its > day : its == day;
}

bool Criteria::FitsText(const std::string& folded) const
{
    switch (condition) {
    case Condition::BeginsWith:
        return folded.starts_with(value);
    case Condition::EndsWith:
        return folded.ends_with(value);
    case Condition::Contains:
        return folded.find(value) != std::string::npos;
    case Condition::IncludesWords:
        return !words.empty() &&
               std::ranges::all_of(words, [&](const std::string& word) { return HasWhole(folded, word); });
    case Condition::IncludesPhrases:
        return HasWhole(folded, value);
    default:
        return folded == value;
    }
}

bool Criteria::HasWhole(std::string_view folded, std::string_view wanted) const
{
    for (std::size_t at = folded.find(wanted); at != std::string_view::npos; at = folded.find(wanted, at + 1))
        if (StartsWord(folded, at) && EndsWord(folded, at + wanted.size()))
            return true;
    return false;
}

Remembered ReadRemembered(const app::Settings& settings)
{
    Remembered remembered;
    remembered.isSelectedCategory = settings.Text(Section, "FolderSelected") == Own(app::str::SearchSelected);
    const std::string name = settings.Text(Section, "Property");
    for (std::size_t i = 0; i < Properties.size(); ++i)
        if (Own(Properties[i].name) == name)
            remembered.property = i;
    const std::vector<Condition> conditions = ConditionsOf(Properties[remembered.property]);
    remembered.condition = conditions.front();
    for (const Condition condition : conditions)
        if (Own(std::to_underlying(condition)) == settings.Text(Section, "Condition"))
            remembered.condition = condition;
    remembered.value = settings.Text(Section, "Value");
    remembered.word = settings.Flag(Section, "MSOApplicationWord", true);
    remembered.excel = settings.Flag(Section, "MSOApplicationExcel", true);
    remembered.powerPoint = settings.Flag(Section, "MSOApplicationPPT", true);
    return remembered;
}

bool Save(const Remembered& remembered, app::Settings& settings)
{
    const platform::Result<> saved[] = {
        settings.Save(Section, "FolderSelected",
                      Own(remembered.isSelectedCategory ? app::str::SearchSelected : app::str::SearchAll)),
        settings.Save(Section, "Property", Own(Properties.at(remembered.property).name)),
        settings.Save(Section, "Condition", Own(std::to_underlying(remembered.condition))),
        settings.Save(Section, "Value", remembered.value),
        settings.SaveFlag(Section, "MSOApplicationWord", remembered.word),
        settings.SaveFlag(Section, "MSOApplicationExcel", remembered.excel),
        settings.SaveFlag(Section, "MSOApplicationPPT", remembered.powerPoint)};
    return std::ranges::all_of(saved, [](const platform::Result<>& one) { return one.has_value(); });
}

} // namespace search
