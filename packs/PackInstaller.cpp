#include "packs/PackInstaller.h"

#include "packs/StringId.h"
#include "platform/Scoped.h"
#include "platform/Text.h"

#include <charconv>
#include <optional>
#include <string_view>

namespace packs {
namespace {

namespace text = platform::text;
using platform::ProcessMark;

constexpr std::string_view Section = "Content";
/// Where the running installer is recorded for other browsers. A record whose process is gone means nothing.
constexpr std::string_view RunningKey = "Pack Installer";

std::string TextOf(const ProcessMark& process)
{
    return std::to_string(process.id) + " " + std::to_string(process.started);
}

/// The whole text as a number.
template <class Number>
bool Parse(const std::string& text, Number& number)
{
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    return read.ec == std::errc{} && read.ptr == end;
}

std::optional<ProcessMark> ParseMark(std::string_view record)
{
    const auto fields = text::Split(record, ' ');
    ProcessMark process;
    return fields.size() == 2 && Parse(fields[0], process.id) && Parse(fields[1], process.started)
               ? std::optional{process}
               : std::nullopt;
}

} // namespace

bool PackInstaller::IsRunning()
{
    if (watch)
        return true;
    const auto process = ParseMark(program.settings.Text(Section, RunningKey));
    if (!process)
        return false;
    auto found = program.platform.shell.Watch(*process, [this](std::uint32_t) { OnEnded(); });
    if (found)
        watch = std::move(*found);
    return found.has_value();
}

void PackInstaller::Install()
{
    if (looking || isStarting || IsRunning()) {
        program.messages.Inform(program.Text(str::InstallRuns) + "\r\n" + program.Text(str::WaitForInstall));
        return;
    }
    // Without a folder the dialog begins where programs of this kind are found, in the system's own.
    const std::string folder =
        program.platform.shell.FolderPath(platform::KnownFolder::Personal).value_or(std::string{});
    const auto file = program.toolkit.OpenFile({program.Text(str::ChoosePack), program.Text(str::PackFilter), folder});
    if (!file)
        return;
    using Reading = platform::Result<FileVersionInfo::Reading>;
    looking = program.platform.jobs.Start(
        [&files = program.platform.files, file = *file](const platform::Cancelled&) -> Reading {
            return FileVersionInfo::Read(files, file);
        },
        [this, file = *file](const Reading& reading) {
            Judge(file, reading.value_or(std::unexpected{VersionFailure::NoInformation}));
        });
}

void PackInstaller::Judge(const std::string& file, const FileVersionInfo::Reading& reading)
{
    looking.Drop();
    // The product's word only sorts out what was chosen by mistake. Whether to trust the file is the user's decision;
    // by another ending the system would not start it as a program.
    const std::string version = versions.Told(reading);
    if (text::ContainsIgnoringCase(version, program.Text(str::ProductWord)) && text::EndsWithIgnoringCase(file, ".exe"))
        Start(file);
    else
        program.messages.Inform(str::NoPack);
}

void PackInstaller::Start(const std::string& file)
{
    if (!program.settings.Save(Section, program.Text(str::LastPack), file))
        program.messages.Stop(str::SetValueFailed);
    auto started = [&] {
        const platform::Scoped now{isStarting, true}; // the system may ask the user, and messages are handled then
        return program.platform.shell.OpenAndWatch(file, [this](std::uint32_t) { OnEnded(); });
    }();
    if (!started) {
        if (started.error() != platform::error::Declined)
            program.messages.Inform(str::CannotLoadPack);
        return;
    }
    watch = std::move(started->watch);
    // Without the record other browsers do not know of the installer; this one does.
    (void)program.settings.Save(Section, RunningKey, TextOf(started->process));
    if (Changed)
        Changed();
}

void PackInstaller::OnEnded()
{
    watch.Drop();
    (void)program.settings.Delete(Section, RunningKey);
    if (Changed)
        Changed();
    if (Ended)
        Ended();
}

} // namespace packs
