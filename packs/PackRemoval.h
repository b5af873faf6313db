#pragma once

#include "packs/SolutionPack.h"
#include "platform/FileSystem.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace packs {

/// Takes what packs have brought out of the library: of their folders the files that are theirs, the pictures of those
/// in "Previews", and the folders themselves when nothing is in them any more. What another pack names as well stays.
/// Nothing is followed through a link, and folders that no pack names are not looked into.
class PackRemoval {
public:
    /// `removed` go, `others` stay.
    PackRemoval(platform::FileSystem& files, std::string templatesPath, const std::vector<SolutionPack>& removed,
                const std::vector<SolutionPack>& others);

    void Run();

    /// Files and folders that somebody else has put into the folders, relative to the templates path.
    const std::vector<std::string>& Kept() const { return kept; }
    /// What should have gone and is still there, as far as that is known, in the same way.
    const std::vector<std::string>& NotRemoved() const { return notRemoved; }

private:
    /// What packs say is theirs in one folder.
    struct Claim {
        std::string path;
        bool isWhole{};              ///< all templates
        std::set<std::string> names; ///< folded

        void Add(const PackFolder& folder);
        bool Has(std::string_view file) const;
        bool HasPreview(std::string_view picture) const;
    };
    using Claims = std::map<std::string, Claim>; ///< by folded path

    /// What is at a folder's path.
    enum class Standing {
        Own,     ///< a folder, as all above it
        Gone,    ///< nothing
        Foreign, ///< a link or a file, in it or above it, or a folder called otherwise
        Unknown
    };

    platform::FileSystem& files;
    std::string templatesPath;
    Claims removedClaims, otherClaims;
    std::vector<std::string> kept, notRemoved;

    static Claims ClaimsOf(const std::vector<SolutionPack>& packs);
    Standing StandingOf(const std::string& folder) const;
    /// Whether the folder is the packs' own; what else it is or may be is noted.
    bool IsOwn(const std::string& folder);
    void RemoveFolder(const Claim& claim, const Claim* other);
    using Belongs = std::function<bool(std::string_view file)>;
    /// Deletes what is the removed packs' own alone.
    void Empty(const std::string& folder, const Belongs& isOurs, const Belongs& isTheirs);
    /// Read-only files, too.
    platform::Result<> DeleteFile(const std::string& file, const platform::FileEntry& entry);
    bool IsOfPacks(const std::string& folder) const;
    void RemoveWhenEmpty(const std::string& folder);
};

} // namespace packs
