#pragma once

#include "app/base/RegistryAccess.h"
#include "app/base/Settings.h"
#include "profiles/ProfileRecord.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace profiles {

/// HKEY_CURRENT_USER's key with one sub-key a profile.
inline constexpr std::string_view ProfilesKey = "Software\\Zelmor Software\\Zelmor User Profiles\\Profiles";
/// Marks the default profile in lists.
inline constexpr std::string_view DefaultSuffix = " (default)";

/// A registry key's name cannot have more characters.
inline constexpr std::size_t LongestName = 255;

/// A name from a list without the mark of the default profile.
std::string WithoutDefaultSuffix(std::string_view name);
std::string ProfileKey(std::string_view name);

/// The sender profiles in the registry, and which of them is the default and which the one in use. Names may carry the
/// mark of the default profile wherever a list may have given them.
class ProfileManager {
public:
    ProfileManager(platform::Registry& registry, app::RegistryAccess& access, app::Settings& settings,
                   app::Messages& messages, const app::StringTable& strings)
        : registry{registry}, access{access}, settings{settings}, messages{messages}, strings{strings}
    {
    }

    /// The record that loads fill and saves write.
    ProfileRecord Current;
    /// The last IsProfileEmpty found nothing.
    bool LastWasEmpty{};

    /// The names found by the last ListProfiles, in registry order.
    const std::vector<std::string>& Names() const { return names; }
    /// Reads the names anew; string 174 on failure. No profiles at all is no failure. Without the yields of
    /// RegistryAccess::EnumSubKeys: dialogs fill their lists from it, and nobody may click in the middle of that.
    bool ListProfiles();

    /// The profile that a name from a list means: without the mark of the default one, unless one of Names() is called
    /// so to the letter (another program may have named it).
    std::string Meant(std::string_view listed) const;

    bool ProfileExists(std::string_view name) const;
    /// Whether all texts but the pager's and all images are empty; true for an empty name.
    bool IsProfileEmpty(std::string_view name);
    /// Fills Current; what cannot be read is empty.
    void LoadProfile(std::string_view name);
    /// Write Current's texts or images; string 173 once when one fails. An empty name saves nothing.
    bool SaveProfileText(std::string_view name);
    bool SaveProfileImages(std::string_view name);
    /// Writes one image value of Current again. No message: for undoing what a failed save has begun.
    platform::Result<> RestoreImage(std::string_view name, ImageKind kind);
    /// Deletes the key; string 182 on failure.
    bool DeleteProfile(std::string_view name);
    /// Copies every value, of any type, and every key below to a new key, and reads them back. No message.
    platform::Result<> CopyProfileValues(std::string_view from, std::string_view to);

    /// Why a profile cannot have this name: a string number; nothing for a good one. Reads the names anew.
    std::optional<std::uint16_t> ValidateProfileName(std::string_view text);

    std::string GetDefaultProfile() const { return settings.Text(Section, "DefaultProfile"); }
    platform::Result<> SetDefaultProfile(std::string_view name)
    {
        return settings.Save(Section, "DefaultProfile", name);
    }
    std::string GetCurrentProfile() const { return settings.Text(Section, "CurrentProfileToUse"); }
    platform::Result<> SetCurrentProfile(std::string_view name)
    {
        return settings.Save(Section, "CurrentProfileToUse", name);
    }
    bool IsDefault(std::string_view name) const;
    /// The same, and an error when it cannot be read: for what must not take that for a no.
    platform::Result<bool> IsStoredDefault(std::string_view name) const;
    /// After profiles have come from elsewhere: reads the names anew, makes the first one the default unless one of
    /// them is, and ends the prompt for a first profile when the default one holds data. Tells a failure.
    void Settle();
    /// The check box "apply the default profile without prompting".
    bool AppliesDefault() const { return !settings.Flag(Section, "PromptForProfile", true); }
    platform::Result<> SetAppliesDefault(bool applies)
    {
        return settings.Save(Section, "PromptForProfile", applies ? "0" : "1");
    }

    static constexpr std::string_view Section = "Profiles";

private:
    platform::Registry& registry;
    app::RegistryAccess& access;
    app::Settings& settings;
    app::Messages& messages;
    const app::StringTable& strings;
    std::vector<std::string> names;

    platform::Result<> CopyProfileData(std::string_view source, std::string_view target, std::string_view name);
    /// A string value; an error when something else is there or it cannot be read. An absent value is "".
    platform::Result<std::string> Read(std::string_view key, std::string_view value) const;
    platform::Result<> Write(std::string_view key, std::string_view value, const std::string& text);
    bool Tell(bool worked, std::uint16_t message);
};

} // namespace profiles
