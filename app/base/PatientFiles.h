#pragma once

#include "app/base/LoadProgress.h"
#include "platform/FileSystem.h"
#include "platform/Jobs.h"
#include "platform/Scoped.h"
#include "ui/Toolkit.h"

#include <chrono>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace app {

/// The file system as the window's thread may ask it, whatever drive it asks. Each call is made by a job. What has its
/// answer within a moment is as any other call; while a longer one waits the user may act, so whoever calls this holds
/// a guard as for any yield. Reading gives error::Timeout after LongestWait, and error::Cancelled when the window
/// closes meanwhile; a change is waited for until it has ended.
class PatientFiles final : public platform::FileSystem {
public:
    /// What a disk of this machine takes at most; several of them in one go are not noticed either.
    static constexpr std::chrono::milliseconds Moment{10};
    /// Nobody looks at a window for longer without asking whether it will ever come.
    static constexpr std::chrono::seconds LongestWait{5};

    PatientFiles(platform::FileSystem& files, platform::Jobs& jobs, ui::Toolkit& toolkit, const LoadProgress& progress)
        : files{files}, jobs{jobs}, toolkit{toolkit}, progress{progress}
    {
    }

    /// Asks several things of the file system in one job. `work(files)` returns a Result and owns what it works on.
    template <class Work>
    auto Ask(Work work)
    {
        return Await(Begin(std::move(work)));
    }
    /// The same for what can be shown later: calls `done` with the answer, before it returns or from the message loop,
    /// unless the ticket has gone. Where the ticket is empty, it was called. Stands still for a moment at most.
    template <class Work, class Done>
    platform::Ticket Tell(const Work& work, const Done& done, std::chrono::milliseconds patience = Moment)
    {
        if (auto answer = Begin(work); answer.Ended(patience)) {
            done(answer.Take());
            return {};
        }
        return jobs.Start([work, &disk = files](const platform::Cancelled&) mutable { return work(disk); }, done);
    }
    /// Begins to ask.
    template <class Work>
    auto Begin(Work work)
    {
        return jobs.Ask(
            [work = std::move(work), &disk = files](const platform::Cancelled&) mutable { return work(disk); });
    }
    /// Waits for what was begun.
    template <class Outcome>
    Outcome Await(platform::Answer<Outcome> answer, std::chrono::milliseconds atMost = LongestWait)
    {
        const auto comes = Comes([&](std::chrono::milliseconds patience) { return answer.Ended(patience); }, atMost);
        return comes ? answer.Take() : Outcome{std::unexpected{comes.error()}};
    }
    /// Waits until `ended` gives true, which is asked first with the moment that nobody notices; error::Timeout or
    /// error::Cancelled when it does not.
    platform::Result<> Comes(const std::function<bool(std::chrono::milliseconds patience)>& ended,
                             std::chrono::milliseconds atMost);

    /// As long as it lives, and what is asked is waited for by its owner, not by what the user does meanwhile:
    /// whatever waits is given up (error::Cancelled) once `isUnwanted` gives true.
    class Unless {
    public:
        Unless(PatientFiles& files, const std::function<bool()>& isUnwanted) : scope{files.unless, &isUnwanted} {}

    private:
        platform::Scoped<const std::function<bool()>*> scope;
    };

    platform::Result<std::vector<platform::FileEntry>> List(std::string_view folder) override;
    platform::Result<platform::FileEntry> Stat(std::string_view path) override;
    platform::Result<> CopyFile(std::string_view from, std::string_view to) override;
    platform::Result<> Move(std::string_view from, std::string_view to) override;
    platform::Result<> DeleteFile(std::string_view path) override;
    platform::Result<> MakeWritable(std::string_view path) override;
    platform::Result<> RemoveFolder(std::string_view path) override;
    platform::Result<> CreateFolder(std::string_view path) override;
    platform::Result<std::string> Read(std::string_view path, std::uint64_t limit) override;
    platform::Result<std::unique_ptr<platform::ByteSource>> Open(std::string_view path) override;
    platform::Result<> Write(std::string_view path, std::string_view bytes) override;
    platform::Result<> Replace(std::string_view from, std::string_view to) override;

private:
    platform::FileSystem& files;
    platform::Jobs& jobs;
    ui::Toolkit& toolkit;
    const LoadProgress& progress;
    const std::function<bool()>* unless{};
    int momentsInARow{};

    template <class Work>
    auto Change(Work work)
    {
        return Await(Begin(std::move(work)), std::chrono::hours{24});
    }
};

} // namespace app
