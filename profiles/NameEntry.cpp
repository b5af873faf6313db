#include "profiles/NameEntry.h"

#include "profiles/StringId.h"

namespace profiles {

bool AcceptsName(app::Program& program, ProfileManager& profiles, ui::TextBox& box)
{
    const auto refusal = profiles.ValidateProfileName(box.Text());
    if (!refusal)
        return true;
    if (*refusal != str::None)
        program.messages.Inform(*refusal);
    if (*refusal == str::ProfileNameTaken)
        box.SetText("");
    box.SetFocus();
    box.SelectAll();
    return false;
}

} // namespace profiles
