#pragma once

#include "app/base/Messages.h"
#include "app/base/PatientFiles.h"
#include "app/base/Settings.h"
#include "app/base/StringTable.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "platform/Registry.h"

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace browser {

/// The documents that the user made or opened, with the moment at which each was recorded, one registry value a
/// document. Two stores are read: the browser's own, and the one that the suite's other programs keep under a name of
/// their own. Nothing is kept between two readings.
class RecentDocuments {
public:
    /// One value of one of the stores.
    struct Stored {
        platform::Hive hive;
        std::string key, name;
    };
    struct Document {
        std::string path;
        std::string recorded; ///< "2004-03-17 15:04:05", or the day alone; "" when nobody wrote it down
        std::vector<Stored> stored;
        std::optional<platform::FileTime> modified; ///< of the file, where it could be seen
        bool isGone{};                              ///< surely: its drive or share is there, the document is not
    };

    RecentDocuments(platform::Registry& registry, app::PatientFiles& files, platform::Clock& clock,
                    app::Settings& settings, app::Messages& messages, const app::StringTable& strings)
        : registry{registry}, files{files}, clock{clock}, settings{settings}, messages{messages}, strings{strings}
    {
    }

    /// Records the document under the present moment. A failure is told.
    void Add(const std::string& path);

    /// Reads both stores, the document recorded last first, and looks once at each document. A drive or server that
    /// does not answer is not asked again: each question may take a network's time. `seen` is called whenever more is
    /// known of some that did not answer at once, as long as the list is not read again.
    void GetHistoryListFromRegistry(const std::function<void()>& seen);
    /// Whoever waits for it goes.
    void StopLooking() { lookUps.clear(); }
    /// Drops the documents that are gone. One whose drive or share is away is not gone.
    void ValidateFilesFromHistoryList();
    /// Drops the documents that are older than the time period. The day that counts is the file's own or the one on
    /// which it was recorded, whichever is later: a document made just now keeps the date of its template at first.
    void ValidateHistoryTimePeriod();
    /// The same for the documents that cannot be seen: of them, only the day on which they were recorded is known.
    void ValidateHistoryTimePeriodNew();
    const std::vector<Document>& List() const { return documents; }

    /// Removes the document from the list and from both stores; false when it is still stored, which the user is told.
    bool Remove(const std::string& path);
    /// Removes all; stops at the first failure.
    bool Clear();

    /// Months; what is stored is no number, or out of range: 12, or the nearest bound.
    int TimePeriod() const;
    bool SaveTimePeriod(int months);
    static constexpr int LeastMonths = 1, MostMonths = 32767;

private:
    platform::Registry& registry;
    app::PatientFiles& files;
    platform::Clock& clock;
    app::Settings& settings;
    app::Messages& messages;
    const app::StringTable& strings;
    std::vector<Document> documents;
    std::vector<platform::Ticket> lookUps;

    using Places = std::map<std::string, std::size_t>; ///< of the documents in the list, by the keys of their paths
    void Read(platform::Hive hive, const std::string& key, Places& places);
    /// What became of documents, by their paths: when they were modified, and whether they are gone.
    using Sights = std::map<std::string, std::pair<std::optional<platform::FileTime>, bool>>;
    static Sights LookAt(platform::FileSystem& disk, const std::vector<std::string>& paths);
    void LookAtFiles(const std::function<void()>& seen);
    bool Delete(const Document& document);
    /// Whether it was recorded, and too long ago; `unknown` when nobody wrote it down.
    bool WasRecordedTooLongAgo(const Document& document, bool unknown) const;
};

/// Whether a document of this day is older than `months` on `today`. The months are counted as calendar months; in the
/// first and the last of them the day of the month decides. A day later in the current month, or beyond the next
/// calendar year, is a wrong clock's and counts as too old.
bool IsTooOld(const platform::LocalTime& document, const platform::LocalTime& today, int months);

} // namespace browser
