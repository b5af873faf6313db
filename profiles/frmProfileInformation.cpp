#include "profiles/frmProfileInformation.h"

#include "app/base/Captions.h"
#include "app/base/Mnemonics.h"
#include "profiles/ProfileManager.h"
#include "profiles/StringId.h"

namespace profiles {
namespace {

constexpr int Width = 6600; ///< twips
constexpr ui::Size SectionGap{0, 30};

} // namespace

frmProfileInformation::frmProfileInformation(app::Program& program)
    : Form{program.toolkit, "frmProfileInformation", Style::Dialog, ui::Tag{494}}, program{program}
{
    LoadCaptions(*this, program.strings);
    app::AssignMnemonics(*this);
    Layout(
        Column(lblPurpose, lblChoice, Least(ui::Cell{}, SectionGap), chkDontRemind, Buttons(btnEditProfile, btnClose)),
        Width);
    // The check box comes first in the order, but the answer is what the user is asked for.
    btnEditProfile.SetFocus();
    btnEditProfile.Click = [this] {
        wantsToEdit = true;
        Close();
    };
    btnClose.Click = [this] { Close(); };
    Closing = [this] {
        if (chkDontRemind.Checked() && !this->program.settings.Save(ProfileManager::Section, "FirstRun", "0"))
            this->program.messages.Stop(str::SetValueFailed);
        return true;
    };
}

bool frmProfileInformation::IsDue(const app::Program& program)
{
    return program.settings.Text(ProfileManager::Section, "FirstRun") != "0";
}

} // namespace profiles
