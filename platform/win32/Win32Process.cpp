#include "platform/win32/Win32Process.h"

namespace platform::win32 {

bool Win32Process::ClaimSingleInstance()
{
    if (mark)
        return false;
    // "Local" is the user's session. The mark is the object's existence; nobody ever waits for it.
    ObjectHandle created{CreateMutexW(nullptr, FALSE, L"Local\\TSBrowser.SingleInstance")};
    if (!created || GetLastError() == ERROR_ALREADY_EXISTS)
        return false;
    mark = std::move(created);
    return true;
}

void Win32Process::ReleaseSingleInstance()
{
    mark.Reset();
}

} // namespace platform::win32
