#include "profiles/frmNewProfile.h"

#include "app/base/Captions.h"
#include "app/base/Mnemonics.h"
#include "platform/Text.h"
#include "profiles/NameEntry.h"
#include "profiles/StringId.h"

namespace profiles {
namespace {

constexpr ui::Size ListSize{4500, 1800}; ///< twips

} // namespace

frmNewProfile::frmNewProfile(app::Program& program, ProfileManager& profiles, ProfileOperations& operations)
    : Form{program.toolkit, "frmNewProfile", Style::Dialog, ui::Tag{475}}, program{program}, profiles{profiles},
      operations{operations}
{
    LoadCaptions(*this, program.strings);
    app::AssignMnemonics(*this);
    Layout(Column(lblName, Description, lblKept, lblCopyFrom, Least(lstCopyFrom, ListSize),
                  Buttons(OKButton, CancelButton)));
    lblKept.SetVisible(false);
    Description.SetMaxLength(LongestName);
    lstCopyFrom.DblClick = [this] { OKButton_Click(); };
    OKButton.Click = [this] { OKButton_Click(); };
    CancelButton.Click = [this] { Close(); };

    sources.FillProfileList(program.Text(str::BlankProfile));
    lstCopyFrom.Select(0);
}

void frmNewProfile::OfferTyped(const std::string& name)
{
    lblKept.SetVisible(true);
    // The box bounds what is typed into it only.
    Description.SetText(std::string{platform::text::Left(name, LongestName)});
    Description.SelectAll();
}

void frmNewProfile::OKButton_Click()
{
    if (!AcceptsName(program, profiles, Description))
        return;
    const std::string name = platform::text::Trimmed(Description.Text());
    if ((Creating && !Creating()) || !operations.Create(name, sources.Selected())) {
        Description.SetFocus();
        return;
    }
    created = name;
    Close();
}

} // namespace profiles
