#pragma once

#include "app/base/Messages.h"
#include "app/base/Settings.h"

#include <string>
#include <vector>

namespace browser {

/// The templates that were opened last, newest first, as the File menu lists them.
class RecentFiles {
public:
    static constexpr std::size_t Limit = 10;

    RecentFiles(app::Settings& settings, app::Messages& messages) : settings{settings}, messages{messages} {}

    /// Reads the stored list. What is no full path, and what stands there twice, is left out.
    void GetRecentFilesFromRegistry();
    /// Puts the file at the top and stores the list. Documents (".doc") have a list of their own.
    void AddRecentFileToList(const std::string& path);
    /// A failure is told once.
    void SaveRecentFilesToRegistry();
    /// A folder has another name now (full paths): its files are found under the new one, each once.
    void FolderRenamed(const std::string& from, const std::string& to);

    const std::vector<std::string>& List() const { return files; }
    /// The menu's text for entry `number` (1 is the newest): its number, a blank, the file name. "" when the list is
    /// shorter.
    std::string MenuText(std::size_t number) const;

private:
    app::Settings& settings;
    app::Messages& messages;
    std::vector<std::string> files;
};

} // namespace browser
