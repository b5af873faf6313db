#pragma once

#include "platform/Locale.h"
#include "platform/Registry.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace profiles {

/// One key with its values, as an export file holds it.
struct ExportedKey {
    std::string name; ///< of a profile, below the profiles key; "" is the profiles key itself
    std::vector<std::pair<std::string, platform::RegistryValue>> values;
    friend bool operator==(const ExportedKey&, const ExportedKey&) = default;
};
using ExportedKeys = std::vector<ExportedKey>;

/// What could not be taken along, for the user to read: the first few names, and whether there were more.
class LeftOut {
public:
    void Add(std::string_view name);
    void Add(const LeftOut& others);
    bool IsEmpty() const { return names.empty(); }
    /// A line each.
    std::string Text() const;

private:
    std::vector<std::string> names;
    bool more{};
};

/// What a file holds of the profiles.
struct RegistryText {
    ExportedKeys keys;
    LeftOut leftOut; ///< what stood at or below the profiles key and was not taken
};

/// Keys of one file. Nobody has so many profiles, and each one costs the registry.
inline constexpr std::size_t LargestNumberOfKeys = 5000;

/// The key's full name, with which every key line of an export begins.
std::string FullProfilesKey();

/// The text that the registry editor calls REGEDIT4, in the 8-bit code page. When that lacks a character, the file is
/// UTF-8 and says so in a comment behind the first line. Names with control characters, which an editor could take for
/// the end of a line, are never written.
std::string WriteRegistryText(const ExportedKeys& keys, platform::Locale& locale);

/// Whether the value comes back unchanged from what is written for it. Not so for names that are not written, and for
/// data that the format cannot hold.
bool CanBeWritten(const std::string& valueName, const platform::RegistryValue& value, platform::Locale& locale);
bool CanBeWritten(const std::string& keyName, platform::Locale& locale);

/// Whether `bytes` are exactly what is written for `keys`, in the form that every registry editor reads alike: 8-bit,
/// no brackets and no control characters in names, and no second byte of a character that could be taken for a sign.
bool IsPlainRegistryText(std::string_view bytes, const ExportedKeys& keys, platform::Locale& locale);

/// What a file holds at the profiles key and one level below it, with the freedom of form that registry editors allow.
/// Other keys, values before any key, comments and empty lines count for nothing; deletions, deeper keys and lines that
/// are not understood are left out.
RegistryText ReadRegistryText(std::string_view bytes, platform::Locale& locale);

} // namespace profiles
