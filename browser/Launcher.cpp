#include "browser/Launcher.h"

#include "app/base/StringId.h"
#include "library/TemplateFiles.h"
#include "platform/Path.h"
#include "platform/Text.h"

namespace browser {
namespace {

using library::TemplateTypeOf;

constexpr std::string_view SpreadsheetAppPath =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\CLC.EXE";

// The shell's result codes that mean something here.
constexpr int FileNotFound = 2;
constexpr int PathNotFound = 3;
constexpr int NoAssociation = 31;

} // namespace

std::string LongExtension(std::string_view target)
{
    const std::string_view name = platform::path::Name(target);
    const auto dot = name.find('.');
    return dot == std::string_view::npos ? std::string{} : platform::text::Folded(name.substr(dot));
}

Launcher::Outcome Launcher::Launch(const std::string& target)
{
    // A name with a second dot ("a.b.ccw") goes to the shell: only the plain ending starts the spreadsheet directly.
    if (LongExtension(target) != library::TemplateExtensions[library::SpreadsheetTemplate])
        return {Report(shell.Open(target), target), {}};

    const auto value = registry.QueryValueByPath(SpreadsheetAppPath, "");
    const auto* program = value ? std::get_if<std::string>(&*value) : nullptr;
    if (program == nullptr)
        return {Report(NoAssociation, target), {}};
    const auto entry = files.Stat(*program);
    if (!entry || entry->IsFolder()) {
        messages.Inform(strings.LoadString(app::str::FileNotFound));
        return {};
    }
    const std::string commandLine = "\"" + *program + "\" /+  \"" + target + "\"";
    if (const auto started = shell.Run(*program, commandLine, platform::WindowStyle::MinimizedFocus); !started)
        return {0, started.error()};
    return {};
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
        messages.Plain("Unable to launch '" + std::string{platform::path::Name(target)} + "'.\r\n" +
                       std::string{library::TemplateKinds[*type].notInstalled});
        return 1;
    default:
        return 0;
    }
}

} // namespace browser
