#include "app/base/PatientFiles.h"

#include <optional>

namespace app {

using platform::FileSystem;
using platform::Result;

namespace {

/// Holds the user's input, or not.
class Held {
public:
    Held(ui::Toolkit& toolkit, bool holds)
    {
        if (holds)
            hold.emplace(toolkit);
    }

private:
    std::optional<ui::Toolkit::HoldInput> hold;
};

/// For as long as anybody could wait.
constexpr std::chrono::hours forGood{24};

} // namespace

PatientFiles::Operation::Operation(PatientFiles& patientFiles) : files{patientFiles}, outer{patientFiles.operation}
{
    if (outer == nullptr)
        files.operation = this;
}

PatientFiles::Operation::~Operation()
{
    if (outer != nullptr)
        return;
    files.operation = nullptr;
    files.notice.reset();
}

bool PatientFiles::EndsSoon(const Ended& ended)
{
    if (ended({}))
        return true;
    if (!ended(Moment)) {
        momentsInARow = 0;
        return false;
    }
    // One is not noticed, but a hundred are.
    constexpr int unnoticed = 3;
    if (++momentsInARow == unnoticed) {
        momentsInARow = 0;
        const Held held{toolkit, operation != nullptr};
        const Unless others{*this};
        toolkit.DoEvents();
    }
    return true;
}

Result<> PatientFiles::Comes(const Ended& ended, std::chrono::milliseconds atMost)
{
    if (EndsSoon(ended))
        return {};
    const auto* const isUnwanted = unless;
    const auto isGivenUp = [&] { return progress.Cancelled || (isUnwanted != nullptr && (*isUnwanted)()); };
    const Unless others{*this};
    (void)toolkit.WaitUntil([&] { return isGivenUp() || ended({}); }, atMost);
    if (ended({}))
        return {};
    return std::unexpected{isGivenUp() ? platform::error::Cancelled : platform::error::Timeout};
}

Result<> PatientFiles::IsDone(const Ended& ended, std::string_view about)
{
    if (EndsSoon(ended))
        return {};
    Operation* const whole = operation;
    const bool mayBeLeft = whole != nullptr && !whole->hasChanged;
    const Held held{toolkit, whole != nullptr};
    const ui::Hourglass hourglass{toolkit};
    const auto wait = [&](std::chrono::milliseconds atMost) {
        return toolkit.WaitUntil([&] { return progress.Cancelled || ended({}); }, atMost);
    };
    if (!wait(Unexplained)) {
        if (ShowWaiting && !notice)
            notice = ShowWaiting(std::string{about});
        (void)wait(mayBeLeft ? LongestWait - Unexplained : std::chrono::milliseconds{forGood});
    }
    if (progress.Cancelled && !mayBeLeft) // nobody sees the window any more
        (void)toolkit.WaitUntil([&] { return ended({}); }, LongestWait);
    if (whole == nullptr)
        notice.reset();
    if (ended({}))
        return {};
    if (whole != nullptr)
        (progress.Cancelled ? whole->isGivenUp : whole->isDead) = true;
    return std::unexpected{progress.Cancelled ? platform::error::Cancelled : platform::error::Timeout};
}

Result<std::vector<platform::FileEntry>> PatientFiles::List(std::string_view folder)
{
    return Ask(folder, [folder = std::string{folder}](FileSystem& disk) { return disk.List(folder); });
}

Result<platform::FileEntry> PatientFiles::Stat(std::string_view path)
{
    return Ask(path, [path = std::string{path}](FileSystem& disk) { return disk.Stat(path); });
}

Result<std::string> PatientFiles::Read(std::string_view path, std::uint64_t limit)
{
    return Ask(path, [path = std::string{path}, limit](FileSystem& disk) { return disk.Read(path, limit); });
}

Result<std::unique_ptr<platform::ByteSource>> PatientFiles::Open(std::string_view path)
{
    return Ask(path, [path = std::string{path}](FileSystem& disk) { return disk.Open(path); });
}

Result<> PatientFiles::CopyFile(std::string_view from, std::string_view to)
{
    return Change(
        to, [from = std::string{from}, to = std::string{to}](FileSystem& disk) { return disk.CopyFile(from, to); });
}

Result<> PatientFiles::Move(std::string_view from, std::string_view to)
{
    return Change(from,
                  [from = std::string{from}, to = std::string{to}](FileSystem& disk) { return disk.Move(from, to); });
}

Result<> PatientFiles::Replace(std::string_view from, std::string_view to)
{
    return Change(
        to, [from = std::string{from}, to = std::string{to}](FileSystem& disk) { return disk.Replace(from, to); });
}

Result<> PatientFiles::DeleteFile(std::string_view path)
{
    return Change(path, [path = std::string{path}](FileSystem& disk) { return disk.DeleteFile(path); });
}

Result<> PatientFiles::MakeWritable(std::string_view path)
{
    return Change(path, [path = std::string{path}](FileSystem& disk) { return disk.MakeWritable(path); });
}

Result<> PatientFiles::RemoveFolder(std::string_view path)
{
    return Change(path, [path = std::string{path}](FileSystem& disk) { return disk.RemoveFolder(path); });
}

Result<> PatientFiles::CreateFolder(std::string_view path)
{
    // One without an answer can be left: a folder that is made after all is empty.
    return Do(path, operation == nullptr,
              [path = std::string{path}](FileSystem& disk) { return disk.CreateFolder(path); });
}

Result<> PatientFiles::Write(std::string_view path, std::string_view bytes)
{
    return Change(path, [path = std::string{path}, bytes = std::string{bytes}](FileSystem& disk) {
        return disk.Write(path, bytes);
    });
}

} // namespace app
