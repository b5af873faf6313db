#include "ui/win32/FileChooser.h"

#include "ui/win32/CurrentFolder.h"
#include "ui/win32/NativeText.h"

#include <algorithm>

namespace ui::win32 {
namespace {

/// The longest path of the system.
constexpr std::size_t PathBuffer = 0x8000;

/// The system ends each piece of a filter with a zero, and the filter with another.
std::wstring NativeFilter(const std::string& filter)
{
    std::wstring native = ToNative(filter);
    std::ranges::replace(native, L'|', L'\0');
    native.append(2, L'\0');
    return native;
}

} // namespace

std::optional<std::string> ChooseFile(HWND owner, const OpenFileDialog& dialog)
{
    // The dialog moves the current folder whatever it is told.
    const CurrentFolder kept;
    const std::wstring title = ToNative(dialog.title);
    const std::wstring filter = NativeFilter(dialog.filter);
    const std::wstring folder = ToNative(dialog.folder);
    std::wstring path(PathBuffer, L'\0');
    OPENFILENAMEW question{};
    question.lStructSize = sizeof(question);
    question.hwndOwner = owner;
    question.lpstrTitle = title.c_str();
    question.lpstrFilter = dialog.filter.empty() ? nullptr : filter.c_str();
    question.nFilterIndex = 1;
    question.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
    question.lpstrFile = path.data();
    question.nMaxFile = static_cast<DWORD>(path.size());
    question.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    if (!GetOpenFileNameW(&question))
        return std::nullopt;
    return FromNative(path.c_str());
}

} // namespace ui::win32
