#pragma once

#include "app/base/Messages.h"
#include "app/base/PatientFiles.h"
#include "app/base/RegistryAccess.h"
#include "app/base/StartUpState.h"
#include "library/TemplateFiles.h"
#include "platform/OpenGate.h"
#include "platform/Shell.h"
#include "ui/Toolkit.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace browser {

/// Opens files and addresses in the application that the system associates with them. Spreadsheet templates are the
/// exception: their program is started directly, with its own command line. Nothing goes to the system but through the
/// gate.
class Launcher {
public:
    /// The key whose default value is the full path of the spreadsheet's program.
    static constexpr std::string_view SpreadsheetAppPath =
        "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\CLC.EXE";

    Launcher(platform::Shell& shell, app::PatientFiles& files, app::RegistryAccess& registry, app::Messages& messages,
             ui::Toolkit& toolkit, const app::StringTable& strings, const app::StartUpState& state)
        : shell{shell}, files{files}, registry{registry}, messages{messages}, toolkit{toolkit}, strings{strings},
          state{state}
    {
    }

    /// What is to be kept for as long as something is being opened: the user may act meanwhile.
    std::function<std::shared_ptr<void>()> WhileOpening;

    /// What became of a launch.
    struct Outcome {
        /// 1 when a failure message was shown, 0 otherwise: success, or a failure that stays silent; -1 when something
        /// else is still being opened and nothing was done.
        std::int16_t result{};
        bool opened{};
        /// A new document was asked for, and as the type has no such verb the template itself is open now.
        bool openedItself{};
        /// The spreadsheet's program is there but could not be started; the caller tells the user.
        std::optional<platform::Error> raised;
    };

    /// What is launched. Where nothing else is said, it may be anything that settings and links name.
    struct Target {
        std::string name; ///< a full path or an address
        platform::Verb verb{platform::Verb::Open};
        /// The user's own, recorded or made by this program: it may lie on any share.
        bool isOwn{};
    };

    /// Whether the drive or the program of what was opened last has not answered yet. Nothing else is opened before.
    bool IsOpening() const { return opening; }
    /// With Verb::New, a type that has no such verb is opened.
    Outcome Launch(const Target& target);
    /// Opens a document that the user has recorded. False when it did not open; nothing is shown.
    bool OpenDocument(const std::string& path);

private:
    platform::Shell& shell;
    app::PatientFiles& files;
    app::RegistryAccess& registry;
    app::Messages& messages;
    ui::Toolkit& toolkit;
    const app::StringTable& strings;
    const app::StartUpState& state;
    platform::OpenGate gate{shell, files, library::TemplateExtensions};

    bool opening{};

    std::shared_ptr<void> Kept() const { return WhileOpening ? WhileOpening() : nullptr; }
    Outcome Open(const Target& target);
    platform::OpenGate::Verdict Judge(const Target& target) const;
    Outcome StartSpreadsheet(const std::string& target);
    int OpenInShell(const Target& target, platform::Verb verb);
    /// The shell's code; `asNew` is cleared when the type has no verb for a new document.
    int OpenInShell(const Target& target, bool& asNew);
    std::int16_t Report(int code, const std::string& target);
};

/// The program's path from a registered value whose variables are replaced; it may stand in quotes.
std::string ProgramOf(std::string_view value);

/// The file name's text from its first "." on, in lower case: "report.final.pdf" gives ".final.pdf".
std::string LongExtension(std::string_view target);

} // namespace browser
