#pragma once

#include <functional>
#include <string>

namespace automation {

/// What stands behind the automation object: the browser with its windows, or a stand-in of the tests.
class Application {
public:
    virtual ~Application() = default;

    /// Opens the browser; every failure is shown to the user. Gives the result text.
    virtual std::string Start(std::string hostKind, std::string arg2, std::string arg3, std::string arg4,
                              std::string caption) = 0;
    /// From the beginning of a `Start` that was not refused until its main window is gone.
    virtual bool IsRunning() const = 0;
    /// Whether a dialog waits for the user, so that a host's call must wait too.
    virtual bool ModalActive() const = 0;

    /// The message loop, until `Quit`.
    virtual void Run() = 0;
    virtual void Quit() = 0;

    /// Raised from the message loop when the browser is gone.
    std::function<void()> Closed;
};

} // namespace automation
