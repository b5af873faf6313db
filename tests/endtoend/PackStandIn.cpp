#include "platform/win32/WindowsHeader.h"

#include <cwchar>
#include <string>
#include <utility>

/// Stands for a solution pack's installer: waits until a file "<own path>.go" is there, and then brings what stands in
/// it: a folder for the library with one template.
int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    wchar_t path[MAX_PATH];
    const std::wstring own{path, GetModuleFileNameW(nullptr, path, MAX_PATH)};
    for (int i = 0; GetFileAttributesW((own + L".go").c_str()) == INVALID_FILE_ATTRIBUTES; ++i) {
        if (i == 2400) // two minutes: whoever should say so is gone
            return 1;
        Sleep(50);
    }
    const std::wstring settings = L"Software\\VB and VBA Program Settings\\Tessaly GWX 1.0\\";
    wchar_t library[MAX_PATH];
    DWORD size = sizeof library;
    RegGetValueW(HKEY_CURRENT_USER, (settings + L"Browser").c_str(), L"HDD Templates Path", RRF_RT_REG_SZ, nullptr,
                 library, &size);
    const std::wstring folder = std::wstring{library} + L"\\Garden";
    CreateDirectoryW(folder.c_str(), nullptr);
    CloseHandle(CreateFileW((folder + L"\\Plan.swt").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    for (const auto& [name, text] : {std::pair{L"Version", L"1.0"},
                                     {L"Description", L"Plans for gardens"},
                                     {L"PackInstalledBySetUp", L"0"},
                                     {L"TemplateFolders", L"Garden|Plan.swt"}})
        RegSetKeyValueW(HKEY_CURRENT_USER, (settings + L"Content\\Garden").c_str(), name, REG_SZ, text,
                        static_cast<DWORD>((wcslen(text) + 1) * sizeof(wchar_t)));
    return 0;
}
