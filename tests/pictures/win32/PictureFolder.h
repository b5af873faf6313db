#pragma once

#include "pictures/PixelSize.h"
#include "platform/win32/Native.h"
#include "platform/win32/Win32FileSystem.h"
#include "tests/pictures/FileBytes.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

/// A folder for the pictures of one test. It goes with them at the end, so none may be held open.
class PictureFolder {
public:
    PictureFolder()
    {
        wchar_t temporary[MAX_PATH]{};
        GetTempPathW(MAX_PATH, temporary);
        MakeFolder(platform::win32::ToUtf8(temporary) + "Pictures \xC3\xA4" + std::to_string(GetCurrentProcessId()));
    }
    PictureFolder(const PictureFolder&) = delete;
    PictureFolder& operator=(const PictureFolder&) = delete;
    ~PictureFolder()
    {
        for (const std::string& file : added)
            EXPECT_TRUE(files.DeleteFile(file)) << file << " is held open";
        for (; !folders.empty(); folders.pop_back())
            EXPECT_TRUE(files.RemoveFolder(folders.back())) << folders.back();
    }

    /// What is added from now on lies in a folder in the last one.
    void GoDeeper(const std::string& name) { MakeFolder(folders.back() + "\\" + name); }
    /// The full path of the new file.
    std::string Add(const std::string& name, const std::string& content)
    {
        const std::string path = folders.back() + "\\" + name;
        if (!added.insert(path).second) {
            EXPECT_TRUE(files.DeleteFile(path)) << path << " is held open";
        }
        EXPECT_TRUE(files.Write(path, content)) << path;
        return path;
    }
    std::string AddSolid(const std::string& name, pictures::PixelSize size, char shade)
    {
        return Add(name, Bitmap(size, size, shade));
    }

private:
    platform::win32::Win32FileSystem files;
    std::vector<std::string> folders;
    std::set<std::string> added;

    void MakeFolder(const std::string& path)
    {
        EXPECT_TRUE(files.CreateFolder(path)) << path;
        folders.push_back(path);
    }
};
