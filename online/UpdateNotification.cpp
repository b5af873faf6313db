#include "online/UpdateNotification.h"

#include "online/StartCounter.h"
#include "platform/Text.h"
#include "platform/WebAddress.h"

#include <limits>

namespace online {
namespace {

constexpr std::size_t LongestNumber = 16;
constexpr std::size_t LongestMessage = 1000; ///< characters: what a small window can show
constexpr int MostLines = 12;
constexpr int IsRequired = 1;

/// At most so many lines: what follows is one long line, which wraps.
std::string Message(std::string text)
{
    text = platform::text::Replaced(platform::text::Replaced(std::move(text), "\r\n", "\n"), "\r", "\n");
    int lines = 1;
    for (char& c : text)
        if (c == '\n' && ++lines > MostLines)
            c = ' ';
    const auto first = text.find_first_not_of(" \t\n");
    return first == std::string::npos ? std::string{} : text.substr(first, text.find_last_not_of(" \t\n") + 1 - first);
}

} // namespace

void UpdateNotification::StartUpdateCheck()
{
    if (!program.state.BrowserReady || program.UpdateCheckDone)
        return;
    program.UpdateCheckDone = true;
    const app::Settings& settings = program.settings;
    state = {.NotifyDisabled = settings.Flag("Options", "NotifyDisabled", false)};
    // A counter below the first start is damage, and counts as none: it would never come back to its turn.
    const int before = settings.Number("Options", "NotifyCount", 0, 0, std::numeric_limits<std::int16_t>::max());
    const StartCount now = CountStart(before, state.NotifyDisabled);
    state.NotifyCount = now.count;
    state.NotifyAllowed = now.notifyAllowed;
    if (now.asks) {
        hidden = std::make_unique<frmHidden>(program);
        hidden->wbUpdateNotify.DocumentComplete = [this] { ReadReply(); };
        hidden->Load();
    }
    state.Save(program.settings);
}

void UpdateNotification::ReadReply()
{
    const HiddenPage& page = hidden->wbUpdateNotify;
    if (page.LocationURL().empty() || page.LocationURL() == HiddenPage::Blank)
        return;
    const PageText& fields = page.Document();
    const int required =
        platform::text::ToInt(fields.Value("IsUpdateRequired", LongestNumber), 0,
                              std::numeric_limits<std::int16_t>::min(), std::numeric_limits<std::int16_t>::max());
    // One character more than an address may have: one that is longer must not become another one by being cut.
    constexpr std::size_t longestAddress = platform::web_address::Longest + 1;
    state.NotifyMessageText = Message(fields.Value("MessageText", LongestMessage));
    state.NotifyProductPath = platform::text::Trimmed(fields.Value("ProductPath", longestAddress));
    state.NotifyParam1 = platform::text::Trimmed(fields.Value("ParamID1", longestAddress));

    // Kept whatever it is: it leads somewhere only when it is a web address, wherever the setting comes from.
    if (!state.NotifyParam1.empty() && state.NotifyParam1 != program.settings.Text("Options", "BannerURLPath")) {
        (void)program.settings.Save("Options", "BannerURLPath", state.NotifyParam1);
        if (BannerChanged)
            BannerChanged();
    }
    if (state.NotifyAllowed && required == IsRequired && !state.NotifyMessageText.empty())
        ShowMessage();
}

void UpdateNotification::End()
{
    if (hidden != nullptr)
        hidden->Close();
    if (message != nullptr)
        message->Close();
}

void UpdateNotification::ShowMessage()
{
    message = std::make_unique<frmNotifyMessage>(program, state);
    message->Show();
}

} // namespace online
