#include "online/frmNotifyMessage.h"

#include "app/base/Captions.h"
#include "app/base/SupportFiles.h"
#include "online/StringId.h"
#include "platform/OpenGate.h"

#include <utility>

namespace online {
namespace {

constexpr int Width = 5400; ///< twips

// The shell's result codes that mean something here.
constexpr int FileNotFound = 2;
constexpr int PathNotFound = 3;

/// Opens what the service offers, which may lie on a drive that does not answer; false when there is nothing that may
/// be opened.
bool OpenProduct(platform::Shell& shell, platform::FileSystem& files, const std::string& product)
{
    // What came from outside opens on its own merits: no type and no folder is trusted.
    if (platform::OpenGate{shell, files, {}}.Judge(product, {}) != platform::OpenGate::Verdict::Opens)
        return false;
    const int code = shell.Open(product, platform::Verb::Open);
    return code != FileNotFound && code != PathNotFound;
}

} // namespace

frmNotifyMessage::frmNotifyMessage(app::Program& program, NotifyState& state)
    : Form{program.toolkit, "frmNotifyMessage", Style::Dialog}, program{program}, state{state}
{
    LoadCaptions(*this, program.strings);
    SetCaption(program.state.ProductCaption);
    SetIconFile(app::SupportFile(program, "Icon_16x16"));
    ComesByItself = true;
    lblMessage.PlainText = true; // it comes from outside
    lblMessage.SetCaption(state.NotifyMessageText);
    chkDontShow.SetChecked(state.NotifyDisabled);
    Layout(Column(lblMessage, chkDontShow, Buttons(OKButton, CancelButton)), Width);
    chkDontShow.Click = [this] { this->state.NotifyDisabled = chkDontShow.Checked(); };
    OKButton.Click = [this] { OKButton_Click(); };
    CancelButton.Click = [this] { Close(); };
    // OK, Cancel, Esc, the title bar's button, and the end of the main window.
    Closing = [this] {
        opening.Drop();
        this->state.Save(this->program.settings);
        return true;
    };
}

void frmNotifyMessage::OKButton_Click()
{
    state.Save(program.settings);
    OKButton.SetEnabled(false); // one click, one window
    opening = program.platform.jobs.Start(
        [&shell = program.platform.shell, &files = program.platform.files, product = state.NotifyProductPath](
            const platform::Cancelled&) -> platform::Result<bool> { return OpenProduct(shell, files, product); },
        [this](const platform::Result<bool>& opened) {
            const platform::Ticket over = std::move(opening);
            if (!opened.value_or(false))
                program.messages.Inform(str::FileNotFound);
            Close();
        });
}

} // namespace online
