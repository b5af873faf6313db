#include "profiles/frmOptionsImportExport.h"

#include "app/base/Captions.h"
#include "app/base/Mnemonics.h"
#include "platform/Scoped.h"
#include "profiles/FirstFolder.h"
#include "profiles/StringId.h"

#include <utility>

namespace profiles {
namespace {

constexpr int Width = 7800; ///< twips
constexpr std::string_view DefaultFolderName = "Tessaly Pro Profiles";

void Ask(ui::TextBox& box)
{
    box.SelectAll();
    box.SetFocus();
}

} // namespace

frmOptionsImportExport::frmOptionsImportExport(app::Program& program, ProfileManager& profiles,
                                               ProfileTransfer& transfer, std::function<void()> openHelp)
    : Form{program.toolkit, "frmOptionsImportExport", Style::Dialog, ui::Tag{482}}, program{program},
      profiles{profiles}, transfer{transfer}
{
    app::LoadCaptions(*this, program.strings);
    app::AssignMnemonics(*this);
    Layout(Column(Framed(fraExport, Column(lblExport, Row(Fill(txtExportPath), btnBrowse), lblFolder,
                                           Row(lblProfileName, Fill(txtProfileName), btnExport))),
                  Framed(fraImport, Column(lblImport, ui::Buttons(btnImport))), ui::Buttons(OKButton, btnHelp)),
           Width);
    txtExportPath.SetText(FirstFolder(program.platform, program.settings.Text("Options", "ExportProfilePath")));
    txtProfileName.SetText(std::string{DefaultFolderName});
    // Who has just typed where to and presses Enter wants to export, not to leave.
    txtExportPath.EnterButton = &btnExport;
    txtProfileName.EnterButton = &btnExport;
    btnBrowse.Click = [this] { btnBrowse_Click(); };
    btnExport.Click = [this] { btnExport_Click(); };
    btnImport.Click = [this] { btnImport_Click(); };
    OKButton.Click = [this] { Close(); };
    btnHelp.Click = std::move(openHelp);
}

ProfileTransfer::Confirm frmOptionsImportExport::Confirm()
{
    return [this](const std::string& question) { return program.messages.Ask(question, ui::Answer::No); };
}

void frmOptionsImportExport::btnBrowse_Click()
{
    if (auto chosen = program.toolkit.BrowseForFolder(program.Text(str::ExportFolderPrompt), txtExportPath.Text()))
        txtExportPath.SetText(std::move(*chosen));
}

void frmOptionsImportExport::btnExport_Click()
{
    if (running)
        return;
    const platform::Scoped now{running, true};
    const ExportOutcome outcome = [this] {
        const ui::Hourglass hourglass{program.toolkit};
        return transfer.Export(txtExportPath.Text(), txtProfileName.Text(), Confirm());
    }();
    if (outcome == ExportOutcome::BadLocation)
        Ask(txtExportPath);
    else if (outcome == ExportOutcome::BadName)
        Ask(txtProfileName);
}

void frmOptionsImportExport::btnImport_Click()
{
    if (running)
        return;
    const platform::Scoped now{running, true};
    if (const auto folder =
            program.toolkit.BrowseForFolder(program.Text(str::ImportFolderPrompt), txtExportPath.Text());
        folder) {
        const ui::Hourglass hourglass{program.toolkit};
        if (transfer.Import(*folder, Confirm()))
            profiles.Settle();
    }
}

} // namespace profiles
