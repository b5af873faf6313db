#include "profiles/ProfileRecord.h"

#include "platform/Text.h"

#include <algorithm>

namespace profiles {

std::string_view ValueName(Field field)
{
    static constexpr std::array<std::string_view, FieldCount> names{
        "FirstName",     "LastName", "Title",        "CompanyName", "AddressLine1",    "AddressLine2",   "City",
        "State",         "ZipCode",  "Country",      "PhoneOffice", "PhoneHome",       "PhoneFax",       "PhoneCell",
        "PhoneTollFree", "Pager No", "EmailAddress", "Website",     "DisclaimerLine1", "DisclaimerLine2"};
    return names[static_cast<std::size_t>(field)];
}

std::string_view ValueName(ImageKind kind)
{
    static constexpr std::array<std::string_view, ImageCount> names{"LocalLogo", "LocalPortrait", "LocalSignature"};
    return names[static_cast<std::size_t>(kind)];
}

bool IsImageValue(std::string_view name)
{
    return std::ranges::any_of(
        AllImages, [&](ImageKind kind) { return platform::text::EqualIgnoringCase(name, ValueName(kind)); });
}

std::string_view KindWord(ImageKind kind)
{
    static constexpr std::array<std::string_view, ImageCount> words{"Logo", "Portrait", "Signature"};
    return words[static_cast<std::size_t>(kind)];
}

} // namespace profiles
