#pragma once

#include "profiles/ProfileManager.h"
#include "ui/ItemControl.h"

#include <string>
#include <string_view>
#include <vector>

namespace profiles {

/// The profiles in a list or combo box. What the box shows is for the eye (the default profile is marked); what it
/// hands on is the profile's own name.
class ProfileList {
public:
    ProfileList(ui::ItemControl& box, ProfileManager& profiles) : box{box}, profiles{profiles} {}

    /// Reads the profiles anew and shows them in registry order, behind an entry of this text unless it is empty.
    /// Selects nothing. False, with an empty list, when they could not be read, which the user has been told.
    bool FillProfileList(const std::string& blankEntry = {});
    /// Moves the mark of the default profile to where it belongs now.
    void ShowDefaultMark();

    /// The selected profile; "" for none and for the blank entry.
    std::string Selected() const { return At(box.Selected()); }
    /// The profile of a row; "" when the row shows none.
    std::string At(int row) const;
    /// Selects a profile, letter case and blanks around it ignored; false, and selects nothing, when it is not there.
    bool Select(std::string_view name);
    std::size_t Count() const { return names.size(); }

private:
    ui::ItemControl& box;
    ProfileManager& profiles;
    std::vector<std::string> names;
    int first{}; ///< row of the first profile
};

} // namespace profiles
