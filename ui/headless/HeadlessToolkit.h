#pragma once

#include "ui/Form.h"
#include "ui/Toolkit.h"

#include <deque>
#include <map>
#include <string>
#include <vector>

namespace ui {

/// A toolkit without windows: tests script what modal forms and message boxes are answered, and can act inside a
/// yield. What came without a script and what was scripted and did not come is told by NotAsScripted, which a test must
/// find empty.
class HeadlessToolkit : public Toolkit {
public:
    std::unique_ptr<FormPeer> CreatePeer(Form& form) override;
    void RunModal(Form& form) override;
    Answer ShowMessage(const MessageBox& message) override;
    std::optional<std::string> BrowseForFolder(const std::string& prompt, const std::string& initial) override;
    std::optional<std::string> OpenFile(const OpenFileDialog& dialog) override;
    bool CopyText(const std::string& text) override
    {
        Copied = text;
        return true;
    }
    bool CopyToClipboard(const std::string& file) override
    {
        CopiedFiles.push_back(file);
        return true;
    }
    std::optional<std::string> PastedFile() override
    {
        return CopiedFiles.empty() ? std::nullopt : std::optional{CopiedFiles.back()};
    }
    void DoEvents() override;
    bool InputWaits() override { return true; } // whatever OnYield will do
    bool WaitUntil(const std::function<bool()>& ended, std::chrono::milliseconds atMost) override;
    void Post(std::function<void()> task) override;
    std::vector<WorkArea> WorkAreas() const override { return Areas; }
    Size ScreenSize() const override { return Screen; }
    void SetBusy(bool busy) override { Busy = busy; }
    void ShowOtherInstance() override { OtherInstanceShown = true; }

    /// The next message box must have this text and icon; it is answered so.
    void ExpectMessage(std::string text, Icon icon, Answer answer = Answer::Ok);
    /// What to do when a modal form of this name opens; used up by one opening. It must close the form.
    void OnModal(std::string formName, std::function<void(Form&)> act);
    /// What the next pop-up menu is answered.
    void OnPopup(std::function<void(Menu&)> act) { popup = std::move(act); }

    /// Called by every DoEvents, and in every wait, with its number (1, 2, ...): the user acts in the middle of a load.
    std::function<void(int yield)> OnYield;
    /// The same while his input is held: he can do no more than close the main window.
    std::function<void()> OnHeldYield;
    /// Messages are handled until something happens, at most so long: whether it does. Without it nothing ever does.
    std::function<bool(std::chrono::milliseconds atMost)> Elapse;
    /// Called when a message box opens, before it is answered.
    std::function<void(const MessageBox&)> OnMessage;
    int Yields() const { return yields; }
    /// Runs what was posted.
    void RunPosted();

    std::vector<WorkArea> Areas{WorkArea{{0, 0, 19200, 15000}}};
    Size Screen{1280, 1024};
    std::deque<std::optional<std::string>> FolderChoices;
    std::deque<std::optional<std::string>> FileChoices;
    std::vector<OpenFileDialog> FilesAsked; ///< every file dialog that was shown
    std::string Copied;                     ///< what is on the clipboard
    std::vector<MessageBox> Messages;       ///< every box that was shown
    std::vector<std::string> CopiedFiles;   ///< every file that was put there
    std::vector<std::string> Unexpected;
    bool Busy{};
    bool OtherInstanceShown{};
    /// For fault scenarios: any message is answered No or OK without being expected, and what is scripted need not
    /// come.
    bool ThrowAwayMessages{};
    bool AnswerYes{}; ///< with ThrowAwayMessages: questions are answered Yes

    /// Unexpected, and every message, modal form, pop-up, folder or file that was scripted and did not come so far.
    std::vector<std::string> NotAsScripted() const;

    /// The open form of this name; null when there is none.
    Form* Find(std::string_view formName) const;

private:
    struct Expected {
        std::string text;
        Icon icon;
        Answer answer;
    };
    std::deque<Expected> expected;
    std::multimap<std::string, std::function<void(Form&)>> modals;
    std::function<void(Menu&)> popup;
    std::deque<std::function<void()>> posted;
    int yields{};

    friend class HeadlessFormPeer;
};

} // namespace ui
