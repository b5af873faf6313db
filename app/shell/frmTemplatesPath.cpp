#include "app/shell/frmTemplatesPath.h"

#include "app/base/Captions.h"
#include "app/base/StringId.h"
#include "library/LibraryFolder.h"
#include "platform/Path.h"

namespace app {
namespace {

constexpr int Width = 7200; ///< twips

bool CanRead(Program& program, const std::string& folder)
{
    return platform::path::IsAbsolute(folder) &&
           program.files.List(platform::path::WithoutTrailingSeparator(folder)).has_value();
}

} // namespace

frmTemplatesPath::frmTemplatesPath(Program& program)
    : Form{program.toolkit, "frmTemplatesPath", Style::Dialog, ui::Tag{339}}, program{program}
{
    LoadCaptions(*this, program.strings);
    lblPath.PlainText = true;
    ShowReason();
    Layout(Column(lblReason, lblPath, lblQuit, Buttons(cmdRetry, cmdNew, cmdCancel)), Width);
    cmdRetry.Click = [this] { cmdRetry_Click(); };
    cmdNew.Click = [this] { cmdNew_Click(); };
    cmdCancel.Click = [this] { Close(); };
}

bool frmTemplatesPath::EnsureReadable(Program& program)
{
    if (CanRead(program, program.state.TemplatesPath))
        return true;
    program.state.TemplatesPathError = true;
    frmTemplatesPath form{program};
    form.ShowModal();
    program.state.TemplatesPathError = !form.IsReadable();
    return form.IsReadable();
}

void frmTemplatesPath::ShowReason()
{
    const StartUpState& state = program.state;
    const std::string stored = state.AccessHddTemplates ? state.HddTemplatesPath : state.CdromTemplatesPath;
    std::string reason;
    if (stored.empty())
        reason = program.Text(str::InitSettingsUnreadable) + " " + program.Text(str::InitSettingsReason) + " " +
                 program.Text(str::InitSettingsAdvice);
    else if (!platform::path::IsAbsolute(stored))
        reason = program.Text(str::TemplatesPathInvalid);
    else if (state.AccessHddTemplates)
        reason = program.Text(str::DriveNotAccessible);
    else
        reason = program.Text(str::TemplatesPathUnreadable);
    lblReason.SetCaption(std::move(reason));
    lblPath.SetCaption(stored.empty() ? std::string{} : program.Text(str::TemplatesPath) + ": " + stored);
    lblPath.SetVisible(!stored.empty());
}

void frmTemplatesPath::cmdRetry_Click()
{
    SetReadable(CanRead(program, program.state.TemplatesPath), cmdRetry);
}

void frmTemplatesPath::cmdNew_Click()
{
    SetReadable(ChooseTemplatesPath(program), cmdNew);
}

void frmTemplatesPath::SetReadable(bool value, ui::Button& tried)
{
    if (!IsOpen()) // the user has gone on while the drive was waited for
        return;
    readable = value;
    if (readable)
        Close();
    else
        tried.SetFocus();
}

bool ChooseTemplatesPath(Program& program)
{
    StartUpState& state = program.state;
    const auto chosen =
        program.toolkit.BrowseForFolder(program.Text(state.AccessHddTemplates ? str::HddPathPrompt : str::CdPathPrompt),
                                        std::string{platform::path::WithoutTrailingSeparator(state.TemplatesPath)});
    if (!chosen)
        return false;
    // A folder of something else must not become the library: what is empty in a library is removed.
    const bool isLibrary = [&] {
        const ui::Hourglass hourglass{program.toolkit};
        return platform::path::IsAbsolute(*chosen) && library::HoldsTemplates(program.files, *chosen);
    }();
    if (!isLibrary) {
        program.messages.Inform(str::SelectedPathUnreadable);
        return false;
    }
    (state.AccessHddTemplates ? state.HddTemplatesPath : state.CdromTemplatesPath) = *chosen;
    state.TemplatesPath = *chosen + "\\";
    if (!program.settings.Save("Browser", state.AccessHddTemplates ? "HDD Templates Path" : "CDROM Templates Path",
                               *chosen))
        program.messages.Stop(str::SetValueFailed);
    return true;
}

} // namespace app
