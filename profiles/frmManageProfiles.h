#pragma once

#include "app/base/Program.h"
#include "profiles/ProfileList.h"
#include "profiles/ProfileManager.h"
#include "profiles/ProfileOperations.h"
#include "ui/Button.h"
#include "ui/CheckBox.h"
#include "ui/Form.h"
#include "ui/ListBox.h"

#include <functional>
#include <string>

namespace profiles {

/// The list of all profiles: add, rename and delete them, and choose the default one.
class frmManageProfiles final : public ui::Form {
public:
    frmManageProfiles(app::Program& program, ProfileManager& profiles, ProfileOperations& operations);

    /// Another profile has become the default one.
    std::function<void()> DefaultChanged;

    ui::ListBox lstProfiles{*this};
    ui::Button btnAdd{*this, ui::Tag{470}};
    ui::Button btnRename{*this, ui::Tag{471}, ui::Role::Default};
    ui::Button btnDelete{*this, ui::Tag{454}};
    ui::Button btnSetDefault{*this, ui::Tag{472}};
    ui::CheckBox chkAutoApply{*this, ui::Tag{474}};
    ui::Button btnClose{*this, ui::Tag{473}, ui::Role::Cancel};

private:
    app::Program& program;
    ProfileManager& profiles;
    ProfileOperations& operations;
    ProfileList list{lstProfiles, profiles};

    /// Reads the profiles anew and selects one.
    void Refill(const std::string& wanted);
    void EnableButtons();
    bool OnKey(const ui::Key& key);
    void btnAdd_Click();
    void btnRename_Click();
    void btnDelete_Click();
    void btnSetDefault_Click();
    void SaveAutoApply();
};

} // namespace profiles
