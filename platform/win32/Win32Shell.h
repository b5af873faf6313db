#pragma once

#include "platform/Jobs.h"
#include "platform/Shell.h"

#include <utility>

namespace platform::win32 {

class Win32Shell final : public Shell {
public:
    explicit Win32Shell(Post postTask) : post{std::move(postTask)} {}

    int Open(std::string_view target, Verb verb) override;
    bool IsDangerous(std::string_view ending) override;
    std::string Expanded(std::string_view text) override;
    Result<> Run(std::string_view application, std::string_view commandLine, WindowStyle style) override;
    Result<> RunElevated(std::string_view application, std::string_view commandLine, WindowStyle style) override;
    Result<std::uint32_t> RunAndWait(std::string_view application, std::string_view commandLine, WindowStyle style,
                                     std::uint32_t milliseconds) override;
    Result<Ticket> RunAndWatch(std::string_view application, std::string_view commandLine, WindowStyle style,
                               std::function<void(std::uint32_t exitCode)> ended) override;
    Result<> Recycle(std::string_view folder) override;
    Result<WatchedProgram> OpenAndWatch(std::string_view program,
                                        std::function<void(std::uint32_t exitCode)> ended) override;
    Result<Ticket> Watch(const ProcessMark& process, std::function<void(std::uint32_t exitCode)> ended) override;
    Result<std::string> FolderPath(KnownFolder folder) override;

private:
    Post post;
};

} // namespace platform::win32
