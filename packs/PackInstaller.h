#pragma once

#include "app/base/Program.h"
#include "packs/FileVersionInfo.h"
#include "platform/Ticket.h"

#include <functional>
#include <string>

namespace packs {

/// Starts the installers of packs, one at a time, and knows until when one runs: it watches the process itself, also
/// one that an earlier browser or one in another session has started, so that no lock outlives its installer.
class PackInstaller {
public:
    explicit PackInstaller(app::Program& program) : program{program}, versions{program.platform.files, program.messages}
    {
    }

    /// An installer was started, or has ended.
    std::function<void()> Changed;
    /// An installer has ended, and may have changed the library.
    std::function<void()> Ended;

    /// Lets the user choose a pack, looks at it (off this thread: it may lie on a share), and starts it. Strings 192
    /// and 193 while one is being installed.
    void Install();
    /// Looks for an installer that somebody else has started, too, and watches it from then on.
    bool IsRunning();

private:
    app::Program& program;
    FileVersionInfo versions;
    bool isStarting{};
    platform::Ticket looking; ///< the job that looks at the chosen file
    platform::Ticket watch;   ///< of the running installer

    void Judge(const std::string& file, const FileVersionInfo::Reading& reading);
    void Start(const std::string& file);
    void OnEnded();
};

} // namespace packs
