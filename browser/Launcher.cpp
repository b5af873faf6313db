#include "browser/Launcher.h"

#include "app/base/StringId.h"
#include "library/TemplateFiles.h"
#include "platform/CommandLine.h"
#include "platform/Path.h"
#include "platform/Scoped.h"
#include "platform/Text.h"

#include <vector>

namespace browser {
namespace {

using library::TemplateTypeOf;
using platform::command_line::Quoted;

// The shell's result codes that mean something here.
constexpr int FileNotFound = 2;
constexpr int PathNotFound = 3;
constexpr int NoAssociation = 31;

/// No result of the shell's.
constexpr std::int16_t NotYet = -1;

} // namespace

std::string ProgramOf(std::string_view value)
{
    const std::string text = platform::text::Trimmed(value);
    return text.starts_with('"') ? text.substr(1, text.find('"', 1) - 1) : text;
}

std::string LongExtension(std::string_view target)
{
    const std::string_view name = platform::path::Name(target);
    const auto dot = name.find('.');
    return dot == std::string_view::npos ? std::string{} : platform::text::Folded(name.substr(dot));
}

platform::OpenGate::Verdict Launcher::Judge(const Target& target) const
{
    std::vector<std::string> folders{state.TemplatesPath, state.HddTemplatesPath, state.CdromTemplatesPath,
                                     state.ProgramFolder};
    if (target.isOwn)
        folders.push_back(platform::path::Parent(target.name));
    return gate.Judge(target.name, folders);
}

Launcher::Outcome Launcher::Launch(const Target& target)
{
    if (opening)
        return {.result = NotYet}; // pressed again
    const auto kept = Kept();
    const platform::Scoped now{opening, true};
    return Open(target);
}

Launcher::Outcome Launcher::Open(const Target& target)
{
    using Verdict = platform::OpenGate::Verdict;
    const Verdict verdict = Judge(target);
    if (verdict == Verdict::Refused)
        return {.result = Report(FileNotFound, target.name)};
    // A name with a second dot ("a.b.ccw") goes to the shell: only the plain ending starts the spreadsheet directly.
    // The spreadsheet says itself when a file is gone.
    if (LongExtension(target.name) == library::TemplateExtensions[library::SpreadsheetTemplate])
        return StartSpreadsheet(target.name);
    bool asNew = target.verb == platform::Verb::New;
    const int code = verdict == Verdict::Opens ? OpenInShell(target, asNew) : FileNotFound;
    const bool opened = code >= platform::Shell::Worked;
    return {Report(code, target.name), opened, opened && !asNew && target.verb == platform::Verb::New, {}};
}

bool Launcher::OpenDocument(const std::string& path)
{
    if (opening)
        return false;
    const auto kept = Kept();
    const platform::Scoped now{opening, true};
    const Target target{.name = path, .isOwn = true};
    bool asNew = false;
    return Judge(target) == platform::OpenGate::Verdict::Opens && OpenInShell(target, asNew) >= platform::Shell::Worked;
}

int Launcher::OpenInShell(const Target& target, bool& asNew)
{
    const int code = OpenInShell(target, target.verb);
    if (code != NoAssociation || target.verb == platform::Verb::Open)
        return code;
    asNew = false;
    return OpenInShell(target, platform::Verb::Open);
}

int Launcher::OpenInShell(const Target& target, platform::Verb verb)
{
    return files
        .Change(target.name,
                [&system = shell, name = target.name, verb](platform::FileSystem&) -> platform::Result<int> {
                    return system.Open(name, verb);
                })
        .value_or(FileNotFound);
}

Launcher::Outcome Launcher::StartSpreadsheet(const std::string& target)
{
    const auto value = registry.QueryValueByPath(SpreadsheetAppPath, "");
    const auto* registered = value ? std::get_if<std::string>(&*value) : nullptr;
    if (registered == nullptr)
        return {.result = Report(NoAssociation, target)};
    const std::string program = ProgramOf(shell.Expanded(*registered));
    const auto entry = files.Stat(program);
    if (!entry || entry->IsFolder()) {
        messages.Inform(strings.LoadString(app::str::FileNotFound));
        return {};
    }
    const std::string commandLine = Quoted(program) + " /+  " + Quoted(target);
    const auto started = files.Change(program, [&system = shell, program, commandLine](platform::FileSystem&) {
        return system.Run(program, commandLine, platform::WindowStyle::MinimizedFocus);
    });
    if (!started)
        return {.raised = started.error()};
    return {.opened = true};
}

std::int16_t Launcher::Report(int code, const std::string& target)
{
    const auto type = TemplateTypeOf(target);
    switch (code) {
    case FileNotFound:
    case PathNotFound:
        messages.Inform(type ? app::str::FileNotFound : app::str::HelpUnavailable);
        return 1;
    case NoAssociation:
        if (!type)
            return 0;
        toolkit.SetBusy(false);
        messages.Plain(strings.LoadString(app::str::UnableToLaunch) + std::string{platform::path::Name(target)} +
                       strings.LoadString(app::str::LaunchedNameEnd) + "\r\n" +
                       strings.LoadString(library::TemplateKinds[*type].notInstalled));
        return 1;
    default:
        return 0;
    }
}

} // namespace browser
