#include "app/shell/frmWaiting.h"

#include "app/base/Captions.h"

#include <utility>

namespace app {
namespace {

constexpr int Width = 6300; ///< twips

} // namespace

frmWaiting::frmWaiting(Program& program, const std::string& about, std::function<void()> close)
    : Form{program.toolkit, "frmWaiting", Style::Splash}
{
    ComesByItself = true;
    SetCaption(program.state.ProductCaption);
    LoadCaptions(*this, program.strings);
    lblAbout.PlainText = true;
    lblAbout.SetCaption(about);
    cmdClose.Click = std::move(close);
    Layout(Column(lblReason, lblAbout, ui::Buttons(cmdClose)), Width);
}

frmWaiting::~frmWaiting()
{
    Unload();
}

std::unique_ptr<ui::Form> frmWaiting::Shown(Program& program, const std::string& about, std::function<void()> close)
{
    auto form = std::make_unique<frmWaiting>(program, about, std::move(close));
    form->Show();
    return form;
}

} // namespace app
