#include "platform/win32/WindowsHeader.h"

#include <string>

/// Stands for the programs that the browser starts: leaves its raw command line (UTF-16) in "<own path>.line" and ends.
int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    wchar_t path[MAX_PATH];
    const std::wstring own{path, GetModuleFileNameW(nullptr, path, MAX_PATH)};
    const std::wstring line = GetCommandLineW();
    // Whoever waits for the file must find it complete.
    const std::wstring unfinished = own + L".unfinished";
    const HANDLE file = CreateFileW(unfinished.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(file, line.data(), static_cast<DWORD>(line.size() * sizeof(wchar_t)), &written, nullptr);
    CloseHandle(file);
    return MoveFileExW(unfinished.c_str(), (own + L".line").c_str(), MOVEFILE_REPLACE_EXISTING) ? 0 : 1;
}
