#include "profiles/NameEntry.h"

#include "platform/FileName.h"
#include "profiles/StringId.h"

namespace profiles {

bool AcceptsName(app::Program& program, ProfileManager& profiles, ui::TextBox& box)
{
    const auto refusal = profiles.ValidateProfileName(box.Text());
    if (!refusal)
        return true;
    std::string message = *refusal != str::None ? program.Text(*refusal) : std::string{};
    if (*refusal == str::InvalidProfileName && platform::file_name::HasForbiddenCharacter(box.Text()))
        message += "\r\n\r\n" + program.Text(str::ProfileNameCharacters) + "\r\n" + platform::file_name::ForbiddenShown;
    if (!message.empty())
        program.messages.Inform(message);
    if (*refusal == str::ProfileNameTaken)
        box.SetText("");
    box.SetFocus();
    box.SelectAll();
    return false;
}

} // namespace profiles
