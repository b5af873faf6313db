#pragma once

#include "app/base/Program.h"
#include "profiles/ProfileManager.h"
#include "profiles/ProfileOperations.h"
#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/Label.h"
#include "ui/TextBox.h"

#include <string>

namespace profiles {

/// Asks for a profile's new name and renames it.
class frmRenameProfile final : public ui::Form {
public:
    frmRenameProfile(app::Program& program, ProfileManager& profiles, ProfileOperations& operations,
                     std::string oldName);

    ui::Label lblName{*this, ui::Tag{501}};
    ui::TextBox txtName{*this};
    ui::Button OKButton{*this, ui::Tag{265}, ui::Role::Default};
    ui::Button CancelButton{*this, ui::Tag{231}, ui::Role::Cancel};

    /// "" when the profile keeps its old name.
    const std::string& NewName() const { return newName; }

private:
    app::Program& program;
    ProfileManager& profiles;
    ProfileOperations& operations;
    std::string oldName;
    std::string newName;

    void OKButton_Click();
};

} // namespace profiles
