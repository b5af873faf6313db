#pragma once

#include "tests/pictures/FileBytes.h"
#include "tests/support/win32/Files.h"

#include <string>
#include <vector>

namespace prove {

/// Folders with templates of four kinds, half of them with a preview picture. Gives what is in the templates: each
/// holds something else.
inline std::vector<std::string> FillLibrary(const std::filesystem::path& library)
{
    constexpr const wchar_t* endings[] = {L".swt", L".ccw", L".prt", L".mst"};
    std::vector<std::string> contents;
    std::filesystem::create_directories(library / L"Empty");
    for (const wchar_t* const name : {L"Business", L"Letters", L"Letters\\Formal", L"Many"})
        for (int i = 0; i < (name[0] == L'M' ? 120 : 8); ++i) {
            const std::filesystem::path folder = library / name, file = L"Template " + std::to_wstring(i) + L" of " +
                                                                        folder.filename().wstring();
            contents.push_back("contents of " + file.string());
            support::WriteFile(folder / (file.wstring() + endings[i % 4]), contents.back());
            if (i % 2 == 0)
                support::WriteFile(folder / L"Previews" / (file.wstring() + L".jpg"),
                                   Bitmap({200, 150}, {200, 150}, static_cast<char>(i * 40)));
        }
    return contents;
}

} // namespace prove
