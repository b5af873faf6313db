#include "bench/Disk.h"

#include "platform/win32/Native.h"
#include "platform/win32/System.h"

#include <filesystem>
#include <stdexcept>

namespace bench {
namespace {

using platform::win32::ToUtf16;

template <class Visit>
void ForEach(const std::wstring& pattern, const Visit& visit)
{
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &found, FindExSearchNameMatch, nullptr,
                                           FIND_FIRST_EX_LARGE_FETCH);
    if (search == INVALID_HANDLE_VALUE)
        return;
    do {
        const std::wstring_view name = found.cFileName;
        if (name != L"." && name != L"..")
            visit(found);
    } while (FindNextFileW(search, &found));
    FindClose(search);
}

class Win32Disk final : public Disk {
public:
    Win32Disk()
    {
        wchar_t temp[MAX_PATH + 1];
        if (GetTempPathW(static_cast<DWORD>(std::size(temp)), temp) == 0)
            throw std::runtime_error{"there is no folder for temporary files"};
        root = temp + (L"TS load bench " + std::to_wstring(GetCurrentProcessId()));
        CreateDirectoryW(root.c_str(), nullptr);
    }
    ~Win32Disk() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }

    platform::Platform AsPlatform() override { return system.AsPlatform(); }
    bool IsReal() const override { return true; }
    std::string Root() const override { return platform::win32::ToUtf8(root); }

    void AddFolder(const std::string& path) override
    {
        if (!CreateDirectoryW(ToUtf16(path).c_str(), nullptr))
            throw std::runtime_error{"cannot create " + path};
    }
    void AddFile(const std::string& path) override
    {
        const HANDLE file = CreateFileW(ToUtf16(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE)
            throw std::runtime_error{"cannot create " + path};
        CloseHandle(file);
    }

    std::size_t Enumerate(const std::string& folder) override { return EnumerateNative(ToUtf16(folder)); }

    std::size_t Search(const std::string& folder, std::string_view ending) override
    {
        std::size_t count = 0;
        ForEach(ToUtf16(folder) + L"\\*" + ToUtf16(ending), [&](const WIN32_FIND_DATAW&) { ++count; });
        return count;
    }

private:
    platform::win32::System system{[this](std::function<void()> task) {
        if (Wake)
            Wake(std::move(task));
    }};
    std::wstring root;

    static std::size_t EnumerateNative(const std::wstring& folder)
    {
        std::size_t count = 0;
        ForEach(folder + L"\\*", [&](const WIN32_FIND_DATAW& found) {
            ++count;
            if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
                count += EnumerateNative(folder + L"\\" + found.cFileName);
        });
        return count;
    }
};

} // namespace

std::unique_ptr<Disk> MakeDisk()
{
    return std::make_unique<Win32Disk>();
}

} // namespace bench
