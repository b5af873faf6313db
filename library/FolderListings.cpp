#include "library/FolderListings.h"

#include "library/CategoryPath.h"

#include <algorithm>
#include <utility>

namespace library {

const FolderListings::Listing& FolderListings::Of(const std::string& folder)
{
    if (const auto known = listings.find(folder); known != listings.end())
        return known->second;
    Begin(folder);
    const bool isOverdue = asked.at(folder).overdue || unanswered >= MostUnanswered;
    const auto longest = isOverdue ? std::chrono::milliseconds{} : app::PatientFiles::LongestWait;
    if (const auto failure =
            files.Comes([&](std::chrono::milliseconds patience) { return Collect(folder, patience); }, longest);
        !failure) {
        if (failure.error() == platform::error::Timeout) {
            ++unanswered;
            if (!isOverdue)
                for (auto& [other, entry] : asked)
                    entry.overdue = true;
        }
        asked.erase(folder);
        listings.emplace(folder, std::unexpected{failure.error()});
    }
    return listings.at(folder);
}

void FolderListings::Forget()
{
    listings.clear();
    asked.clear();
    waiting.clear();
    ahead = 0;
    unanswered = 0;
}

void FolderListings::Begin(const std::string& folder)
{
    if (listings.contains(folder) || asked.contains(folder))
        return;
    asked.emplace(folder, Asked{files.Begin([path = DiskPath(templatesPath, folder)](platform::FileSystem& disk) {
                                    return disk.List(path);
                                }),
                                false});
}

void FolderListings::BeginWaiting()
{
    auto underWay =
        static_cast<std::size_t>(std::ranges::count_if(asked, [](const auto& entry) { return !entry.second.overdue; }));
    for (; underWay < AtATime && !waiting.empty(); ++underWay) {
        Begin(waiting.front());
        waiting.pop_front();
    }
}

bool FolderListings::Collect(const std::string& folder, std::chrono::milliseconds patience)
{
    for (auto entry = asked.begin(); entry != asked.end();) {
        const auto next = std::next(entry);
        if (entry->second.answer.Ended(entry->first == folder ? patience : std::chrono::milliseconds{})) {
            auto answered = asked.extract(entry);
            Store(answered.key(), answered.mapped().answer.Take());
        }
        entry = next;
    }
    BeginWaiting();
    return listings.contains(folder);
}

void FolderListings::Store(const std::string& folder, Listing listing)
{
    if (!listing && platform::IsNotThere(listing.error()))
        listing.emplace();
    const auto& stored = listings.emplace(folder, std::move(listing)).first->second;
    if (!FollowersOf || !stored)
        return;
    for (std::string& next : FollowersOf(folder, *stored))
        if (ahead < MostAhead && !listings.contains(next) && !asked.contains(next)) {
            waiting.push_back(std::move(next));
            ++ahead;
        }
}

} // namespace library
