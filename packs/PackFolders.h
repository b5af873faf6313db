#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace packs {

/// A folder of the library that a pack has brought.
struct PackFolder {
    std::string path; ///< relative to the templates path
    /// Names of the files that the pack has put there; nothing when it did not say: then all templates are its own.
    std::optional<std::vector<std::string>> files;

    friend bool operator==(const PackFolder&, const PackFolder&) = default;
};

/// What a pack's installer recorded: a folder a line, each with its files behind it where they are told
/// ("Garden\Flyers|Spring.swt|Autumn.swt"). A line that does not name a folder strictly below the library by plain
/// names, and a file that is more than a name, are left out: they are not the pack's to remove.
std::vector<PackFolder> ParsePackFolders(std::string_view record);

} // namespace packs
