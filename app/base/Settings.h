#pragma once

#include "app/base/StartUpState.h"
#include "platform/Registry.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace app {

/// The per-user settings store: text values below
/// HKEY_CURRENT_USER\Software\VB and VBA Program Settings\<application>\<section>.
class Settings {
public:
    Settings(platform::Registry& registry, const StartUpState& state) : registry{registry}, state{state} {}

    /// A value that is absent, or no text, gives `otherwise`.
    std::string GetSetting(std::string_view app, std::string_view section, std::string_view key,
                           std::string_view otherwise = {}) const;
    /// Creates the section when it is missing.
    platform::Result<> SaveSetting(std::string_view app, std::string_view section, std::string_view key,
                                   std::string_view value);
    platform::Result<> DeleteSetting(std::string_view app, std::string_view section, std::string_view key);
    /// The whole section with its values.
    platform::Result<> DeleteSetting(std::string_view app, std::string_view section);

    /// The key of one of the program's own sections below HKEY_CURRENT_USER.
    std::string KeyOf(std::string_view section) const;
    // The same for the program's own application name.
    std::string Text(std::string_view section, std::string_view key, std::string_view otherwise = {}) const;
    /// The same, "" when it is absent or no text, and an error when that cannot be told: for what must not take a
    /// failure for "nothing set".
    platform::Result<std::string> Read(std::string_view section, std::string_view key) const;
    /// Whole number clamped to [low, high]; what is no number gives `otherwise`.
    int Number(std::string_view section, std::string_view key, int otherwise, int low, int high) const;
    bool Flag(std::string_view section, std::string_view key, bool otherwise) const;
    platform::Result<> Save(std::string_view section, std::string_view key, std::string_view value);
    /// Names of the section's values in the registry's order; none when there is no such section.
    platform::Result<std::vector<std::string>> Names(std::string_view section) const;
    platform::Result<> Delete(std::string_view section, std::string_view key);
    platform::Result<> SaveNumber(std::string_view section, std::string_view key, int value);
    platform::Result<> SaveFlag(std::string_view section, std::string_view key, bool value);

private:
    platform::Registry& registry;
    const StartUpState& state;

    /// A text; nothing when it is absent or no text.
    platform::Result<std::optional<std::string>> Find(std::string_view app, std::string_view section,
                                                      std::string_view key) const;
};

} // namespace app
