#include "platform/win32/Win32Mail.h"

#include "platform/win32/Native.h"
#include "platform/win32/SystemLibrary.h"

#include <mapi.h>

#include <memory>
#include <system_error>
#include <thread>

namespace platform::win32 {
namespace {

struct Mapi {
    ModuleHandle library{LoadSystemLibrary(L"mapi32.dll")};
    LPMAPILOGON Logon{};
    LPMAPISENDMAIL SendMail{};
    LPMAPILOGOFF Logoff{};

    bool IsThere()
    {
        return library && Look(library, "MAPILogon", Logon) && Look(library, "MAPISendMail", SendMail) &&
               Look(library, "MAPILogoff", Logoff);
    }
};

/// Mail clients change the current folder of the process to that of the file that they attach.
class CurrentFolderKept {
public:
    CurrentFolderKept() : folder(GetCurrentDirectoryW(0, nullptr), L'\0')
    {
        GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data());
    }
    CurrentFolderKept(const CurrentFolderKept&) = delete;
    CurrentFolderKept& operator=(const CurrentFolderKept&) = delete;
    ~CurrentFolderKept() { SetCurrentDirectoryW(folder.c_str()); }

private:
    std::wstring folder;
};

/// The interface takes texts of the system's code page only; what that has no character for becomes a similar one.
std::string Ansi(std::string_view text)
{
    const std::wstring wide = ToUtf16(text);
    const auto convert = [&](char* to, int room) {
        return WideCharToMultiByte(CP_ACP, 0, wide.data(), static_cast<int>(wide.size()), to, room, nullptr, nullptr);
    };
    std::string ansi(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
    convert(ansi.data(), static_cast<int>(ansi.size()));
    return ansi;
}

/// The path in a form that survives the code page, where the disk has short names.
std::string AnsiPath(std::string_view path)
{
    const std::wstring wide = ToUtf16(path);
    wchar_t brief[MAX_PATH]{};
    BOOL lossy = FALSE;
    // A similar letter would name another file.
    WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.data(), static_cast<int>(wide.size()), nullptr, 0, nullptr,
                        &lossy);
    const DWORD length = lossy ? GetShortPathNameW(wide.c_str(), brief, MAX_PATH) : 0;
    return Ansi(length > 0 && length < MAX_PATH ? ToUtf8({brief, length}) : std::string{path});
}

MailOutcome Send(Mapi& mapi, LHANDLE session, const MailMessage& message)
{
    std::string type = Ansi(message.type);
    std::string subject = Ansi(message.subject);
    std::string text = Ansi(message.text);
    std::string name = Ansi(message.recipient);
    std::string file = AnsiPath(message.attachment);

    MapiRecipDesc recipient{};
    recipient.ulRecipClass = MAPI_TO;
    recipient.lpszName = name.data();
    MapiFileDesc attachment{};
    attachment.lpszPathName = file.data();
    MapiMessage mail{};
    mail.lpszMessageType = type.empty() ? nullptr : type.data();
    mail.lpszSubject = subject.data();
    mail.lpszNoteText = text.data();
    mail.nRecipCount = 1;
    mail.lpRecips = &recipient;
    mail.nFileCount = 1;
    mail.lpFiles = &attachment;
    switch (mapi.SendMail(session, 0, &mail, MAPI_DIALOG, 0)) {
    case SUCCESS_SUCCESS:
        return MailOutcome::Composed;
    case MAPI_E_USER_ABORT:
        return MailOutcome::GivenUp;
    case MAPI_E_LOGIN_FAILURE:
    case MAPI_E_INVALID_SESSION:
        return MailOutcome::NoSession;
    default:
        return MailOutcome::Failed;
    }
}

MailOutcome LogOnAndSend(const std::string& user, const MailMessage& message)
{
    Mapi mapi;
    if (!mapi.IsThere())
        return MailOutcome::NoSession;
    const CurrentFolderKept folder;
    std::string name = Ansi(user);
    LHANDLE session = 0;
    switch (mapi.Logon(0, name.empty() ? nullptr : name.data(), nullptr, 0, 0, &session)) {
    case SUCCESS_SUCCESS:
        break;
    case MAPI_E_USER_ABORT:
        return MailOutcome::GivenUp;
    default:
        return MailOutcome::NoSession;
    }
    const MailOutcome outcome = Send(mapi, session, message);
    mapi.Logoff(session, 0, 0, 0);
    return outcome;
}

/// Clients want an apartment of their own, and messages handled while their window is open: they do that themselves.
MailOutcome ComposeOnThisThread(const std::string& user, const MailMessage& message) noexcept
{
    const bool ownsCom = SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    MailOutcome outcome = MailOutcome::Failed;
    try {
        outcome = LogOnAndSend(user, message);
    } catch (...) { // no memory
    }
    if (ownsCom)
        CoUninitialize();
    return outcome;
}

} // namespace

Result<Ticket> Win32Mail::Compose(std::string user, MailMessage message, std::function<void(MailOutcome)> done)
{
    const auto waiter = std::make_shared<std::function<void(MailOutcome)>>(std::move(done));
    try {
        std::thread{[user = std::move(user), message = std::move(message), tell = post, weak = std::weak_ptr{waiter}] {
            const MailOutcome outcome = ComposeOnThisThread(user, message);
            try {
                tell([weak, outcome] {
                    if (const auto waiting = weak.lock()) {
                        const auto told = std::move(*waiting); // it may let go of its own ticket
                        told(outcome);
                    }
                });
            } catch (...) { // no memory to say so
            }
        }}.detach();
    } catch (const std::system_error&) {
        return std::unexpected{error::OutOfMemory};
    }
    return Ticket{waiter};
}

} // namespace platform::win32
