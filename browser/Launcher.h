#pragma once

#include "app/base/Messages.h"
#include "app/base/RegistryAccess.h"
#include "platform/FileSystem.h"
#include "platform/Shell.h"
#include "ui/Toolkit.h"

#include <cstdint>
#include <optional>
#include <string>

namespace browser {

/// Opens files and addresses in the application that the system associates with them. Spreadsheet templates are the
/// exception: their program is started directly, with its own command line.
class Launcher {
public:
    Launcher(platform::Shell& shell, platform::FileSystem& files, app::RegistryAccess& registry,
             app::Messages& messages, ui::Toolkit& toolkit, const app::StringTable& strings)
        : shell{shell}, files{files}, registry{registry}, messages{messages}, toolkit{toolkit}, strings{strings}
    {
    }

    /// 1 when a failure message was shown, 0 otherwise: success, or a failure that stays silent.
    struct Outcome {
        std::int16_t result{};
        /// The spreadsheet's program is there but could not be started; the caller tells the user.
        std::optional<platform::Error> raised;
    };

    /// `target` is a full path or an address.
    Outcome Launch(const std::string& target);

private:
    platform::Shell& shell;
    platform::FileSystem& files;
    app::RegistryAccess& registry;
    app::Messages& messages;
    ui::Toolkit& toolkit;
    const app::StringTable& strings;

    std::int16_t Report(int code, const std::string& target);
};

/// The file name's text from its first "." on, in lower case: "report.final.pdf" gives ".final.pdf".
std::string LongExtension(std::string_view target);

} // namespace browser
