#pragma once

#include "app/base/Settings.h"
#include "documents/Facts.h"
#include "platform/Clock.h"
#include "platform/Locale.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace search {

/// A label's text without its mnemonic's mark and its colon, as a line of a list.
std::string Plain(std::string label);

/// What can be asked of a document.
struct Property {
    std::uint16_t name; ///< string number; the text has a mnemonic and a colon, as a label
    std::string documents::Facts::* text;
    std::optional<documents::Date> documents::Facts::* date;
};
inline constexpr std::array<Property, 9> Properties{{
    {195, &documents::Facts::title, nullptr},
    {196, &documents::Facts::subject, nullptr},
    {197, &documents::Facts::author, nullptr},
    {198, &documents::Facts::company, nullptr},
    {199, &documents::Facts::category, nullptr},
    {200, &documents::Facts::keywords, nullptr},
    {201, &documents::Facts::comments, nullptr},
    {202, nullptr, &documents::Facts::created},
    {203, &documents::Facts::manager, nullptr},
}};

/// Numbers of the strings that name them.
enum class Condition : std::uint16_t {
    BeginsWith = 206,
    EndsWith,
    Contains,
    IncludesWords,
    IncludesPhrases,
    Equals,
    IsBefore,
    IsAfter
};
/// Those that can be asked of the property, in the order of their numbers.
std::vector<Condition> ConditionsOf(const Property& property);

/// A property, a condition and a value that documents are held against.
class Criteria {
public:
    /// Nothing when they are incomplete: without a value, or where the value is no day and should be one. A day is
    /// three numbers in the order of the user's short date, or year first.
    static std::optional<Criteria> Of(const Property& property, Condition condition, std::string_view value,
                                      platform::Locale& locale);

    /// Letter case, accents and width do not count. A document that does not say never fits.
    bool Fits(const documents::Facts& facts, platform::Clock& clock, const platform::Locale& locale) const;

private:
    const Property* property{};
    Condition condition{};
    std::string value; ///< folded
    std::vector<std::string> words;
    std::int64_t day{}; ///< since 1601-01-01

    bool FitsText(const std::string& folded) const;
    bool HasWhole(std::string_view folded, std::string_view wanted) const;
};

/// What the user asked for last, as it is remembered: the program's own texts, whatever language it shows.
struct Remembered {
    bool isSelectedCategory{};
    std::size_t property{}; ///< position among Properties
    Condition condition{Condition::BeginsWith};
    std::string value;
    bool word{true}, excel{true}, powerPoint{true}; ///< which kinds of documents are looked at
};
Remembered ReadRemembered(const app::Settings& settings);
/// False when one could not be saved.
bool Save(const Remembered& remembered, app::Settings& settings);

} // namespace search
