// A mail client of the tests. It writes what it is given into "<own path>.record", a line each, and answers what stands
// in "<own path>.answer": the codes of the log-on and of the sending. It moves to another folder, as clients do.
#include "platform/win32/WindowsHeader.h"

#include <mapi.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

std::filesystem::path Beside(const wchar_t* ending)
{
    HMODULE own{};
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&Beside), &own);
    wchar_t path[MAX_PATH];
    return std::wstring{path, GetModuleFileNameW(own, path, MAX_PATH)} + ending;
}

void Record(const std::string& line)
{
    std::ofstream{Beside(L".record"), std::ios::app | std::ios::binary} << line << "\n";
}

ULONG Answer(int which)
{
    std::ifstream file{Beside(L".answer")};
    ULONG codes[2]{};
    file >> codes[0] >> codes[1];
    return codes[which];
}

std::string Text(const char* text)
{
    return text == nullptr ? "(null)" : text;
}

} // namespace

extern "C" __declspec(dllexport) ULONG WINAPI MAPILogon(ULONG_PTR, LPSTR user, LPSTR, FLAGS flags, ULONG,
                                                        LPLHANDLE session)
{
    Record("logon " + Text(user) + " " + std::to_string(flags));
    *session = 7;
    return Answer(0);
}

extern "C" __declspec(dllexport) ULONG WINAPI MAPILogoff(LHANDLE session, ULONG_PTR, FLAGS, ULONG)
{
    Record("logoff " + std::to_string(session));
    return SUCCESS_SUCCESS;
}

extern "C" __declspec(dllexport) ULONG WINAPI MAPISendMail(LHANDLE session, ULONG_PTR, lpMapiMessage message,
                                                           FLAGS flags, ULONG)
{
    Record("send " + std::to_string(session) + " " + std::to_string(flags));
    Record("type " + Text(message->lpszMessageType));
    Record("subject " + Text(message->lpszSubject));
    Record("text " + Text(message->lpszNoteText));
    Record("to " + Text(message->lpRecips[0].lpszName));
    Record("file " + Text(message->lpFiles[0].lpszPathName) + " at " + std::to_string(message->lpFiles[0].nPosition));
    SetCurrentDirectoryW(L"C:\\");
    return Answer(1);
}
