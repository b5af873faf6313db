#include "library/FolderListings.h"

namespace library {

const FolderListings::Listing& FolderListings::Of(const std::string& folder)
{
    const auto [entry, isNew] = listings.try_emplace(folder);
    if (isNew) {
        entry->second = files.List(folder);
        if (!entry->second && platform::IsNotThere(entry->second.error()))
            entry->second.emplace();
    }
    return entry->second;
}

} // namespace library
