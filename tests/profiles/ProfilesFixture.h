#pragma once

#include "profiles/ProfileOperations.h"
#include "profiles/ProfileTransfer.h"
#include "tests/support/TestMachine.h"

namespace tests {

inline constexpr std::string_view Images = "C:\\Images";

/// A machine with profiles in its registry and what works on them, without a browser.
class ProfileTestBase : public ::testing::Test, public TestMachine {
protected:
    app::Program program{system.AsPlatform(), toolkit, pictures};
    profiles::ProfileManager manager{program.platform.registry, program.registry, program.settings, program.messages,
                                     program.strings};
    profiles::ProfileImages images{program.platform, program.files, program.settings, program.messages, manager};
    profiles::ProfileOperations operations{program.platform.registry, program.files, program.platform.clock,
                                           program.messages,          manager,       images};
    profiles::ProfileTransfer transfer{
        program.platform, program.files, program.registry, program.settings, program.messages, program.strings, images};

    ProfileTestBase() : TestMachine{Bare{}}
    {
        program.state.SettingsAppName = "Tessaly GWX 1.0";
        PutSetting("Options", "Profile Images Path", Images);
        system.files.AddFolder(Images);
    }
    void Put(std::string_view profile, std::string_view value, std::string_view text)
    {
        system.registry.PutString(platform::Hive::CurrentUser, profiles::ProfileKey(profile), value, text);
    }
    std::string At(std::string_view profile, std::string_view value) const
    {
        return system.registry.StringAt(platform::Hive::CurrentUser, profiles::ProfileKey(profile), value);
    }
    std::string Picture(std::string_view profile, std::string_view file) const
    {
        return std::string{Images}.append("\\").append(profile).append("\\").append(file);
    }
    /// Adds a picture to the disk and to the profile.
    void PutPicture(std::string_view profile, profiles::ImageKind kind, std::string_view ending, std::string_view bytes)
    {
        const std::string file = Picture(profile, std::string{profiles::KindWord(kind)}.append(ending));
        system.files.AddFile(file, bytes);
        Put(profile, profiles::ValueName(kind), file);
    }
    std::string Contents(std::string_view file) const
    {
        return system.files.Exists(file) ? system.files.Contents(file) : "(none)";
    }
    std::string Text(std::uint16_t id) const { return std::string{app::StringTable::Own(id)}; }
};

} // namespace tests
