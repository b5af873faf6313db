#pragma once

#include "app/base/PatientFiles.h"
#include "app/base/RegistryAccess.h"
#include "platform/Shell.h"

#include <string>
#include <string_view>

namespace browser {

/// The spreadsheet's working directory, and the copies of spreadsheet templates that are made there.
class SpreadsheetFolder {
public:
    SpreadsheetFolder(app::PatientFiles& files, platform::Shell& shell, const app::RegistryAccess& registry)
        : files{files}, shell{shell}, registry{registry}
    {
    }

    /// Reads the working directory from this registry value (full key path); when it names no folder, the user's
    /// documents folder is taken.
    void GetQuenbyFileOption(std::string_view keyPath, std::string_view valueName);

    const std::string& WorkingDirectory() const { return workingDirectory; }
    void SetWorkingDirectory(std::string folder) { workingDirectory = std::move(folder); }

    /// Copies a ".ccw" file into the working directory (the user's documents folder when it is gone meanwhile) under a
    /// free name, writable, and gives the copy's path. "" for every other file; an error leaves nothing behind.
    platform::Result<std::string> SaveFile(std::string_view fileName, std::string_view folder);

    /// `baseName` & ".ccw", or with the first number 1, 2, 3 ... behind the base name that no file there has.
    std::string FreeName(std::string_view baseName);

private:
    app::PatientFiles& files;
    platform::Shell& shell;
    const app::RegistryAccess& registry;
    std::string workingDirectory;

    void RequireFolder();
};

} // namespace browser
