#include "tests/support/win32/Files.h"

#include "platform/win32/WindowsHeader.h"

#include <fstream>

namespace support {

namespace fs = std::filesystem;

fs::path TemporaryFile(const std::wstring& ending)
{
    static int number = 0;
    return fs::temp_directory_path() /
           (std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++number) + ending);
}

void WriteFile(const fs::path& file, const std::string& bytes)
{
    fs::create_directories(file.parent_path());
    std::ofstream{file, std::ios::binary} << bytes;
}

std::string ReadFile(const fs::path& file)
{
    std::ifstream stream{file, std::ios::binary};
    return {std::istreambuf_iterator<char>{stream}, {}};
}

std::map<fs::path, std::string> FilesBelow(const fs::path& folder)
{
    std::map<fs::path, std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator{folder})
        found[entry.path().lexically_relative(folder)] = entry.is_regular_file() ? ReadFile(entry.path()) : "";
    return found;
}

} // namespace support
