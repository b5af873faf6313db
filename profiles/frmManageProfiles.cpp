#include "profiles/frmManageProfiles.h"

#include "app/base/Captions.h"
#include "app/base/Mnemonics.h"
#include "platform/Text.h"
#include "profiles/StringId.h"
#include "profiles/frmNewProfile.h"
#include "profiles/frmRenameProfile.h"

namespace profiles {
namespace {

constexpr ui::Size ListSize{4800, 3600}; ///< twips

} // namespace

frmManageProfiles::frmManageProfiles(app::Program& program, ProfileManager& profiles, ProfileOperations& operations,
                                     std::string_view wanted)
    : Form{program.toolkit, "frmManageProfiles", Style::Dialog, ui::Tag{469}}, program{program}, profiles{profiles},
      operations{operations}
{
    LoadCaptions(*this, program.strings);
    app::AssignMnemonics(*this);
    // The text is a menu's, too; a title bar would show the mark of its mnemonic.
    SetCaption(app::WithoutMnemonic(Caption()));
    lstProfiles.Name = Caption();
    Layout(Column(Row(Fill(Least(lstProfiles, ListSize)), Column(btnAdd, btnEdit, btnRename, btnDelete, btnSetDefault)),
                  Row(Fill(chkAutoApply), btnClose)));
    lstProfiles.Click = [this] { EnableButtons(); };
    lstProfiles.DblClick = [this] { btnEdit_Click(); };
    btnAdd.Click = [this] { btnAdd_Click(); };
    btnEdit.Click = [this] { btnEdit_Click(); };
    btnRename.Click = [this] { btnRename_Click(); };
    btnDelete.Click = [this] { btnDelete_Click(); };
    btnSetDefault.Click = [this] { btnSetDefault_Click(); };
    btnClose.Click = [this] { Close(); };
    KeyDown = [this](const ui::Key& key) { return OnKey(key); };
    Closing = [this] {
        SaveAutoApply();
        return true;
    };
    chkAutoApply.SetChecked(profiles.AppliesDefault());
    Refill(wanted.empty() ? profiles.GetCurrentProfile() : std::string{wanted});
}

void frmManageProfiles::Refill(const std::string& wanted)
{
    list.FillProfileList();
    if (!list.Select(wanted))
        lstProfiles.Select(0);
    EnableButtons();
}

void frmManageProfiles::EnableButtons()
{
    const bool isSelected = lstProfiles.Selected() >= 0;
    btnEdit.SetEnabled(isSelected);
    btnRename.SetEnabled(isSelected);
    btnDelete.SetEnabled(isSelected);
    btnSetDefault.SetEnabled(isSelected && !profiles.IsDefault(list.Selected()));
    // A button that is disabled under the user's hands would leave the keyboard nowhere.
    if (const ui::Control* active = ActiveControl(); active != nullptr && !active->Enabled())
        lstProfiles.SetFocus();
}

bool frmManageProfiles::OnKey(const ui::Key& key)
{
    if (!lstProfiles.HasFocus() || lstProfiles.Selected() < 0)
        return false;
    if (key == ui::Plain(ui::KeyCode::Delete))
        btnDelete_Click();
    else if (key == ui::Plain(ui::KeyCode::F2))
        btnRename_Click();
    else
        return false;
    return true;
}

void frmManageProfiles::btnAdd_Click()
{
    frmNewProfile form{program, profiles, operations};
    form.ShowModal();
    Refill(form.Created().empty() ? list.Selected() : form.Created());
    lstProfiles.SetFocus();
}

void frmManageProfiles::btnEdit_Click()
{
    toEdit = list.Selected();
    if (!toEdit.empty())
        Close();
}

void frmManageProfiles::btnRename_Click()
{
    frmRenameProfile form{program, profiles, operations, list.Selected()};
    form.ShowModal();
    Refill(form.NewName().empty() ? list.Selected() : form.NewName());
    lstProfiles.SetFocus();
}

void frmManageProfiles::btnDelete_Click()
{
    if (lstProfiles.Items().size() == 1) {
        program.messages.Inform(str::LastProfileStays);
        return;
    }
    // The list may be out of sight behind the question.
    if (!program.messages.Ask(program.Text(str::DeleteProfileQuestion) + "\r\n\r\n" + list.Selected(), ui::Answer::No))
        return;
    const int row = lstProfiles.Selected();
    const std::string next = list.At(row + 1);
    const bool isDeleted = operations.Delete(list.Selected());
    Refill(!isDeleted ? list.Selected() : next.empty() ? list.At(row - 1) : next); // it may have gone without us, too
}

void frmManageProfiles::btnSetDefault_Click()
{
    if (profiles.IsDefault(list.Selected()))
        return;
    if (!profiles.SetDefaultProfile(platform::text::Trimmed(list.Selected()))) {
        program.messages.Stop(str::SetValueFailed);
        return;
    }
    list.ShowDefaultMark();
    EnableButtons();
    if (DefaultChanged)
        DefaultChanged();
}

void frmManageProfiles::SaveAutoApply()
{
    if (!profiles.SetAppliesDefault(chkAutoApply.Checked()))
        program.messages.Stop(str::SetValueFailed);
}

} // namespace profiles
