#pragma once

#include "ui/Geometry.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ui {

class Form;
class FormPeer;

enum class Icon { None, Information, Question, Critical };
enum class MessageButtons { Ok, YesNo, YesNoCancel, RetryCancel };
enum class Answer { Ok, Yes, No, Retry, Cancel };

struct MessageBox {
    std::string text;
    std::string title;
    Icon icon{Icon::None};
    MessageButtons buttons{};
    Answer proposed{Answer::Yes}; ///< of Yes and No: the one that Enter gives
};

/// The answer of a box that is closed without choosing.
constexpr Answer Otherwise(MessageButtons buttons)
{
    constexpr Answer answers[] = {Answer::Ok, Answer::No, Answer::Cancel, Answer::Cancel};
    return answers[static_cast<std::size_t>(buttons)];
}

/// A question for an existing file.
struct OpenFileDialog {
    std::string title;
    std::string filter; ///< descriptions and patterns by turns: "JPEG Files (*.jpg)|*.jpg|All Files (*.*)|*.*"
    std::string folder; ///< where the dialog starts; "" for where the system likes
};

/// Windows, message boxes and the message loop of one user-interface thread.
class Toolkit {
public:
    virtual ~Toolkit() = default;

    virtual std::unique_ptr<FormPeer> CreatePeer(Form& form) = 0;
    /// Runs a nested message loop until the form is closed. Other windows of the program are disabled meanwhile.
    virtual void RunModal(Form& form) = 0;
    virtual Answer ShowMessage(const MessageBox& message) = 0;
    /// The chosen folder's path; nothing when the user cancelled.
    virtual std::optional<std::string> BrowseForFolder(const std::string& prompt, const std::string& initial) = 0;
    /// The chosen file's full path; nothing when the user cancelled. The current folder stays as it is.
    virtual std::optional<std::string> OpenFile(const OpenFileDialog& dialog) = 0;

    /// Puts a text on the clipboard in place of what is there; false when another program holds it.
    virtual bool CopyText(const std::string& text) = 0;

    /// The same for a file (full path) and its name, for other programs to copy.
    virtual bool CopyToClipboard(const std::string& file) = 0;

    /// The full path of the first file that is on the clipboard; nothing when there is none, or another program holds
    /// it.
    virtual std::optional<std::string> PastedFile() = 0;

    /// Handles the messages that are waiting and returns.
    virtual void DoEvents() = 0;
    /// Whether the user has done something that waits to be handled.
    virtual bool InputWaits() = 0;
    /// Handles messages until `ended` gives true, at most so long, or until the program ends. It is asked after each
    /// that comes, and when a job that was asked has its answer. Gives what it gave last. What was posted waits.
    virtual bool WaitUntil(const std::function<bool()>& ended, std::chrono::milliseconds atMost) = 0;
    /// Runs `task` from the message loop, outside every handler that is active now; what another thread posts comes
    /// between two messages. Safe from any thread.
    virtual void Post(std::function<void()> task) = 0;

    /// Of each monitor, the primary one first.
    virtual std::vector<WorkArea> WorkAreas() const = 0;
    /// The primary monitor in pixels.
    virtual Size ScreenSize() const = 0;
    /// Brings the main window of another process of this program to the front, with the dialog that it waits for.
    virtual void ShowOtherInstance() = 0;
    /// The hourglass pointer, or the arrow.
    virtual void SetBusy(bool busy) = 0;

    /// The forms that have a window.
    const std::vector<Form*>& Forms() const { return forms; }

    /// Holds all of them while the user can act in the middle of what is running, whichever form that belongs to. Every
    /// loop that handles messages has one.
    class Yield {
    public:
        explicit Yield(Toolkit& yieldToolkit);
        Yield(const Yield&) = delete;
        Yield& operator=(const Yield&) = delete;
        ~Yield();

    private:
        Toolkit& toolkit;
        std::vector<Form*> held;
    };

    /// While it lives, nobody can begin anything in the middle of what is running: whatever waits handles messages and
    /// paints, and drops the user's keys and clicks. Left are splash windows, and the frame of a window, by which it is
    /// moved and, where it says so (Form::ClosesWhileHeld), closed.
    class HoldInput {
    public:
        explicit HoldInput(Toolkit& heldToolkit) : toolkit{heldToolkit} { ++toolkit.holds; }
        HoldInput(const HoldInput&) = delete;
        HoldInput& operator=(const HoldInput&) = delete;
        ~HoldInput() { --toolkit.holds; }

    private:
        Toolkit& toolkit;
    };
    bool InputHeld() const { return holds > 0; }

private:
    friend class Form;
    std::vector<Form*> forms;
    int holds{};
};

/// The hourglass for a scope.
class Hourglass {
public:
    explicit Hourglass(Toolkit& busyToolkit) : toolkit{busyToolkit} { toolkit.SetBusy(true); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;
    ~Hourglass() { toolkit.SetBusy(false); }

private:
    Toolkit& toolkit;
};

} // namespace ui
