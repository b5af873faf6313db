#pragma once

#include "app/base/Program.h"
#include "ui/Button.h"
#include "ui/CheckBox.h"
#include "ui/Form.h"
#include "ui/Label.h"

namespace profiles {

/// Invites a new user to enter a profile.
class frmProfileInformation final : public ui::Form {
public:
    explicit frmProfileInformation(app::Program& program);

    /// Whether the prompt is due at this start.
    static bool IsDue(const app::Program& program);

    ui::Label lblPurpose{*this, ui::Tag{495}};
    ui::Label lblChoice{*this, ui::Tag{496}};
    ui::CheckBox chkDontRemind{*this, ui::Tag{497}};
    ui::Button btnEditProfile{*this, ui::Tag{498}, ui::Role::Default};
    ui::Button btnClose{*this, ui::Tag{499}, ui::Role::Cancel};

    /// The user wants to enter a profile now.
    bool WantsToEdit() const { return wantsToEdit; }

private:
    app::Program& program;
    bool wantsToEdit{};
};

} // namespace profiles
