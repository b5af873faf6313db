#include "library/FolderName.h"

#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <string>

namespace library {
namespace {

bool IsDevice(std::string_view name)
{
    static constexpr std::array<std::string_view, 6> devices{"con", "prn", "aux", "nul", "conin$", "conout$"};
    // A device stays one with an ending and with blanks before it.
    const std::string stem = platform::text::Trimmed(platform::text::Folded(name.substr(0, name.find('.'))));
    if (std::ranges::find(devices, stem) != devices.end())
        return true;
    if (!stem.starts_with("com") && !stem.starts_with("lpt"))
        return false;
    // The system takes these for 1, 2, 3.
    static constexpr std::array<std::string_view, 3> raised{"\u00B9", "\u00B2", "\u00B3"};
    const std::string_view number = std::string_view{stem}.substr(3);
    return (number.size() == 1 && number[0] >= '0' && number[0] <= '9') ||
           std::ranges::find(raised, number) != raised.end();
}

} // namespace

bool HasForbiddenCharacter(std::string_view name)
{
    return name.find_first_of("\\/:*?\"<>|") != std::string_view::npos;
}

bool IsNoFolderName(std::string_view name)
{
    return std::ranges::any_of(name, [](char c) { return static_cast<unsigned char>(c) < 0x20; }) ||
           IsShortened(name) || IsDevice(name);
}

bool IsShortened(std::string_view name)
{
    return name.ends_with('.') || name.ends_with(' ');
}

} // namespace library
