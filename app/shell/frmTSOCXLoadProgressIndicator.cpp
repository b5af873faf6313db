#include "app/shell/frmTSOCXLoadProgressIndicator.h"

#include "app/base/StringId.h"
#include "app/base/SupportFiles.h"

namespace app {
namespace {

constexpr int Width = 6300 + 2 * ui::LayoutMargin; ///< twips: the splash picture's 420 px at 96 dpi and the margins
constexpr ui::Size SplashSize{6300, 3000};
constexpr ui::Size BarSize{6300, 270};

} // namespace

frmTSOCXLoadProgressIndicator::frmTSOCXLoadProgressIndicator(Program& program)
    : Form{program.toolkit, "frmTSOCXLoadProgressIndicator", Style::Splash}, program{program}
{
    SetCaption(program.state.ProductCaption);
    std::string icon = SupportFile(program, "Icon_32x32");
    if (icon.empty())
        icon = SupportFile(program, "Icon_16x16");
    SetIconFile(std::move(icon));

    lblProgress.PlainText = true; // drawn when there is time, not at every step
    // The longest text of all, so that the label never grows.
    ShowCount(100);
    const std::string splash = SupportFile(program, "Splash_IMG");
    imgSplash.AtOnce = true; // the load that it goes with runs in no loop
    imgSplash.SetFile(splash);
    imgSplash.SetVisible(!splash.empty());
    Layout(Column(Least(imgSplash, SplashSize), lblProgress, Least(prgLoad, BarSize)), Width);
    Realize();
    ShowCount(0);
    program.progress.ProgressCount = 0;
    program.progress.ProgressStopped = false;
    program.progress.Show = [this](int percent) { ShowCount(percent); };
}

frmTSOCXLoadProgressIndicator::~frmTSOCXLoadProgressIndicator()
{
    program.progress.ProgressStopped = true;
    program.progress.Show = nullptr;
    Unload();
}

void frmTSOCXLoadProgressIndicator::ShowCount(int percent)
{
    prgLoad.SetValue(percent);
    lblProgress.SetCaption(program.Text(str::PleaseWait) + program.state.ProductCaption +
                           program.Text(str::BrowserLoads) + " - " + std::to_string(percent) +
                           program.Text(str::PercentDone));
}

} // namespace app
