#include "tests/endtoend/Installation.h"

namespace endtoend {
namespace {

/// The library may hold links, which lead out of it and which Wine cannot remove.
void Clear(const fs::path& folder)
{
    std::error_code ignored;
    if (!fs::exists(folder, ignored))
        return;
    if (const std::wstring path = UnixPath(folder); !path.empty() && RunUnixTool(L"rm", {L"-rf", path}))
        WaitFor([&] { return !fs::exists(folder, ignored); });
    else
        fs::remove_all(folder, ignored);
}

} // namespace

Installation::Installation()
    : folder{fs::temp_directory_path() / L"TSBrowser End To End"}, program{folder / L"Program" / ExeName},
      library{folder / L"Library"}
{
    Clear(folder);
    fs::create_directories(program.parent_path());
    fs::copy_file(OwnFolder() / L"..\\.." / ExeName, program);
    WriteFile(library / L"Business" / L"Letter.swt");
    Set(L"Options", L"MSOVersion", L"XP");
    Set(L"Profiles", L"FirstRun", L"0");
    Set(L"Options", L"Installed Path", program.parent_path().wstring());
    Set(L"Browser", L"Access HDD_Templates", L"True");
    Set(L"Browser", L"HDD Templates Path", library.wstring());
}

Installation::~Installation()
{
    Clear(folder);
}

bool Installation::Link(const fs::path& link, const fs::path& target)
{
    const std::wstring folder = UnixPath(link.parent_path());
    return !folder.empty() &&
           RunUnixTool(L"ln", {L"-s", UnixPath(target), folder + L'/' + link.filename().wstring()}) &&
           WaitFor([&] { return fs::exists(link); });
}

fs::path Installation::PutRecorder(const fs::path& file)
{
    fs::create_directories(file.parent_path());
    fs::copy_file(OwnFolder() / L"endtoend_recorder.exe", file);
    return file;
}

std::wstring Installation::Recorded(const fs::path& recorder)
{
    const fs::path record = recorder.wstring() + L".line";
    std::string bytes;
    // When it is there, whoever renamed it may still have it open.
    if (!WaitFor([&] { return !(bytes = ReadFile(record)).empty(); }))
        return L"(nothing was started)";
    fs::remove(record);
    return {reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / sizeof(wchar_t)};
}

} // namespace endtoend
