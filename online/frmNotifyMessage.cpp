#include "online/frmNotifyMessage.h"

#include "app/base/Captions.h"
#include "app/base/SupportFiles.h"
#include "online/StringId.h"
#include "platform/OpenGate.h"

namespace online {
namespace {

constexpr int Width = 5400; ///< twips

// The shell's result codes that mean something here.
constexpr int FileNotFound = 2;
constexpr int PathNotFound = 3;

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
        this->state.Save(this->program.settings);
        return true;
    };
}

void frmNotifyMessage::OKButton_Click()
{
    if (!OpenProduct())
        program.messages.Inform(str::FileNotFound);
    Close();
}

bool frmNotifyMessage::OpenProduct()
{
    // What came from outside opens on its own merits: no type and no folder is trusted.
    const platform::OpenGate gate{program.platform.shell, program.platform.files, {}};
    if (gate.Judge(state.NotifyProductPath, {}) != platform::OpenGate::Verdict::Opens)
        return false;
    const int code = program.platform.shell.Open(state.NotifyProductPath, platform::Verb::Open);
    return code != FileNotFound && code != PathNotFound;
}

} // namespace online
