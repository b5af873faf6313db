#pragma once

#include "ui/win32/WindowsHeader.h"

#include <string>

namespace ui::win32 {

/// Puts the current folder back: the dialogs move it to what the user looks at.
class CurrentFolder {
public:
    CurrentFolder()
    {
        folder.resize(GetCurrentDirectoryW(0, nullptr));
        if (!folder.empty())
            folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
    }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;
    ~CurrentFolder()
    {
        if (!folder.empty())
            SetCurrentDirectoryW(folder.c_str());
    }

private:
    std::wstring folder;
};

} // namespace ui::win32
