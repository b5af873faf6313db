#include "bench/program/Resources.h"

#include "platform/win32/WindowsHeader.h"

#include <psapi.h>
#include <winternl.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace bench {
namespace {

template <class Function>
Function* Native(const char* name)
{
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), name)));
}

std::size_t HandlesOf(HANDLE process, DWORD id)
{
    if (DWORD count = 0; GetProcessHandleCount(process, &count) && count != 0)
        return count;
    // Wine gives no number: the list of all handles is counted.
    struct Handle {
        ULONG owner;
        BYTE type, flags;
        USHORT value;
        void* object;
        ULONG access;
    };
    constexpr auto handleInformation = static_cast<SYSTEM_INFORMATION_CLASS>(16);
    constexpr std::size_t room = 100'000;
    std::vector<Handle> handles(room);
    // The number of handles stands in front, in the room of a pointer.
    std::vector<std::byte> bytes(sizeof(void*) + room * sizeof(Handle));
    auto* const query = Native<decltype(NtQuerySystemInformation)>("NtQuerySystemInformation");
    if (query == nullptr || query(handleInformation, bytes.data(), static_cast<ULONG>(bytes.size()), nullptr) != 0)
        return 0;
    ULONG count = 0;
    std::memcpy(&count, bytes.data(), sizeof count);
    handles.resize(std::min<std::size_t>(count, room));
    std::memcpy(handles.data(), bytes.data() + sizeof(void*), handles.size() * sizeof(Handle));
    return static_cast<std::size_t>(std::ranges::count(handles, id, &Handle::owner));
}

struct Counted {
    DWORD process{};
    std::size_t windows{};
};

BOOL CALLBACK CountChild(HWND, LPARAM counted)
{
    ++reinterpret_cast<Counted*>(counted)->windows;
    return TRUE;
}

BOOL CALLBACK CountTop(HWND window, LPARAM data)
{
    auto& counted = *reinterpret_cast<Counted*>(data);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == counted.process) {
        ++counted.windows;
        EnumChildWindows(window, CountChild, data);
    }
    return TRUE;
}

std::size_t WindowsOf(DWORD process)
{
    Counted counted{.process = process};
    EnumWindows(CountTop, reinterpret_cast<LPARAM>(&counted));
    return counted.windows;
}

} // namespace

Resources ResourcesOf(unsigned long id)
{
    Resources resources;
    const HANDLE process = OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, id);
    if (process == nullptr)
        return resources;
    PROCESS_MEMORY_COUNTERS_EX memory{};
    K32GetProcessMemoryInfo(process, reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory), sizeof memory);
    const std::size_t bytes = memory.PrivateUsage != 0 ? memory.PrivateUsage : memory.PagefileUsage; // Wine: the latter
    resources = {HandlesOf(process, id), WindowsOf(id), GetGuiResources(process, GR_GDIOBJECTS), bytes / 1024};
    CloseHandle(process);
    return resources;
}

} // namespace bench
