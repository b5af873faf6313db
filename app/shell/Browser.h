#pragma once

#include "app/base/Program.h"
#include "app/shell/frmMain.h"
#include "app/shell/frmTSOCXLoadProgressIndicator.h"

#include <functional>
#include <memory>
#include <string>

namespace app {

/// One browser of this process: the start-up sequence, the main window, and what is left when it closes.
class Browser {
public:
    Browser(platform::Platform platform, ui::Toolkit& toolkit, const pictures::Pictures& pictures)
        : program{platform, toolkit, pictures}
    {
    }

    /// Opens the browser; every failure is shown to the user and none raised. Gives the result text, which is empty
    /// unless something filled it. While a browser is open, in this process or another, it only says so.
    std::string Start(std::string hostKind, std::string arg2, std::string arg3, std::string arg4, std::string caption);
    /// From the beginning of a Start that was not refused until its main window is gone.
    bool IsRunning() const { return running; }
    /// Raised from the message loop when the browser is gone.
    std::function<void()> Closed;

    Program& GetProgram() { return program; }
    /// Null while there is none.
    frmMain* Main() { return main.get(); }

private:
    Program program;
    std::unique_ptr<frmTSOCXLoadProgressIndicator> indicator;
    std::unique_ptr<frmMain> main;
    std::string result;
    bool running{};
    std::shared_ptr<const bool> life = std::make_shared<const bool>(true);

    void Open(std::string hostKind, std::string arg2, std::string arg3, std::string arg4, std::string caption);
    /// The start-up sequence; false when the main window was closed while it loaded.
    bool Run();
    bool AcceptOfficeGeneration();
    void ReadTemplatesPath();
    /// False when the window unloaded itself.
    bool LoadMain();
    void EnsurePdfConverter();
    /// Runs it from the message loop, unless this browser is gone by then.
    void Post(std::function<void()> task);
    /// Asks, from the message loop, what the start left open: an empty library, then a new user's profile.
    void PostQuestions();
    void PostEnd();
};

} // namespace app
