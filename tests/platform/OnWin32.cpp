#include "PlatformUnderTest.h"

#include "platform/Path.h"
#include "platform/win32/Native.h"
#include "platform/win32/System.h"

#include <deque>
#include <mutex>
#include <stdexcept>

namespace {

using namespace platform;

/// Removes what an earlier test left, links themselves and not what they point at.
void Empty(FileSystem& files, const std::string& folder)
{
    for (const FileEntry& entry : files.List(folder).value_or(std::vector<FileEntry>{})) {
        const std::string path = path::Join(folder, entry.name);
        if (entry.IsFolder() && !entry.IsLink())
            Empty(files, path);
        SetFileAttributesW(win32::ToNativePath(path)->c_str(), FILE_ATTRIBUTE_NORMAL);
        (void)(entry.IsFolder() ? files.RemoveFolder(path) : files.DeleteFile(path));
    }
}

class OnWin32 final : public PlatformUnderTest {
public:
    OnWin32()
    {
        (void)CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        wchar_t buffer[MAX_PATH];
        GetTempPathW(MAX_PATH, buffer);
        folder = path::Join(win32::ToUtf8(buffer), "TSBrowserContract");
        (void)Get().files.CreateFolder(folder);
        Empty(Get().files, folder);
    }
    ~OnWin32() override
    {
        Empty(Get().files, folder);
        (void)Get().files.RemoveFolder(folder);
        CoUninitialize();
    }

    Platform Get() override { return system.AsPlatform(); }
    std::string Folder() const override { return folder; }
    void WriteFile(std::string_view path, std::string_view contents) override
    {
        (void)Get().files.DeleteFile(path);
        if (!Get().files.Write(path, contents))
            throw std::runtime_error{"cannot write " + std::string{path}};
    }
    void SetReadOnly(std::string_view path, bool readOnly) override
    {
        SetFileAttributesW(win32::ToNativePath(path)->c_str(),
                           readOnly ? FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE : FILE_ATTRIBUTE_ARCHIVE);
    }
    std::string ResourceLibraryPath() const override
    {
        return path::Join(win32::Win32Shell{{}}.FolderPath(KnownFolder::ProgramFolder).value(),
                          "platform_test_strings.dll");
    }
    std::string GoodClass() override { return "Scripting.FileSystemObject"; }
    bool WaitUntil(const std::function<bool()>& condition) override
    {
        const ULONGLONG start = GetTickCount64();
        while (!condition()) {
            if (const auto task = Taken()) {
                task();
                continue;
            }
            if (GetTickCount64() - start > 60'000)
                return false;
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 100, QS_ALLINPUT);
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
                DispatchMessageW(&message);
        }
        return true;
    }

private:
    std::function<void()> Taken()
    {
        const std::lock_guard lock{mutex};
        if (tasks.empty())
            return {};
        auto task = std::move(tasks.front());
        tasks.pop_front();
        return task;
    }

    std::mutex mutex;
    std::deque<std::function<void()>> tasks;
    win32::System system{[this, thread = GetCurrentThreadId()](std::function<void()> task) {
        const std::lock_guard lock{mutex};
        tasks.push_back(std::move(task));
        PostThreadMessageW(thread, WM_NULL, 0, 0);
    }};
    std::string folder;
};

} // namespace

std::unique_ptr<PlatformUnderTest> PlatformUnderTest::Make()
{
    return std::make_unique<OnWin32>();
}
