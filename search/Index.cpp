#include "search/Index.h"

#include "platform/Path.h"
#include "platform/Text.h"
#include "search/Words.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace search {
namespace {

/// More words than anybody types; what comes behind them is left out.
constexpr std::size_t MostWords = 8;

std::vector<Word> WantedIn(const std::string& folded)
{
    std::vector<Word> words;
    for (std::string& word : WordsOf(folded))
        if (words.size() < MostWords)
            words.emplace_back(std::move(word));
    if (words.empty())
        if (std::string signs = platform::text::Trimmed(folded); !signs.empty())
            words.emplace_back(std::move(signs));
    return words;
}

/// Where a word was found; what counts more comes first.
enum class Place { NameStart, Name, Says, Folder };

struct Found {
    Fit fit{Fit::None};
    Place place{};
    friend auto operator<=>(const Found&, const Found&) = default;
};

/// What one entry is worth; less is better.
struct Worth {
    int worst{}, fits{}, places{};
    friend auto operator<=>(const Worth&, const Worth&) = default;
};

Found FoundIn(const Word& word, const Index::Entry& entry, Fit inFolder)
{
    const Fit inName = word.In(entry.name);
    Found best{inName, Place::Name};
    if (inName == Fit::Beginning && word.Begins(entry.name))
        best.place = Place::NameStart;
    if (best.fit != Fit::Beginning && !entry.says.empty())
        best = std::min(best, Found{word.In(entry.says), Place::Says});
    return std::min(best, Found{inFolder, Place::Folder});
}

/// FILE_ATTRIBUTE_OFFLINE, _RECALL_ON_OPEN and _RECALL_ON_DATA_ACCESS: a whole library in a cloud drive would come down
/// the line because somebody looks for a word.
constexpr std::uint32_t KeptElsewhere = 0x1000 | 0x40000 | 0x400000;

} // namespace

std::uint32_t Index::AddFolder(std::string category, std::string disk)
{
    std::string folded = Folded(locale, category);
    folders.push_back({std::move(category), std::move(disk), std::move(folded)});
    return static_cast<std::uint32_t>(folders.size() - 1);
}

void Index::Add(std::uint32_t folder, std::size_t type, const platform::FileEntry& listed)
{
    const bool isElsewhere = (listed.attributes & KeptElsewhere) != 0;
    entries.push_back({.file = listed.name,
                       .name = Folded(locale, platform::path::WithoutLastFour(listed.name)),
                       .size = listed.size,
                       .modified = listed.modified,
                       .folder = folder,
                       .type = static_cast<std::uint8_t>(type),
                       .isRead = isElsewhere,
                       .isElsewhere = isElsewhere});
}

void Index::SetSays(std::uint32_t entry, const documents::Facts& facts)
{
    Entry& described = entries.at(entry);
    described.isRead = true;
    std::string says;
    for (const std::string* text : {&facts.title, &facts.keywords, &facts.author}) {
        constexpr std::size_t most = 200; // characters of each: what is longer is hardly a name
        if (!text->empty())
            says += Folded(locale, platform::text::Left(*text, most)) + "\n";
    }
    described.says = std::move(says);
}

std::string Index::PathOf(std::uint32_t entry) const
{
    const Entry& found = entries.at(entry);
    return platform::path::Join(folders[found.folder].disk, found.file);
}

bool Index::IsIn(std::uint32_t entry, std::string_view category) const
{
    const std::string& own = folders[entries.at(entry).folder].category;
    return category.empty() || platform::text::EqualIgnoringCase(own, category) ||
           platform::path::IsBelow(own, category);
}

const std::vector<std::uint32_t>& Index::InOrder()
{
    if (order.size() < entries.size()) {
        const auto sorted = static_cast<std::ptrdiff_t>(order.size());
        while (order.size() < entries.size())
            order.push_back(static_cast<std::uint32_t>(order.size()));
        const auto before = [this](std::uint32_t a, std::uint32_t b) {
            const Entry& one = entries[a];
            const Entry& other = entries[b];
            return std::tie(one.name, one.folder, one.file) < std::tie(other.name, other.folder, other.file);
        };
        std::sort(order.begin() + sorted, order.end(), before);
        std::inplace_merge(order.begin(), order.begin() + sorted, order.end(), before);
    }
    return order;
}

std::vector<std::uint32_t> Index::Find(std::string_view text)
{
    const std::vector<Word> words = WantedIn(Folded(locale, text));
    if (words.empty())
        return {};
    std::vector<Fit> inFolders; // one row a folder
    inFolders.reserve(folders.size() * words.size());
    for (const Folder& folder : folders)
        for (const Word& word : words)
            inFolders.push_back(word.In(folder.folded));

    std::vector<std::pair<Worth, std::uint32_t>> found;
    for (const std::uint32_t number : InOrder()) {
        const Entry& entry = entries[number];
        const Fit* inFolder = &inFolders[entry.folder * words.size()];
        Worth worth;
        const bool all = std::ranges::all_of(words, [&](const Word& word) {
            const Found best = FoundIn(word, entry, *inFolder++);
            worth.worst = std::max(worth.worst, static_cast<int>(best.fit));
            worth.fits += static_cast<int>(best.fit);
            worth.places += static_cast<int>(best.place);
            return best.fit != Fit::None;
        });
        if (all)
            found.emplace_back(worth, number);
    }
    std::ranges::stable_sort(found, {}, &std::pair<Worth, std::uint32_t>::first);
    std::vector<std::uint32_t> numbers;
    numbers.reserve(found.size());
    for (const auto& [worth, number] : found)
        numbers.push_back(number);
    return numbers;
}

} // namespace search
