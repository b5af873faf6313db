#include "tests/automation/Harness.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iostream>

// Under Wine the tests run on a desktop of their own: a bare X display has no window manager, without which every
// window that goes costs two seconds and none can be maximised. What is started there has no console, so that the
// first process passes on what the second one writes to a file.

namespace {

constexpr wchar_t OutputVariable[] = L"TSBROWSER_ENDTOEND_OUTPUT";

bool IsWine()
{
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

std::wstring Output()
{
    wchar_t path[MAX_PATH]{};
    GetEnvironmentVariableW(OutputVariable, path, MAX_PATH);
    return path;
}

int RunTests()
{
    const int code = RUN_ALL_TESTS();
    if (const std::wstring output = Output(); !output.empty()) {
        std::fflush(stdout);
        std::ofstream{(output + L".code").c_str()} << code;
    }
    return code;
}

int RunOnOwnDesktop()
{
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    const std::wstring output = folder + std::to_wstring(GetCurrentProcessId()) + L".endtoend";
    SetEnvironmentVariableW(OutputVariable, output.c_str());
    GetWindowsDirectoryW(folder, MAX_PATH);
    const std::wstring line = GetCommandLineW(); // with the tests' own name first
    harness::Child desktop{folder + std::wstring{L"\\explorer.exe"}, L"/desktop=TSBrowserTests,1280x900 " + line};

    std::ifstream written;
    const auto passOn = [&] {
        if (!written.is_open())
            written.open(output.c_str());
        written.clear();
        std::cout << written.rdbuf() << std::flush;
        std::cout.clear(); // nothing new is no failure
    };
    int code = 1;
    while (!std::ifstream{(output + L".code").c_str()} && !desktop.HasEnded()) {
        passOn();
        Sleep(50);
    }
    passOn();
    std::ifstream{(output + L".code").c_str()} >> code;
    written.close();
    DeleteFileW(output.c_str());
    DeleteFileW((output + L".code").c_str());
    return code;
}

} // namespace

int main(int argc, char** argv)
{
    if (IsWine() && Output().empty())
        return RunOnOwnDesktop();
    if (const std::wstring output = Output(); !output.empty() && !_wfreopen(output.c_str(), L"w", stdout))
        return 1;
    testing::InitGoogleTest(&argc, argv);
    return RunTests();
}
