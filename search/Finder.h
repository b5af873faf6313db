#pragma once

#include "library/DocumentFacts.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "platform/Jobs.h"
#include "platform/Locale.h"
#include "search/Criteria.h"
#include "search/Index.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace search {

/// Searches the library. Its names, and what its documents say of themselves, are read off the window's thread, a few
/// at a time; what is found so far can be asked for at any moment.
class Finder {
public:
    Finder(platform::FileSystem& files, platform::Locale& locale, platform::Clock& clock, platform::Jobs& jobs,
           const library::DocumentFacts& facts);

    /// Base names of templates that are never shown.
    std::function<bool(const std::string& baseName)> IsExcluded;
    /// More is known than before, or all of it.
    std::function<void()> Changed;

    struct FolderToRead {
        std::string category; ///< relative to the templates path
        std::string disk;     ///< full path
        std::string instead;  ///< where its files lie when it is not there; "" for nowhere else
    };
    /// Reads these folders, which take the place of those before.
    void Read(std::vector<FolderToRead> library);
    /// Goes on where Stop ended it.
    void GoOn();
    /// What is found stays.
    void Stop();
    bool IsReading() const { return static_cast<bool>(underWay); }

    // What is looked for: what all of them let through.
    /// A text, as Index::Find takes it; "" for any.
    void SetText(std::string wanted);
    const std::string& Text() const { return text; }
    /// Templates of this category and those below it; "" for all.
    void SetCategory(std::string wanted);
    /// Documents that say so of themselves. They are read again, as far as they have changed.
    void SetCriteria(std::optional<Criteria> wanted);
    bool IsWanted() const { return !text.empty() || criteria; }

    struct Found {
        std::vector<std::uint32_t> entries; ///< the best first
        std::size_t elsewhere{};            ///< how many more the other categories have
        std::size_t searched{};             ///< templates that were looked at
    };
    Found Search();
    std::shared_ptr<Index> Contents() const { return index; }

private:
    platform::FileSystem& files;
    platform::Locale& locale;
    platform::Clock& clock;
    platform::Jobs& jobs;
    std::shared_ptr<library::DocumentFacts::Reader> reader;
    std::shared_ptr<Index> index;
    std::vector<FolderToRead> folders;
    std::size_t foldersRead{};
    std::string text;
    std::string category;
    std::optional<Criteria> criteria;
    std::vector<std::uint8_t> held; ///< by entry: what the criteria said of it (Verdict)
    std::size_t nextToHold{};
    std::size_t nextToDescribe{};
    platform::Ticket underWay;

    enum Verdict : std::uint8_t { Open, Fits, Fails };
    struct Listing;

    void ReadFolders();
    void ReadDocuments(std::vector<std::uint32_t> entries);
    std::vector<std::uint32_t> NextDocuments();
    void Begin();
    void Take(const std::vector<Listing>& listings);
};

} // namespace search
