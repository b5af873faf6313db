#include "online/frmHidden.h"

#include "platform/WebAddress.h"

#include <string>
#include <utility>

namespace online {
namespace {

constexpr int SecondsOfADay = 24 * 60 * 60;

} // namespace

frmHidden::frmHidden(app::Program& program)
    : Form{program.toolkit, "frmHidden", Style::Splash}, wbUpdateNotify{program.platform}, program{program}
{
    ComesByItself = true;
    Closing = [this] {
        wbUpdateNotify.Stop();
        tmrUpdateNotify.Drop();
        return true;
    };
}

void frmHidden::Load()
{
    Realize();
    UpdateNotification();
}

void frmHidden::UpdateNotification()
{
    requestSent = true;
    wbUpdateNotify.Navigate(std::string{HiddenPage::Blank});
    const app::Settings& settings = program.settings;
    const std::string host = settings.Text("Options", "WebHostPath");
    if (host.empty())
        return;
    const std::pair<const char*, std::string> values[] = {
        {"?MajorVersion=", std::to_string(TS_VERSION_MAJOR)},
        {"&MinorVersion=", std::to_string(TS_VERSION_MINOR)},
        {"&BuildNumber=", settings.Text("Edition", "Build")},
        {"&ProductID=", settings.Text("Edition", "ProductID")},
        {"&OSVersion=", settings.Text("Options", "OS Version")},
        {"&OfficeVersion=", settings.Text("Options", "MSOVersion")},
        {"&BrowserVersion=", settings.Text("Options", "IEVersion")},
    };
    std::string address = host + "UpdateNotify.asp";
    for (const auto& [name, value] : values) {
        const bool isUnknownOffice = value.empty() && std::string_view{name} == "&OfficeVersion=";
        address += name + platform::web_address::Encoded(isUnknownOffice ? "0.0" : value);
    }
    wbUpdateNotify.Navigate(std::move(address));
    TimeLapse(Patience);
}

int frmHidden::SecondsSinceMidnight() const
{
    const platform::LocalTime now = program.platform.clock.ToLocal(program.platform.clock.Now());
    return (now.hour * 60 + now.minute) * 60 + now.second;
}

void frmHidden::TimeLapse(int seconds)
{
    waitsSince = SecondsSinceMidnight();
    waitsFor = seconds;
    if (auto timer = program.platform.timers.Start(std::chrono::seconds{1}, [this] { tmrUpdateNotify_Timer(); }))
        tmrUpdateNotify = std::move(*timer);
}

void frmHidden::tmrUpdateNotify_Timer()
{
    const int waited = (SecondsSinceMidnight() - waitsSince + SecondsOfADay) % SecondsOfADay;
    if (wbUpdateNotify.Busy() && waited < waitsFor)
        return;
    wbUpdateNotify.Stop();
    tmrUpdateNotify.Drop();
}

} // namespace online
