#include "online/BugReport.h"

#include "online/Files.h"
#include "online/Html.h"
#include "online/StringId.h"
#include "platform/Path.h"

#include <algorithm>
#include <charconv>

namespace online {
namespace {

using platform::Hive;

constexpr std::string_view Outlook = "Microsoft Outlook";
constexpr std::string_view OutlookExpress = "Outlook Express";
constexpr std::string_view OldOutlook = "10.0"; ///< needs a name to log on, and its own editor for attachments
constexpr std::uint32_t OwnEditor = 0x20000;
constexpr std::string_view EditorKey = "Software\\Microsoft\\Office\\10.0\\Outlook\\Options\\Mail";
constexpr std::string_view EditorValue = "EditorPreference";
/// Holds, while a report is under way, what the editor was before ("none": not set).
constexpr std::string_view EditorBefore = "EditorPreference Before";
constexpr std::string_view NotSet = "none";
constexpr std::string_view PageName = "Report a Bug.htm";
constexpr std::string_view Makers = "bugs@tessaly.example"; ///< unless the settings name others
/// Where templates read the sender from; nobody who has renamed his profile is asked for another.
constexpr std::string_view SenderKey = "Software\\Zelmor Software\\Zelmor User Profiles\\Profiles\\My Profile";

std::string TextOf(const std::optional<app::RegistryAccess::Value>& value)
{
    const auto* text = value ? std::get_if<std::string>(&*value) : nullptr;
    return text == nullptr ? std::string{} : *text;
}

platform::RegistryValue Number(std::uint32_t number)
{
    platform::RegistryValue value{platform::ValueType::Dword, {}};
    for (int byte = 0; byte < 4; ++byte)
        value.data += static_cast<char>(number >> 8 * byte & 0xFF);
    return value;
}

} // namespace

std::string BugReportPage(const std::vector<Fact>& facts)
{
    std::string page = "<html>\r\n<head>\r\n"
                       "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\">\r\n"
                       "<title>Report a Bug</title>\r\n</head>\r\n<body>\r\n<table border=\"1\" cellpadding=\"4\">\r\n";
    for (const auto& [name, value] : facts)
        page += "<tr><td>" + Escaped(name) + "</td><td>" + Escaped(value) + "</td></tr>\r\n";
    return page + "</table>\r\n</body>\r\n</html>\r\n";
}

BugReport::~BugReport()
{
    try {
        RestoreEditorPreference();
    } catch (...) { // no memory: the next start does it
    }
}

void BugReport::ReportABugViaOutlook(const std::vector<Fact>& counts)
{
    if (UnderWay())
        return;
    RestoreEditorPreference();
    const MailClient client = DefaultClient();
    std::vector<Fact> facts = Facts(client);
    facts.insert(facts.end(), counts.begin(), counts.end());
    const auto page = SavePage(BugReportPage(facts));
    if (!page)
        program.messages.Stop(str::PathFileAccessError);
    else if (client.name.empty()) // the system would say that it has sent the mail
        program.messages.Inform(str::NoMailAccount);
    else
        NewMail(client, *page);
}

BugReport::MailClient BugReport::DefaultClient() const
{
    const app::RegistryAccess& registry = program.registry;
    constexpr std::string_view clients = "Software\\Clients\\Mail";
    MailClient client{TextOf(registry.QueryValue(Hive::CurrentUser, clients, "")), ""};
    if (client.name.empty())
        client.name = TextOf(registry.QueryValue(Hive::LocalMachine, clients, ""));
    if (client.name == Outlook) {
        const std::string current = TextOf(registry.QueryValue(Hive::ClassesRoot, "Outlook.Application\\CurVer", ""));
        if (const auto dot = current.rfind('.'); dot != std::string::npos)
            client.version = current.substr(dot + 1) + ".0";
    } else if (client.name == OutlookExpress) {
        client.version = TextOf(
            registry.QueryValue(Hive::LocalMachine, "Software\\Microsoft\\Outlook Express\\Version Info", "Current"));
    }
    return client;
}

std::vector<Fact> BugReport::Facts(const MailClient& client) const
{
    const auto windows = [this](std::string_view value) {
        return TextOf(
            program.registry.QueryValue(Hive::LocalMachine, "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion", value));
    };
    const ui::Size screen = program.toolkit.ScreenSize();
    const auto areas = program.toolkit.WorkAreas();
    // The taskbar takes room on one side, so one of the two is the screen's.
    constexpr int twipsPerInch = 1440;
    const int dpi =
        areas.empty() || areas[0].width <= 0 || areas[0].height <= 0
            ? 0
            : std::min(screen.width * twipsPerInch / areas[0].width, screen.height * twipsPerInch / areas[0].height);
    std::string failures;
    for (const std::uint16_t id : program.messages.Told())
        failures.append(failures.empty() ? "" : ", ").append(std::to_string(id));
    return {
        {"Program version", std::to_string(TS_VERSION_MAJOR) + "." + std::to_string(TS_VERSION_MINOR)},
        {"Build", program.settings.Text("Edition", "Build")},
        {"Edition", program.settings.Text("Edition", "Edition")},
        {"Windows", windows("ProductName") + " (" + windows("CurrentVersion") + "." + windows("CurrentBuild") + ")"},
        {"Screen resolution", std::to_string(screen.width) + " x " + std::to_string(screen.height)},
        {"Dots per inch", std::to_string(dpi)},
        {"Mail client", client.name + " (" + client.version + ")"},
        {"Office generation", program.state.MsoVersion},
        {"Templates path", program.state.TemplatesPath},
        {"Last messages", failures},
    };
}

platform::Result<std::string> BugReport::SavePage(const std::string& page) const
{
    platform::FileSystem& files = program.platform.files;
    const auto save = [&](const std::string& folder) -> platform::Result<std::string> {
        std::string path = platform::path::Join(folder, PageName);
        if (const auto saved = SaveFile(files, path, page); !saved)
            return std::unexpected{saved.error()};
        // What a disk that is full or failing has kept is no page to send.
        if (ReadHTML(files, path) != page)
            return std::unexpected{platform::error::GeneralFailure};
        return path;
    };
    const std::string installed = program.settings.Text("Options", "Installed Path");
    if (platform::path::IsAbsolute(installed))
        if (auto path = save(installed))
            return path;
    const auto temporary = GetTempFolderPath(program.platform.shell, files);
    return temporary ? save(*temporary) : temporary;
}

void BugReport::NewMail(const MailClient& client, const std::string& page)
{
    const std::string sender = TextOf(program.registry.QueryValue(Hive::CurrentUser, SenderKey, "FirstName"));
    const bool isOldOutlook = client.name == Outlook && client.version == OldOutlook;
    if (isOldOutlook)
        SetEditorPreference();
    // The attachment takes the place of the one character.
    auto begun =
        program.platform.mail.Compose(isOldOutlook ? "Outlook" : "",
                                      {.type = client.name == OutlookExpress ? "HTML" : "",
                                       .subject = program.Text(str::BugReportSubject) + sender,
                                       .text = " ",
                                       .recipient = program.settings.Text("Options", "BugReportAddress", Makers),
                                       .attachment = page},
                                      [this, page](platform::MailOutcome outcome) { Composed(outcome, page); });
    if (begun)
        composing = std::move(*begun);
    else
        Composed(platform::MailOutcome::Failed, page);
}

void BugReport::SetEditorPreference()
{
    platform::Registry& registry = program.platform.registry;
    const auto before = program.registry.QueryValue(Hive::CurrentUser, EditorKey, EditorValue);
    const auto* number = before ? std::get_if<std::uint32_t>(&*before) : nullptr;
    if (number != nullptr && *number == OwnEditor)
        return;
    if (number == nullptr) {
        const auto stored = registry.Query(Hive::CurrentUser, EditorKey, EditorValue);
        if (stored || !platform::IsNotThere(stored.error()))
            return; // what cannot be read cannot be set back
    }
    // Noted first: whatever happens from here on, somebody can set it back.
    if (!program.settings.Save("Options", EditorBefore, number == nullptr ? NotSet : std::to_string(*number)))
        return;
    (void)registry.Set(Hive::CurrentUser, EditorKey, EditorValue, Number(OwnEditor));
}

void BugReport::RestoreEditorPreference()
{
    const std::string before = program.settings.Text("Options", EditorBefore);
    if (before.empty())
        return;
    platform::Registry& registry = program.platform.registry;
    std::uint32_t number = 0;
    const bool wasSet =
        std::from_chars(before.data(), before.data() + before.size(), number).ec == std::errc{}; // else it is `NotSet`
    const auto restored = wasSet ? registry.Set(Hive::CurrentUser, EditorKey, EditorValue, Number(number))
                                 : registry.DeleteValue(Hive::CurrentUser, EditorKey, EditorValue);
    if (restored || platform::IsNotThere(restored.error()))
        (void)program.settings.Delete("Options", EditorBefore);
}

void BugReport::Composed(platform::MailOutcome outcome, const std::string& page)
{
    const platform::Ticket over = std::move(composing);
    RestoreEditorPreference();
    switch (outcome) {
    case platform::MailOutcome::Composed:
    case platform::MailOutcome::GivenUp:
        return;
    case platform::MailOutcome::NoSession:
        program.messages.Inform(str::NoMailAccount);
        return;
    case platform::MailOutcome::Failed:
        program.messages.Inform(program.Text(str::ReportNotHandedOver) + "\r\n" + page);
        return;
    }
}

} // namespace online
