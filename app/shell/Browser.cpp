#include "app/shell/Browser.h"

#include "app/base/StringId.h"
#include "platform/CommandLine.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>
#include <utility>

namespace app {
namespace {

constexpr std::string_view PdfConverterClass = "CDIntf.CDIntf";

} // namespace

std::string Browser::Start(std::string hostKind, std::string arg2, std::string arg3, std::string arg4,
                           std::string caption)
{
    caption = platform::text::Trimmed(caption);
    const auto title = [&] { return caption.empty() ? program.Text(str::ProductCaption) : caption; };
    if (!program.platform.process.ClaimSingleInstance()) {
        program.toolkit.ShowMessage({program.Text(str::PreviousInstance), title(), ui::Icon::Information});
        if (main == nullptr)
            program.toolkit.ShowOtherInstance();
        else if (main->IsVisible())
            main->BringToFront();
        return {};
    }
    running = true;
    try {
        Open(std::move(hostKind), std::move(arg2), std::move(arg3), std::move(arg4), std::move(caption));
    } catch (...) {
        // A start that fails half-way leaves nothing behind that the next one would stumble over.
        indicator.reset();
        if (main != nullptr)
            main->Unload();
        PostEnd();
        throw;
    }
    return result;
}

void Browser::Open(std::string hostKind, std::string arg2, std::string arg3, std::string arg4, std::string caption)
{
    result.clear();
    program.state = {};
    program.state.HostKind = std::move(hostKind);
    program.state.StartArg2 = std::move(arg2);
    program.state.StartArg3 = std::move(arg3);
    program.state.StartArg4 = std::move(arg4);
    // Before anything is named by a text: the first start of a process must read the same settings as the next one.
    program.state.ProgramFolder =
        program.platform.shell.FolderPath(platform::KnownFolder::ProgramFolder).value_or(std::string{});
    program.strings.LoadResourceLibrary(program.state.ProgramFolder);
    program.state.ProductCaption = caption.empty() ? program.Text(str::ProductCaption) : std::move(caption);
    program.state.SettingsAppName = program.Text(str::SettingsAppName);

    bool wasClosed = false;
    {
        const ui::Hourglass hourglass{program.toolkit};
        wasClosed = !Run();
        indicator.reset();
    }
    if (!wasClosed)
        (void)program.settings.Save("Customization", "ApplicationName", program.state.ProductCaption);
    if (main == nullptr || !main->IsOpen())
        PostEnd();
    else
        PostQuestions();
}

bool Browser::Run()
{
    program.progress.Cancelled = false;
    program.messages.Silent = false;

    indicator = std::make_unique<frmTSOCXLoadProgressIndicator>(program);
    indicator->Show();
    program.toolkit.DoEvents();
    program.progress.Increment();
    program.state.ProductName = program.Text(str::ProductName);
    program.progress.Increment();

    if (!AcceptOfficeGeneration()) {
        indicator.reset();
    } else if (!program.state.SettingsAppName.empty()) {
        ReadTemplatesPath();
        if (!LoadMain())
            return false;
    }
    EnsurePdfConverter();
    return true;
}

bool Browser::AcceptOfficeGeneration()
{
    const std::string version = program.settings.Text("Options", "MSOVersion");
    const auto accepted = {str::Office2K, str::Office97, str::OfficeXp, str::Office11};
    if (std::ranges::any_of(accepted, [&](std::uint16_t id) { return program.Text(id) == version; })) {
        program.state.MsoVersion = version;
        return true;
    }
    program.messages.Stop(program.Text(str::UnableToRun) + "\r\n" + program.Text(str::Reinstall));
    return false;
}

void Browser::ReadTemplatesPath()
{
    StartUpState& state = program.state;
    state.ShowPathToggle = program.settings.Text("Browser", "Show Path Toggle", state.TemplatesPath);
    state.HddTemplatesPath = program.settings.Text("Browser", "HDD Templates Path", state.TemplatesPath);
    state.CdromTemplatesPath = program.settings.Text("Browser", "CDROM Templates Path", state.TemplatesPath);
    state.AccessHddTemplates = program.settings.Flag("Browser", "Access HDD_Templates", false);
    state.TemplatesPath = state.AccessHddTemplates ? state.HddTemplatesPath : state.CdromTemplatesPath;
    state.TemplatesPathError = false;
    // One more separator even behind one that is there: every join from here on counts on a path that ends in one.
    state.TemplatesPath += "\\";
}

bool Browser::LoadMain()
{
    main = std::make_unique<frmMain>(program);
    main->Closed = [this] { PostEnd(); };
    if (!main->Load() || !main->LoadTemplateBrowser())
        return false;
    program.state.MainLoaded = true;
    main->RefreshCommands();
    program.state.BrowserReady = true;
    indicator.reset();
    main->PostLoad();
    return main->IsOpen();
}

void Browser::EnsurePdfConverter()
{
    const auto created = program.platform.automation.TryCreate(PdfConverterClass);
    if (created || (created.error() != platform::error::CannotCreateObject &&
                    created.error() != platform::error::AutomationModuleNotFound))
        return;
    const std::string installer = program.settings.Text("Options", "Installed Path") + "\\PDF Component\\Install.exe";
    const std::string line = platform::command_line::Join({installer, "TSPro 3.0 PDF Converter", "/s"});
    platform::Shell& shell = program.platform.shell;
    const auto started = shell.Run(installer, line, platform::WindowStyle::MinimizedFocus);
    // The system asks the user then. A no, as any other failure, leaves things as they are: the next start tries again.
    if (!started && started.error() == platform::error::ElevationRequired)
        (void)shell.RunElevated(installer, line, platform::WindowStyle::MinimizedFocus);
}

void Browser::Post(std::function<void()> task)
{
    program.toolkit.Post([alive = std::weak_ptr{life}, task = std::move(task)] {
        if (!alive.expired())
            task();
    });
}

void Browser::PostQuestions()
{
    // A host's call must not wait for the user's answers, and whatever the start still did may have run messages.
    Post([this] {
        if (main != nullptr && main->IsOpen())
            main->AskAboutEmptyLibrary();
        if (main != nullptr && main->IsOpen())
            main->PromptForFirstProfile();
    });
}

void Browser::PostEnd()
{
    // The window's own handlers may still be on the stack.
    Post([this] {
        if (!running || (main != nullptr && main->IsOpen()))
            return;
        main.reset();
        running = false;
        program.platform.process.ReleaseSingleInstance();
        if (Closed)
            Closed();
    });
}

} // namespace app
