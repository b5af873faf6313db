#pragma once

#include "app/base/Program.h"
#include "profiles/ProfileList.h"
#include "profiles/ProfileManager.h"
#include "profiles/ProfileOperations.h"
#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/Label.h"
#include "ui/ListBox.h"
#include "ui/TextBox.h"

#include <functional>
#include <string>

namespace profiles {

/// Asks for a new profile's name and where its fields come from, and makes it.
class frmNewProfile final : public ui::Form {
public:
    frmNewProfile(app::Program& program, ProfileManager& profiles, ProfileOperations& operations);

    /// Says that the fields typed before are kept, and offers a name made of them.
    void OfferTyped(const std::string& name);

    /// Before the profile is made: false makes none.
    std::function<bool()> Creating;

    ui::Label lblName{*this, ui::Tag{476}};
    ui::TextBox Description{*this};
    ui::Label lblKept{*this, ui::Tag{582}};
    ui::Label lblCopyFrom{*this, ui::Tag{477}};
    ui::ListBox lstCopyFrom{*this};
    ui::Button OKButton{*this, ui::Tag{265}, ui::Role::Default};
    ui::Button CancelButton{*this, ui::Tag{231}, ui::Role::Cancel};

    /// The new profile's name; "" when none was made.
    const std::string& Created() const { return created; }

private:
    app::Program& program;
    ProfileManager& profiles;
    ProfileOperations& operations;
    ProfileList sources{lstCopyFrom, profiles};
    std::string created;

    void OKButton_Click();
};

} // namespace profiles
