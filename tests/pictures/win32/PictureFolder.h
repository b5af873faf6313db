#pragma once

#include "platform/win32/Native.h"
#include "tests/pictures/FileBytes.h"
#include "tests/support/win32/Files.h"

#include <gtest/gtest.h>

#include <set>

/// A folder for the pictures of one test. It goes with them at the end, so none may be held open.
class PictureFolder {
public:
    PictureFolder() = default;
    PictureFolder(const PictureFolder&) = delete;
    PictureFolder& operator=(const PictureFolder&) = delete;
    ~PictureFolder()
    {
        std::error_code ignored;
        for (auto path = made.rbegin(); path != made.rend(); ++path)
            EXPECT_TRUE(std::filesystem::remove(*path, ignored)) << path->wstring() << " is held open";
    }

    /// What is added from now on lies in a folder in the last one.
    void GoDeeper(const std::string& name) { folder /= name; }
    /// The full path of the new file.
    std::string Add(const std::string& name, const std::string& content)
    {
        made.insert({folder, folder / name});
        support::WriteFile(folder / name, content);
        return platform::win32::ToUtf8((folder / name).wstring().substr(AnyLength.size()));
    }
    std::string AddSolid(const std::string& name, pictures::PixelSize size, char shade)
    {
        return Add(name, Bitmap(size, size, shade));
    }

private:
    static constexpr std::wstring_view AnyLength = L"\\\\?\\"; ///< in front of a path that may be long
    std::filesystem::path folder{std::wstring{AnyLength} + support::TemporaryFile(L" \u00e4").wstring()};
    std::set<std::filesystem::path> made; ///< folders come before what is in them
};
