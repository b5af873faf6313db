#include "platform/FileName.h"

#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <string>

namespace platform::file_name {

bool HasForbiddenCharacter(std::string_view text)
{
    return text.find_first_of(Forbidden) != std::string_view::npos;
}

bool HasControlCharacter(std::string_view text)
{
    return std::ranges::any_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

bool IsDevice(std::string_view name)
{
    static constexpr std::array<std::string_view, 6> devices{"con", "prn", "aux", "nul", "conin$", "conout$"};
    // A device stays one with an ending and with blanks around it.
    const std::string stem = text::Trimmed(text::Folded(name.substr(0, name.find('.'))));
    if (std::ranges::find(devices, stem) != devices.end())
        return true;
    if (!stem.starts_with("com") && !stem.starts_with("lpt"))
        return false;
    const std::string_view number = std::string_view{stem}.substr(3);
    // The system takes the raised digits of its old code page for 1, 2, 3.
    static constexpr std::array<std::string_view, 3> raised{"\u00B9", "\u00B2", "\u00B3"};
    return (number.size() == 1 && number[0] >= '1' && number[0] <= '9') ||
           std::ranges::find(raised, number) != raised.end();
}

bool IsShortened(std::string_view name)
{
    return name.ends_with('.') || name.ends_with(' ');
}

bool IsReserved(std::string_view name)
{
    return IsShortened(name) || IsDevice(name);
}

} // namespace platform::file_name
