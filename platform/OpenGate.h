#pragma once

#include "platform/FileSystem.h"
#include "platform/Shell.h"

#include <span>
#include <string>
#include <string_view>

namespace platform {

/// Guards the way to the shell, which would start whatever it is given. What comes from settings, links, lists of
/// recent files or from outside opens only as a web address, or as a document that is there.
class OpenGate {
public:
    enum class Verdict {
        Opens,
        NotThere, ///< a document's path, and no file there that could be looked at
        Refused   ///< nothing that may ever be opened
    };

    /// `ownEndings` (with their dots, in small letters): the program's own types, which open although the system calls
    /// one of them dangerous.
    OpenGate(Shell& shell, FileSystem& files, std::span<const std::string_view> ownEndings)
        : shell{shell}, files{files}, ownEndings{ownEndings}
    {
    }

    /// Passed are http(s) addresses; and files by absolute path that have an ending which starts no program, on a drive
    /// or, of a share, below one of `ownFolders`: looking at a share tells its server who the user is.
    Verdict Judge(std::string_view target, std::span<const std::string> ownFolders) const;

private:
    Shell& shell;
    FileSystem& files;
    std::span<const std::string_view> ownEndings;

    bool IsHarmlessName(std::string_view name) const;
};

} // namespace platform
