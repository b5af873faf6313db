#pragma once

#include "app/base/Program.h"
#include "profiles/ProfileImages.h"
#include "profiles/ProfileManager.h"
#include "profiles/ProfileOperations.h"
#include "profiles/ProfileTransfer.h"

#include <functional>
#include <string_view>

namespace profiles {

/// Opens the dialogs about profiles and owns what they work with.
class ProfileDialogs {
public:
    /// `openHelp` opens the document of a help topic.
    ProfileDialogs(app::Program& program, std::function<void(std::string_view topic)> openHelp);

    /// Starts with the profile `wanted`; "" for the one in use.
    void EditProfile(std::string_view wanted);
    void EditProfile() { EditProfile({}); }
    void ManageProfiles();
    void ImportOrExport();
    /// Invites to enter a profile, unless the user has done so or does not want to be asked again.
    void PromptForFirstProfile();

private:
    app::Program& program;
    std::function<void(std::string_view topic)> openHelp;
    ProfileManager manager;
    ProfileImages images;
    ProfileOperations operations;
    ProfileTransfer transfer;
};

} // namespace profiles
