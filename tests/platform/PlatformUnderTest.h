#pragma once

#include "platform/Path.h"
#include "platform/Platform.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

/// Where both systems have it; "/c exit 7" ends it with this code.
inline constexpr std::string_view CommandInterpreter = "C:\\Windows\\System32\\cmd.exe";
inline constexpr unsigned ExitCode = 7;
/// One that ends by itself at once.
inline constexpr std::string_view ShortProgram = "C:\\Windows\\System32\\hostname.exe";
/// An automation class that can be created.
inline constexpr std::string_view GoodClass = "Scripting.FileSystemObject";

/// The system that the contract tests run against, with the means to set its scene. Each executable links one.
class PlatformUnderTest {
public:
    virtual ~PlatformUnderTest() = default;

    virtual platform::Platform Get() = 0;
    /// A folder of the test's own, empty at its start.
    virtual std::string Folder() const = 0;
    virtual void WriteFile(std::string_view path, std::string_view contents) = 0;
    virtual void SetReadOnly(std::string_view path) = 0;
    /// A library with the strings 101 "One", 102 "Größe €" and 103: "x" 600 times.
    virtual std::string ResourceLibraryPath() const = 0;
    /// Lets jobs, timers and watched programs go on and their news arrive, until `condition` holds. False when nothing
    /// more can come (or, on the real system, nothing came in time).
    virtual bool WaitUntil(const std::function<bool()>& condition) = 0;

    /// Makes folders in each other until the path is far longer than the classic bound; the path from Folder().
    std::string MakeDeepFolder(int levels = 20);

    static std::unique_ptr<PlatformUnderTest> Make();
};

/// What a call answered, as one number for tables over calls with different results; 0 when it worked.
template <class T>
std::uint32_t CodeOf(const platform::Result<T>& result)
{
    return result ? 0 : result.error().code;
}

inline std::string PlatformUnderTest::MakeDeepFolder(int levels)
{
    std::string deep;
    for (int i = 0; i < levels; ++i) {
        deep = platform::path::Join(deep, "a folder with a long name " + std::to_string(i));
        (void)Get().files.CreateFolder(platform::path::Join(Folder(), deep));
    }
    return deep;
}
