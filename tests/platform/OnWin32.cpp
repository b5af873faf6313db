#include "PlatformUnderTest.h"

#include "platform/Path.h"
#include "platform/win32/Native.h"
#include "platform/win32/System.h"
#include "tests/support/win32/Process.h"

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
    void SetReadOnly(std::string_view path) override
    {
        SetFileAttributesW(win32::ToNativePath(path)->c_str(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE);
    }
    std::string ResourceLibraryPath() const override
    {
        return win32::ToUtf8((support::OwnFolder() / L"platform_test_strings.dll").wstring());
    }
    bool WaitUntil(const std::function<bool()>& condition) override
    {
        return support::WaitFor([&] {
            std::deque<std::function<void()>> now;
            {
                const std::lock_guard lock{mutex};
                now.swap(tasks);
            }
            for (const auto& task : now)
                task();
            return condition();
        });
    }

private:
    std::mutex mutex;
    std::deque<std::function<void()>> tasks;
    win32::System system{[this, thread = GetCurrentThreadId()](std::function<void()> task) {
        const std::lock_guard lock{mutex};
        tasks.push_back(std::move(task));
        PostThreadMessageW(thread, WM_NULL, 0, 0);
    }};
    const std::string folder{win32::ToUtf8((std::filesystem::temp_directory_path() / L"TSBrowserContract").wstring())};
};

} // namespace

std::unique_ptr<PlatformUnderTest> PlatformUnderTest::Make()
{
    return std::make_unique<OnWin32>();
}
