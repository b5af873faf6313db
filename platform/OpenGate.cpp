#include "platform/OpenGate.h"

#include "platform/FileName.h"
#include "platform/Path.h"
#include "platform/Text.h"
#include "platform/WebAddress.h"

#include <algorithm>
#include <array>

namespace platform {

namespace {

/// Types that start something, whether or not this system's own list has them.
// clang-format off
constexpr std::array<std::string_view, 79> startsSomething{
    ".ade", ".adp", ".appcontent-ms", ".appinstaller", ".application", ".appref-ms", ".appx", ".asp", ".bas",
    ".bat", ".chm", ".cmd", ".com", ".cpl", ".crt", ".diagcab", ".dll", ".exe", ".gadget", ".hlp", ".hta", ".img",
    ".inf", ".ins", ".iqy", ".iso", ".isp", ".its", ".jar", ".jnlp", ".js", ".jse", ".ksh", ".library-ms", ".lnk",
    ".mad", ".mht", ".msc", ".msi", ".msix", ".msp", ".ocx", ".pcd", ".pif", ".pl", ".ps1", ".ps1xml", ".psc1",
    ".psm1", ".py", ".pyw", ".rdp", ".reg", ".scf", ".scr", ".sct", ".search-ms", ".settingcontent-ms", ".shb",
    ".shs", ".slk", ".sys", ".theme", ".themepack", ".udl", ".url", ".vb", ".vbe", ".vbs", ".vhd", ".vhdx",
    ".website", ".wll", ".ws", ".wsb", ".wsc", ".wsf", ".wsh", ".xll",
};
// clang-format on

/// Whether each name of the path stands for itself: no device, no ".." that leads elsewhere, no hidden stream, nothing
/// that the system would cut off.
bool IsPlainPath(std::string_view normalized)
{
    if (file_name::HasControlCharacter(normalized) ||
        normalized.substr(2).find_first_of(file_name::ForbiddenInPaths) != std::string_view::npos)
        return false;
    return std::ranges::none_of(text::Split(normalized.substr(2), '\\'), file_name::IsReserved);
}

} // namespace

bool OpenGate::IsHarmlessName(std::string_view name) const
{
    // Beside a name without ending the system would look for a program of that name.
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot + 1 == name.size())
        return false;
    const std::string ending = text::Folded(name.substr(dot));
    const auto is = [&](std::string_view other) { return ending == other; };
    if (std::ranges::any_of(ownEndings, is))
        return true;
    return std::ranges::none_of(startsSomething, is) && !shell.IsDangerous(ending);
}

OpenGate::Verdict OpenGate::Judge(std::string_view target, std::span<const std::string> ownFolders) const
{
    const std::string scheme = text::Folded(target.substr(0, target.find("//")));
    if (scheme == "http:" || scheme == "https:")
        return web_address::IsWebAddress(target) ? Verdict::Opens : Verdict::Refused;
    if (!path::IsAbsolute(target))
        return Verdict::Refused;
    const std::string file = path::Normalized(target);
    const auto isBelow = [&](const std::string& folder) {
        const std::string start = path::Normalized(folder);
        return path::IsAbsolute(start) && path::IsBelow(file, start);
    };
    if (!IsPlainPath(file) || !IsHarmlessName(path::Name(file)) ||
        (file.starts_with("\\\\") && std::ranges::none_of(ownFolders, isBelow)))
        return Verdict::Refused;
    const auto entry = files.Stat(file);
    if (!entry)
        return Verdict::NotThere;
    // A short name ("REPORT~1.SWT") hides the real ending.
    return !entry->IsFolder() && IsHarmlessName(entry->name) ? Verdict::Opens : Verdict::Refused;
}

} // namespace platform
