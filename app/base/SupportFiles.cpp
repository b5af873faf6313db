#include "app/base/SupportFiles.h"

#include "platform/Path.h"

namespace app {
namespace {

constexpr int IniBuffer = 2048; ///< characters with the terminator

} // namespace

std::string ReadIni(Program& program, std::string_view section, std::string_view key, std::string_view file)
{
    return program.platform.ini.Read(section, key, file, IniBuffer);
}

std::string SupportFile(Program& program, std::string_view key)
{
    const std::string folder = platform::path::Join(program.state.ProgramFolder, "Support");
    const std::string name =
        ReadIni(program, program.state.ProductCaption, key, platform::path::Join(folder, "Support.ini"));
    if (name.empty())
        return {};
    std::string file = platform::path::Join(folder, name);
    const auto entry = program.platform.files.Stat(file);
    return entry && !entry->IsFolder() ? file : std::string{};
}

} // namespace app
