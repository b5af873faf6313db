#include "ui/win32/FolderBrowser.h"

#include "ui/win32/CurrentFolder.h"
#include "ui/win32/NativeHandle.h"
#include "ui/win32/NativeText.h"

namespace ui::win32 {
namespace {

struct ShellMemoryFree {
    void operator()(wchar_t* text) const { CoTaskMemFree(text); }
    void operator()(ITEMIDLIST* list) const { CoTaskMemFree(list); }
};

/// The longest path that the older dialog gives.
constexpr std::size_t PathBuffer = 1024;

void StartAt(IFileOpenDialog& dialog, const std::string& initial)
{
    void* item = nullptr;
    if (initial.empty() ||
        FAILED(SHCreateItemFromParsingName(ToNative(initial).c_str(), nullptr, IID_IShellItem, &item)))
        return;
    const ComPointer<IShellItem> folder{static_cast<IShellItem*>(item)};
    dialog.SetFolder(folder.get());
}

std::optional<std::string> AskNewer(IFileOpenDialog& dialog, HWND owner, const std::string& prompt,
                                    const std::string& initial)
{
    DWORD options = 0;
    dialog.GetOptions(&options);
    dialog.SetOptions(options | FOS_PICKFOLDERS | FOS_FORCEFILESYSTEM | FOS_PATHMUSTEXIST | FOS_NOCHANGEDIR);
    dialog.SetTitle(ToNative(prompt).c_str());
    StartAt(dialog, initial);
    IShellItem* chosen = nullptr;
    if (FAILED(dialog.Show(owner)) || FAILED(dialog.GetResult(&chosen)))
        return std::nullopt;
    const ComPointer<IShellItem> item{chosen};
    wchar_t* path = nullptr;
    if (FAILED(item->GetDisplayName(SIGDN_FILESYSPATH, &path)))
        return std::nullopt;
    const std::unique_ptr<wchar_t, ShellMemoryFree> held{path};
    return FromNative(path);
}

int CALLBACK SelectInitial(HWND dialog, UINT message, LPARAM, LPARAM initial) noexcept
{
    if (message == BFFM_INITIALIZED && *reinterpret_cast<const wchar_t*>(initial) != 0)
        SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, initial);
    return 0;
}

std::optional<std::string> AskOlder(HWND owner, const std::string& prompt, const std::string& initial)
{
    const std::wstring title = ToNative(prompt);
    const std::wstring start = ToNative(initial);
    BROWSEINFOW info{};
    info.hwndOwner = owner;
    info.lpszTitle = title.c_str();
    info.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
    info.lpfn = &SelectInitial;
    info.lParam = reinterpret_cast<LPARAM>(start.c_str());
    const std::unique_ptr<ITEMIDLIST, ShellMemoryFree> chosen{SHBrowseForFolderW(&info)};
    std::wstring path(PathBuffer, L'\0');
    if (!chosen || !SHGetPathFromIDListEx(chosen.get(), path.data(), static_cast<DWORD>(path.size()), GPFIDL_DEFAULT))
        return std::nullopt;
    return FromNative(path.c_str());
}

} // namespace

std::optional<std::string> ChooseFolder(HWND owner, const std::string& prompt, const std::string& initial)
{
    const CurrentFolder kept;
    if (const auto dialog = CreateComObject<IFileOpenDialog>(CLSID_FileOpenDialog, IID_IFileOpenDialog))
        return AskNewer(*dialog, owner, prompt, initial);
    return AskOlder(owner, prompt, initial);
}

} // namespace ui::win32
