#pragma once

#include "app/base/LoadProgress.h"
#include "platform/FileSystem.h"
#include "platform/Jobs.h"
#include "platform/Scoped.h"
#include "ui/Form.h"
#include "ui/Toolkit.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace app {

/// The file system as the window's thread may ask it, whatever drive it asks. Each call is made by a job. What has its
/// answer within a moment is as any other call; while a longer one waits the user may act, unless it belongs to an
/// Operation, so whoever calls this holds a guard as for any yield. Reading gives error::Timeout after LongestWait, and
/// error::Cancelled when the window closes meanwhile; a change is waited for until it has ended, and for LongestWait
/// once the window has closed.
class PatientFiles final : public platform::FileSystem {
public:
    /// What a disk of this machine takes at most; several of them in one go are not noticed either.
    static constexpr std::chrono::milliseconds Moment{10};
    /// Nobody looks at a window for longer without asking whether it will ever come.
    static constexpr std::chrono::seconds LongestWait{5};
    /// Nobody waits for longer without asking what for.
    static constexpr std::chrono::seconds Unexplained{2};

    PatientFiles(platform::FileSystem& files, platform::Jobs& jobs, ui::Toolkit& toolkit, const LoadProgress& progress)
        : files{files}, jobs{jobs}, toolkit{toolkit}, progress{progress}
    {
    }

    /// Shows what a change waits for (a path) until the result goes.
    std::function<std::unique_ptr<ui::Form>(const std::string& about)> ShowWaiting;
    /// Takes that away: it is the user who is waited for now.
    void EndNotice() { notice.reset(); }

    /// Something that the user asked for which reads and changes in many calls (rename, delete, save). While it lives
    /// he can begin nothing else: his input is held wherever something is waited for, but for closing the window. A
    /// reading without an answer gives the whole of it up as long as nothing was changed: every further call gives
    /// error::Timeout then. From the first change on all is waited for. One in another is part of that.
    class Operation {
    public:
        explicit Operation(PatientFiles& patientFiles);
        Operation(const Operation&) = delete;
        Operation& operator=(const Operation&) = delete;
        ~Operation();
        /// The window was closed, and what had been begun did not end: nobody knows how it will. Every further call
        /// gives error::Cancelled.
        bool IsGivenUp() const { return files.operation->isGivenUp; }

    private:
        PatientFiles& files;
        Operation* const outer;
        bool hasChanged{};
        bool isDead{};
        bool isGivenUp{};
        friend class PatientFiles;
    };

    /// Asks several things of the file system in one job. `work(files)` returns a Result and owns what it works on.
    template <class Work>
    auto Ask(Work work)
    {
        return Ask({}, std::move(work));
    }
    /// The same for what can be shown later: calls `done` with the answer, before it returns or from the message loop,
    /// unless the ticket has gone. Where the ticket is empty, it was called. Stands still for a moment at most.
    template <class Work, class Done>
    platform::Ticket Tell(Work work, Done done, std::chrono::milliseconds patience = Moment)
    {
        auto answer = Begin(std::move(work));
        if (!answer.Ended(patience))
            return std::move(answer).Tell(std::move(done));
        done(answer.Take());
        return {};
    }
    /// Does something about a path that is waited for until it has ended.
    template <class Work>
    auto Change(std::string_view about, Work work)
    {
        return Do(about, true, std::move(work));
    }
    /// Begins to ask.
    template <class Work>
    auto Begin(Work work)
    {
        return jobs.Ask(
            [work = std::move(work), &disk = files](const platform::Cancelled&) mutable { return work(disk); });
    }
    using Ended = std::function<bool(std::chrono::milliseconds patience)>;
    /// Waits until `ended` gives true, which is asked first with the moment that nobody notices; error::Timeout or
    /// error::Cancelled when it does not.
    platform::Result<> Comes(const Ended& ended, std::chrono::milliseconds atMost);

    /// As long as it lives, and what is asked is waited for by its owner, not by what the user does meanwhile:
    /// whatever waits is given up (error::Cancelled) once `isUnwanted` gives true.
    class Unless {
    public:
        Unless(PatientFiles& files, const std::function<bool()>& isUnwanted) : scope{files.unless, &isUnwanted} {}
        /// Around a yield: what the user begins in it is waited for by others.
        explicit Unless(PatientFiles& files) : scope{files.unless, nullptr} {}

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
    Operation* operation{};
    std::unique_ptr<ui::Form> notice;
    int momentsInARow{};

    template <class Work>
    auto Ask(std::string_view about, Work work)
    {
        return Do(about, false, std::move(work));
    }
    template <class Work>
    auto Do(std::string_view about, bool changes, Work work)
    {
        using Outcome = std::invoke_result_t<Work&, platform::FileSystem&>;
        if (operation != nullptr && (operation->isGivenUp || operation->isDead))
            return Outcome{std::unexpected{operation->isDead ? platform::error::Timeout : platform::error::Cancelled}};
        if (operation != nullptr && changes)
            operation->hasChanged = true;
        auto answer = Begin(std::move(work));
        const Ended ended = [&](std::chrono::milliseconds patience) { return answer.Ended(patience); };
        const auto comes = changes || operation != nullptr ? IsDone(ended, about) : Comes(ended, LongestWait);
        return comes ? answer.Take() : Outcome{std::unexpected{comes.error()}};
    }
    /// Waits for a change, or a reading that belongs to one.
    platform::Result<> IsDone(const Ended& ended, std::string_view about);
    /// Whether it has ended before anybody notices.
    bool EndsSoon(const Ended& ended);
};

} // namespace app
