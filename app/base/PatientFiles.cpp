#include "app/base/PatientFiles.h"

namespace app {

using platform::FileSystem;
using platform::Result;

Result<> PatientFiles::Comes(const std::function<bool(std::chrono::milliseconds patience)>& ended,
                             std::chrono::milliseconds atMost)
{
    if (ended({}))
        return {};
    if (ended(Moment)) {
        // One is not noticed, but a hundred are.
        constexpr int unnoticed = 3;
        if (++momentsInARow == unnoticed) {
            momentsInARow = 0;
            toolkit.DoEvents();
        }
        return {};
    }
    momentsInARow = 0;
    const auto* const isUnwanted = unless;
    const auto isGivenUp = [&] { return progress.Cancelled || (isUnwanted != nullptr && (*isUnwanted)()); };
    const platform::Scoped others{unless, static_cast<const std::function<bool()>*>(nullptr)};
    (void)toolkit.WaitUntil([&] { return isGivenUp() || ended({}); }, atMost);
    if (ended({}))
        return {};
    return std::unexpected{isGivenUp() ? platform::error::Cancelled : platform::error::Timeout};
}

Result<std::vector<platform::FileEntry>> PatientFiles::List(std::string_view folder)
{
    return Ask([folder = std::string{folder}](FileSystem& disk) { return disk.List(folder); });
}

Result<platform::FileEntry> PatientFiles::Stat(std::string_view path)
{
    return Ask([path = std::string{path}](FileSystem& disk) { return disk.Stat(path); });
}

Result<std::string> PatientFiles::Read(std::string_view path, std::uint64_t limit)
{
    return Ask([path = std::string{path}, limit](FileSystem& disk) { return disk.Read(path, limit); });
}

Result<std::unique_ptr<platform::ByteSource>> PatientFiles::Open(std::string_view path)
{
    return Ask([path = std::string{path}](FileSystem& disk) { return disk.Open(path); });
}

Result<> PatientFiles::CopyFile(std::string_view from, std::string_view to)
{
    return Change(
        [from = std::string{from}, to = std::string{to}](FileSystem& disk) { return disk.CopyFile(from, to); });
}

Result<> PatientFiles::Move(std::string_view from, std::string_view to)
{
    return Change([from = std::string{from}, to = std::string{to}](FileSystem& disk) { return disk.Move(from, to); });
}

Result<> PatientFiles::Replace(std::string_view from, std::string_view to)
{
    return Change(
        [from = std::string{from}, to = std::string{to}](FileSystem& disk) { return disk.Replace(from, to); });
}

Result<> PatientFiles::DeleteFile(std::string_view path)
{
    return Change([path = std::string{path}](FileSystem& disk) { return disk.DeleteFile(path); });
}

Result<> PatientFiles::MakeWritable(std::string_view path)
{
    return Change([path = std::string{path}](FileSystem& disk) { return disk.MakeWritable(path); });
}

Result<> PatientFiles::RemoveFolder(std::string_view path)
{
    return Change([path = std::string{path}](FileSystem& disk) { return disk.RemoveFolder(path); });
}

Result<> PatientFiles::CreateFolder(std::string_view path)
{
    return Change([path = std::string{path}](FileSystem& disk) { return disk.CreateFolder(path); });
}

Result<> PatientFiles::Write(std::string_view path, std::string_view bytes)
{
    return Change(
        [path = std::string{path}, bytes = std::string{bytes}](FileSystem& disk) { return disk.Write(path, bytes); });
}

} // namespace app
