#include "profiles/frmRenameProfile.h"

#include "app/base/Captions.h"
#include "app/base/Mnemonics.h"
#include "platform/Text.h"
#include "profiles/NameEntry.h"

#include <utility>

namespace profiles {
namespace {

constexpr int BoxWidth = 4500; ///< twips

} // namespace

frmRenameProfile::frmRenameProfile(app::Program& program, ProfileManager& profiles, ProfileOperations& operations,
                                   std::string oldName)
    : Form{program.toolkit, "frmRenameProfile", Style::Dialog, ui::Tag{500}}, program{program}, profiles{profiles},
      operations{operations}, oldName{std::move(oldName)}
{
    LoadCaptions(*this, program.strings);
    app::AssignMnemonics(*this);
    Layout(Column(lblName, Least(txtName, {BoxWidth, 0}), Buttons(OKButton, CancelButton)));
    // A new name is often the old one with a slip mended.
    txtName.SetMaxLength(LongestName);
    txtName.SetText(this->oldName);
    txtName.SelectAll();
    OKButton.Click = [this] { OKButton_Click(); };
    CancelButton.Click = [this] { Close(); };
}

void frmRenameProfile::OKButton_Click()
{
    if (!AcceptsName(program, profiles, txtName))
        return;
    const std::string name = platform::text::Trimmed(txtName.Text());
    if (!operations.Rename(oldName, name)) {
        txtName.SetFocus();
        return;
    }
    newName = name;
    Close();
}

} // namespace profiles
