#pragma once

#include "tests/support/TestMachine.h"

#include <map>
#include <set>

namespace tests {

inline constexpr std::string_view ProfilesLine =
    R"(HKCU\Software\Zelmor Software\Zelmor User Profiles\Profiles\)"; ///< of a registry's snapshot

/// How a run of a scenario goes wrong at one of its calls of the system.
enum class Trouble { OneCallFails, NothingWorksFromThereOn, TheWorldChanges, TheProcessDies };

/// Everything on a machine that outlives a process, and what the user was told.
struct Photograph {
    /// Counts as no call of the system, but must not be taken while calls fail.
    explicit Photograph(TestMachine& machine);

    std::map<std::string, std::string> disk, registry;
    /// The values of each profile by name; of a picture that is there, what is in its file.
    std::map<std::string, std::map<std::string, std::string>> profiles;
    Texts favorites, recentFiles;
    Texts told; ///< every message that is no question
};

/// What a scenario may do.
struct Scope {
    /// Beginnings of the paths and of the registry's lines that may change, each to what it is when all goes well.
    Texts touched{};
    /// The profile that it is about: its name afterwards, whether it may go, and the values that may be others.
    std::string profile{}, newName{};
    bool deletesProfile{};
    std::set<std::string> edits{};
    bool isAllOrNothing{};   ///< one failure that is told leaves everything as it was
    bool failsSilently{};    ///< for want of anything that the user could do, or has asked for
    std::size_t messages{1}; ///< in which one failure is told
};

/// One run, over and done with.
struct FaultRun {
    Trouble trouble;
    std::string call;              ///< at which it went wrong; "" when it did not
    std::set<std::string> byWorld; ///< paths and lines that the world has changed on its own

    bool WentWell() const { return call.empty(); }
    /// Whether no program can look any more before it removes: that is the system's own to guard.
    bool IsTooLate() const { return call.contains(".DeleteFile ") || call.contains(".RemoveFolder "); }
    /// Whether what could not be read cannot have been shown.
    bool CouldRead() const;
};

/// What must hold after every run of every scenario, whatever went wrong:
///  1. each value and picture of a profile is there, under the old or the new name; other profiles are as they were;
///  2. an export is entirely the old or the new one, and no temporary file stays;
///  3. nothing but what the scenario is about has changed, neither what links lead to;
///  4. no failure told is the full effect, and the views are what a fresh look gives;
///  5. the registry outside of our keys is as it was;
///  6. the system opened nothing but absolute, allowed targets;
///  7. favourites and recent files: none twice, not too many, in their order, none from nowhere;
///  8. the next start is silent, and shows what is there;
///  9. one failure is told once;
/// 10. a load lists each folder once.
class Invariants {
public:
    /// `before` is the machine when the scenario begins, `after` when all went well.
    Invariants(const Scope& scope, const Photograph& before, const Photograph& after)
        : scope{scope}, before{before}, after{after}
    {
    }

    /// 1 to 4, 6, 7 and 9, of what the run has left.
    void CheckWhatIsLeft(const TestMachine& machine, const Photograph& now, const FaultRun& run) const;
    /// 4, 7 and 10, of the window that is still open; loads the library again. Gives what its tree shows then.
    Texts CheckViews(TestMachine& machine, app::frmMain& main, const FaultRun& run) const;
    /// 5 and 8, in a new process; `shown` is what the old one showed last, if it still could. What was left in the same
    /// way by an earlier run is not started again.
    void CheckNextStart(TestMachine& machine, const FaultRun& run, const std::optional<Texts>& shown);

private:
    const Scope& scope;
    const Photograph& before;
    const Photograph& after;
    using Left = std::pair<std::map<std::string, std::string>, std::map<std::string, std::string>>;
    std::map<Left, Texts> started; ///< the tree that each start has shown, by disk and registry

    bool IsTouched(std::string_view line) const;
    void CheckProfiles(const Photograph& now, const FaultRun& run) const;
    void CheckLines(const Photograph& now, const FaultRun& run) const;
    void CheckMessages(const Photograph& now, const FaultRun& run) const;
    void CheckFavorites(const Photograph& now, const FaultRun& run) const;
    void CheckRecentFiles(const app::frmMain& main, const FaultRun& run) const;
};

} // namespace tests
