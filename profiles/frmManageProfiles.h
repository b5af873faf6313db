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
#include <string_view>

namespace profiles {

/// The list of all profiles: add, edit, rename and delete them, and choose the default one.
class frmManageProfiles final : public ui::Form {
public:
    /// `wanted` is the profile that is selected at first; "" for the one in use.
    frmManageProfiles(app::Program& program, ProfileManager& profiles, ProfileOperations& operations,
                      std::string_view wanted = {});

    /// The profile that the user wants to edit now, for whom the dialog has closed; "" for none.
    const std::string& ToEdit() const { return toEdit; }

    /// Another profile has become the default one.
    std::function<void()> DefaultChanged;

    ui::ListBox lstProfiles{*this};
    ui::Button btnAdd{*this, ui::Tag{470}};
    ui::Button btnEdit{*this, ui::Tag{580}, ui::Role::Default};
    ui::Button btnRename{*this, ui::Tag{471}};
    ui::Button btnDelete{*this, ui::Tag{454}};
    ui::Button btnSetDefault{*this, ui::Tag{472}};
    ui::CheckBox chkAutoApply{*this, ui::Tag{474}};
    ui::Button btnClose{*this, ui::Tag{473}, ui::Role::Cancel};

private:
    app::Program& program;
    ProfileManager& profiles;
    ProfileOperations& operations;
    ProfileList list{lstProfiles, profiles};
    std::string toEdit;

    /// Reads the profiles anew and selects one.
    void Refill(const std::string& wanted);
    void EnableButtons();
    bool OnKey(const ui::Key& key);
    void btnAdd_Click();
    void btnEdit_Click();
    void btnRename_Click();
    void btnDelete_Click();
    void btnSetDefault_Click();
    void SaveAutoApply();
};

} // namespace profiles
