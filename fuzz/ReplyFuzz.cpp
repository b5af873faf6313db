// What an update service may answer: whatever it is, it leads to a text in a small window, to an address of a banner
// that is kept, and to nothing that could be started.
#include "fuzz/Machine.h"
#include "online/UpdateNotification.h"
#include "online/frmNotifyMessage.h"
#include "platform/Text.h"
#include "platform/WebAddress.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>

using fuzz::Check;

namespace {

constexpr const char* fields[] = {"IsUpdateRequired", "MessageText", "ProductPath", "ParamID1", "paramid1"};
constexpr const char* values[] = {
    // clang-format off
    "1", "News", "http://a.example/", "https://a.example/?b=1&amp;c", "C:\\Docs\\News.htm", "C:\\Docs\\News.htm.", "C:\\Docs\\Setup.exe",
    "C:\\Docs\\Setup.exe ", "C:\\Docs\\Go.lnk", "C:/Docs/Setup.exe", "C:\\Docs\\News.htm:Setup.exe", "C:Docs\\Setup.exe", "\\\\srv\\share\\News.htm", "\\\\?\\C:\\Docs\\Setup.exe",
    "\\\\.\\PIPE\\x", "file:///C:/Docs/News.htm", "javascript:x", "http://a\"b/", "&#x43;&#58;&#92;Docs\\Setup.exe", "CON", "http:",
    // clang-format on
};

std::string TakePage(FuzzedDataProvider& input)
{
    std::string page;
    while (input.remaining_bytes() > 0 && page.size() < 8192) {
        const auto next = input.ConsumeIntegral<std::uint8_t>();
        if (next % 4 == 0) {
            page += input.ConsumeRandomLengthString(64);
            continue;
        }
        page.append("<input name=").append(input.PickValueInArray(fields)).append(" value=\"");
        page += next % 4 == 1 ? input.ConsumeRandomLengthString(64) : std::string{input.PickValueInArray(values)};
        page += "\">";
    }
    return page;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    FuzzedDataProvider input{bytes, size};
    fuzz::Machine machine;
    machine.Put("Options", "WebHostPath", {platform::ValueType::String, "http://updates.example/"});
    for (const char* file : {"News.htm", "Setup.exe", "Go.lnk", "Script.js"})
        machine.system.files.AddFile("C:\\Docs\\" + std::string{file}, "contents");
    const int status = input.ConsumeIntegralInRange(199, 206);
    const std::string location = status == 206 ? input.ConsumeRandomLengthString(64) : std::string{};
    const std::string page = TakePage(input);
    int asked = 0;
    machine.system.web.OnGet([&](const std::string& address) -> platform::Result<platform::WebReply> {
        Check(platform::web_address::IsWebAddress(address), "only web addresses are asked");
        if (asked++ == 0 && status == 206)
            return platform::WebReply{302, location, ""};
        return platform::WebReply{status == 206 ? 200 : status, "", page};
    });
    app::Program program{machine.system.AsPlatform(), machine.toolkit, machine.pictures};
    program.state.SettingsAppName = "Tessaly GWX 1.0";
    program.state.BrowserReady = true;
    const auto disk = machine.system.files.Snapshot();

    online::UpdateNotification updates{program};
    updates.StartUpdateCheck();
    Check(updates.RequestSent(), "the service is asked");
    machine.system.jobs.FinishAll();
    if (auto* message = dynamic_cast<online::frmNotifyMessage*>(machine.toolkit.Find("frmNotifyMessage"))) {
        const std::string text = message->lblMessage.Caption();
        Check(!text.empty() && platform::text::Length(text) <= 1000, "a message is a short text");
        Check(std::ranges::count(text, '\n') < 12, "a message is a low window");
        message->OKButton.UserClicks();
        machine.system.jobs.FinishAll();
        machine.toolkit.RunPosted();
        for (const std::string& opened : machine.system.shell.Opened())
            Check(platform::web_address::IsWebAddress(opened) || opened == "C:\\Docs\\News.htm",
                  "only addresses and documents open");
    }
    updates.End();
    Check(machine.system.shell.Runs().empty() && machine.system.files.Snapshot() == disk, "nothing is run or written");
    Check(platform::text::Length(program.settings.Text("Options", "BannerURLPath")) <=
              platform::web_address::Longest + 1,
          "an address that is kept is a short one");
    return 0;
}
