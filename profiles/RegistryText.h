#pragma once

#include "platform/Locale.h"
#include "platform/Registry.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace profiles {

/// One key with its values, as an export file holds it.
struct ExportedKey {
    std::string name; ///< below the profiles key; "" is the profiles key itself
    std::vector<std::pair<std::string, platform::RegistryValue>> values;
    friend bool operator==(const ExportedKey&, const ExportedKey&) = default;
};
using ExportedKeys = std::vector<ExportedKey>;

/// The key's full name, with which every key line of an export begins.
std::string FullProfilesKey();

/// The text that the registry editor calls REGEDIT4, in the 8-bit code page. When that lacks a character, the file is
/// UTF-8 and says so in a comment behind the first line.
std::string WriteRegistryText(const ExportedKeys& keys, platform::Locale& locale);

/// Whether `bytes` are exactly what is written for `keys`, in the form that every registry editor reads alike: 8-bit,
/// and no brackets in the names of keys.
bool IsPlainRegistryText(std::string_view bytes, const ExportedKeys& keys, platform::Locale& locale);

/// What a file holds at or below the profiles key. Everything else is left out: other keys with their values, values
/// before any key, deletions, and every line that is not exactly understood.
ExportedKeys ReadRegistryText(std::string_view bytes, platform::Locale& locale);

} // namespace profiles
