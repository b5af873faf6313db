#pragma once

#include "platform/FileSystem.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace library {

/// The folder listings of one load. Each folder is enumerated once, however many questions are asked of it; nothing
/// is kept for the next load.
class FolderListings {
public:
    using Listing = platform::Result<std::vector<platform::FileEntry>>;

    explicit FolderListings(platform::FileSystem& files) : files{files} {}

    /// A folder that is not there (any more) is an empty listing; every other failure is an error.
    const Listing& Of(const std::string& folder);
    /// Enumerates anew from here on.
    void Forget() { listings.clear(); }

private:
    platform::FileSystem& files;
    std::unordered_map<std::string, Listing> listings;
};

} // namespace library
