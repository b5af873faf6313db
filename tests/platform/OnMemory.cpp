#include "PlatformUnderTest.h"

#include "platform/memory/System.h"

namespace {

class OnMemory final : public PlatformUnderTest {
public:
    OnMemory()
    {
        system.files.AddFolder(Folder());
        system.shell.RemoveAssociation(".unknownending");
        system.resources.Add(ResourceLibraryPath(), {{101, "One"}, {102, "Größe €"}, {103, std::string(600, 'x')}});
        system.automation.Register(std::string{GoodClass});
        system.files.AddFile(CommandInterpreter);
        system.files.AddFile(ShortProgram);
        system.shell.SetVariable("SystemRoot", "C:\\Windows");
    }

    platform::Platform Get() override { return system.AsPlatform(); }
    std::string Folder() const override { return "C:\\Temp\\Contract"; }
    void WriteFile(std::string_view path, std::string_view contents) override { system.files.AddFile(path, contents); }
    void SetReadOnly(std::string_view path) override
    {
        system.files.SetAttributes(path, platform::attribute::Archive | platform::attribute::ReadOnly);
    }
    std::string ResourceLibraryPath() const override { return "C:\\Temp\\strings.dll"; }
    bool WaitUntil(const std::function<bool()>& condition) override
    {
        while (!condition()) {
            if (system.jobs.Count() > 0)
                system.jobs.Finish();
            else if (system.shell.Watched() > 0)
                system.shell.EndWatched(ExitCode);
            else if (!system.timers.Running().empty())
                system.timers.Elapse();
            else
                return false;
        }
        return true;
    }

private:
    platform::memory::System system;
};

} // namespace

std::unique_ptr<PlatformUnderTest> PlatformUnderTest::Make()
{
    return std::make_unique<OnMemory>();
}
