#pragma once

#include "app/base/LoadProgress.h"
#include "app/base/Messages.h"
#include "app/base/PatientFiles.h"
#include "app/base/RegistryAccess.h"
#include "app/base/Settings.h"
#include "app/base/StartUpState.h"
#include "app/base/StringTable.h"
#include "pictures/Pictures.h"
#include "platform/Platform.h"
#include "ui/Toolkit.h"

namespace app {

/// What exists once per process. Forms take it whole; classes that hold rules take only the parts they use.
class Program {
public:
    Program(platform::Platform systemPlatform, ui::Toolkit& uiToolkit, const pictures::Pictures& decoder)
        : platform{systemPlatform}, toolkit{uiToolkit}, pictures{decoder}, strings{platform.resources},
          messages{toolkit, strings, state}, settings{platform.registry, state},
          registry{platform.registry, messages, toolkit}, progress{toolkit},
          files{platform.files, platform.jobs, toolkit, progress}
    {
        messages.Showing = [this] { files.EndNotice(); };
    }

    platform::Platform platform;
    ui::Toolkit& toolkit;
    const pictures::Pictures& pictures;
    StartUpState state;
    StringTable strings;
    Messages messages;
    Settings settings;
    RegistryAccess registry;
    LoadProgress progress;
    PatientFiles files;     ///< for the window's thread; for jobs there is platform.files
    bool UpdateCheckDone{}; ///< the update service had its turn in this process

    std::string Text(std::uint16_t id) const { return strings.LoadString(id); }
};

} // namespace app
