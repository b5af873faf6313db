#pragma once

#include "app/base/PatientFiles.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace library {

/// The folder listings of one load. Each folder is enumerated once, however many questions are asked of it, and ahead
/// of the first of them where it can be known; nothing is kept for the next load. Folders are named by their paths
/// relative to the templates path; "" is that itself.
class FolderListings {
public:
    using Listing = platform::Result<std::vector<platform::FileEntry>>;

    /// Folders asked for at a time, so that a server has always something to answer.
    static constexpr std::size_t AtATime = 8;
    /// Folders asked for ahead, at most: a tree of that size is cut off by its readers anyway.
    static constexpr std::size_t MostAhead = 500;
    /// After so many folders without an answer no further one is waited for.
    static constexpr int MostUnanswered = 3;

    FolderListings(app::PatientFiles& files, std::string templatesPath)
        : files{files}, templatesPath{std::move(templatesPath)}
    {
    }

    /// The folders that will be asked for once a folder's listing is known.
    std::function<std::vector<std::string>(const std::string& folder, const std::vector<platform::FileEntry>& listing)>
        FollowersOf;

    /// A folder that is not there (any more) is an empty listing; every other failure is an error: error::Timeout for
    /// one that does not answer. Yields while it waits.
    const Listing& Of(const std::string& folder);
    /// Enumerates anew from here on.
    void Forget();

private:
    struct Asked {
        platform::Answer<Listing> answer;
        bool overdue{}; ///< it was waited for long enough while another one was
    };

    app::PatientFiles& files;
    std::string templatesPath;
    std::unordered_map<std::string, Listing> listings;
    std::map<std::string, Asked> asked;
    std::deque<std::string> waiting;
    std::size_t ahead{};
    int unanswered{};

    void Begin(const std::string& folder);
    void BeginWaiting();
    bool Collect(const std::string& folder, std::chrono::milliseconds patience);
    void Store(const std::string& folder, Listing listing);
};

} // namespace library
