#include "profiles/ProfileRecord.h"

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

std::string_view KindWord(ImageKind kind)
{
    static constexpr std::array<std::string_view, ImageCount> words{"Logo", "Portrait", "Signature"};
    return words[static_cast<std::size_t>(kind)];
}

} // namespace profiles
