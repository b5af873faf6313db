#pragma once

#include "pictures/win32/ImageLoader.h"
#include "pictures/win32/Win32Pictures.h"
#include "platform/ThreadJobs.h"
#include "ui/Toolkit.h"
#include "ui/win32/WindowsHeader.h"

#include <deque>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace ui::win32 {

class FormWindow;

/// The real windows of the thread that makes it. Everything but Post is called on that thread.
class Win32Toolkit final : public Toolkit {
public:
    /// `resources` holds the program's pictures.
    explicit Win32Toolkit(HINSTANCE resources = GetModuleHandleW(nullptr));
    Win32Toolkit(const Win32Toolkit&) = delete;
    Win32Toolkit& operator=(const Win32Toolkit&) = delete;
    ~Win32Toolkit() override;

    std::unique_ptr<FormPeer> CreatePeer(Form& form) override;
    void RunModal(Form& form) override;
    Answer ShowMessage(const MessageBox& message) override;
    std::optional<std::string> BrowseForFolder(const std::string& prompt, const std::string& initial) override;
    std::optional<std::string> OpenFile(const OpenFileDialog& dialog) override;
    bool CopyText(const std::string& text) override;
    bool CopyToClipboard(const std::string& file) override;
    std::optional<std::string> PastedFile() override;
    void DoEvents() override;
    bool InputWaits() override { return HIWORD(GetQueueStatus(QS_INPUT)) != 0; }
    bool WaitUntil(const std::function<bool()>& ended, std::chrono::milliseconds atMost) override;
    void Post(std::function<void()> task) override;
    std::vector<WorkArea> WorkAreas() const override;
    Size ScreenSize() const override;
    void ShowOtherInstance() override;
    void SetBusy(bool busy) override;

    /// Handles messages until `Quit`.
    void Run();
    /// Ends `Run` once the handlers that are active now have returned.
    void Quit();
    /// Whether a modal form, a message box, a dialog of the system or a pop-up menu waits for the user.
    bool ModalActive() const { return nativeModals > 0 || !modals.empty(); }
    /// Whether the pointer is to show that the user must wait; a modal form wants the user.
    bool IsBusy() const { return InputHeld() || (busy && modals.empty()); }
    const pictures::win32::ImageLoader& Images() const { return images; }
    const pictures::Pictures& Pictures() const { return pictures; }
    /// For pictures, which may take long to read and to decode.
    platform::Jobs& Jobs() { return jobs; }

    /// Holds while a loop of the system waits for the user.
    class NativeModal {
    public:
        explicit NativeModal(Win32Toolkit& modalToolkit) : toolkit{modalToolkit}, yield{modalToolkit}
        {
            ++toolkit.nativeModals;
        }
        NativeModal(const NativeModal&) = delete;
        NativeModal& operator=(const NativeModal&) = delete;
        ~NativeModal() { --toolkit.nativeModals; }

    private:
        Win32Toolkit& toolkit;
        Yield yield;
    };

    // For the windows of the forms.
    void Attach(FormWindow& window);
    void Detach(FormWindow& window);
    /// Lets the other windows live again when `window` was modal. The control that gets the focus back; may be null.
    HWND EndModal(const FormWindow& window);
    /// Destroys a window that nothing uses any more as soon as the message in hand is done: its window procedure and
    /// those of its controls may be on their last step.
    void Bury(HWND window);
    /// A splash window that is shown goes on telling about what the window that comes now is filled with.
    void KeepSplashAbove(HWND window);

private:
    struct Modal {
        const FormWindow* window;
        std::vector<HWND> disabled;
        HWND focus;
        bool ended;
    };
    struct Task {
        int level; ///< loops that were running when it was posted: a deeper one must not run it
        std::function<void()> run;
    };

    pictures::win32::ImageLoader images;
    pictures::win32::Win32Pictures pictures;
    std::vector<FormWindow*> windows;
    std::vector<Modal*> modals;
    std::vector<HWND> graves;
    DWORD thread{GetCurrentThreadId()};
    std::mutex taskMutex;
    std::deque<Task> tasks;
    int level{};
    bool taskRanLast{};
    int nativeModals{};
    bool busy{};
    bool ownsCom{};
    DWORD drawn{}; ///< when a window was drawn last in a yield: milliseconds, as GetTickCount counts
    platform::ThreadJobs jobs{[this](std::function<void()> task) { Post(std::move(task)); }};

    /// Runs what was posted, or waits for a message and handles it. False when the program is to end.
    bool Step();
    /// All messages that wait; without `draws` those about drawing go on waiting.
    void HandleMessages(bool draws);
    void Dispatch(MSG& message);
    /// Whether it is something that the user does and must not while his input is held.
    bool IsHeldBack(const MSG& message) const;
    /// The first that may run now. The lock is held.
    std::deque<Task>::iterator NextTask();
    bool HasTask();
    bool RunTask();
    void Sweep();
    /// The window of ours that the user works in; null when none is visible.
    HWND ActiveOwner() const;
    /// The visible main window; null while there is none.
    HWND MainWindow() const;
};

} // namespace ui::win32
