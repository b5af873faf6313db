#include "search/Finder.h"

#include "library/TemplateFiles.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>
#include <utility>

namespace search {
namespace {

// So much is read in one go before the window hears of it.
constexpr std::size_t FoldersAtOnce = 12;
constexpr std::size_t DocumentsAtOnce = 24;

} // namespace

/// The templates of one folder.
struct Finder::Listing {
    std::string disk;
    std::vector<platform::FileEntry> files;
};

Finder::Finder(platform::FileSystem& files, platform::Locale& locale, platform::Clock& clock, platform::Jobs& jobs,
               const library::DocumentFacts& facts)
    : files{files}, locale{locale}, clock{clock}, jobs{jobs}, reader{facts.ForJobs()},
      index{std::make_shared<Index>(locale)}
{
}

void Finder::Read(std::vector<FolderToRead> library)
{
    underWay.Drop();
    index = std::make_shared<Index>(locale);
    folders = std::move(library);
    foldersRead = nextToHold = nextToDescribe = 0;
    held.clear();
    Begin();
}

void Finder::GoOn()
{
    if (!underWay)
        Begin();
}

void Finder::Stop()
{
    underWay.Drop();
    nextToHold = nextToDescribe = 0; // what was being read comes to its turn again
}

void Finder::SetText(std::string wanted)
{
    text = std::move(wanted);
    GoOn();
}

void Finder::SetCategory(std::string wanted)
{
    category = std::move(wanted);
    nextToHold = 0; // those of the category come to their turn
    if (criteria)
        GoOn();
}

void Finder::SetCriteria(std::optional<Criteria> wanted)
{
    criteria = std::move(wanted);
    held.clear();
    Stop();
    Begin();
}

void Finder::Begin()
{
    if (foldersRead < folders.size())
        ReadFolders();
    else if (auto documents = NextDocuments(); !documents.empty())
        ReadDocuments(std::move(documents));
    else
        underWay.Drop();
}

void Finder::ReadFolders()
{
    const std::size_t end = std::min(foldersRead + FoldersAtOnce, folders.size());
    std::vector<FolderToRead> piece(folders.begin() + static_cast<std::ptrdiff_t>(foldersRead),
                                    folders.begin() + static_cast<std::ptrdiff_t>(end));
    underWay = jobs.Start(
        [piece = std::move(piece),
         &disk = files](const platform::Cancelled& cancelled) -> platform::Result<std::vector<Listing>> {
            std::vector<Listing> listings;
            for (const FolderToRead& folder : piece) {
                if (cancelled)
                    break;
                Listing listing{folder.disk, {}};
                auto entries = disk.List(folder.disk);
                if (!entries && !folder.instead.empty() && platform::IsNotThere(entries.error())) {
                    listing.disk = folder.instead;
                    entries = disk.List(folder.instead);
                }
                if (entries)
                    for (platform::FileEntry& entry : *entries)
                        if (library::IsPlainFile(entry) && library::TemplateTypeOf(entry.name))
                            listing.files.push_back(std::move(entry));
                listings.push_back(std::move(listing));
            }
            return listings;
        },
        [this, end](platform::Result<std::vector<Listing>> read) {
            if (read) // what could not be read is not found
                Take(*read);
            foldersRead = end;
            if (foldersRead == folders.size())
                index->EndAdding();
            Begin();
            if (Changed)
                Changed();
        });
}

void Finder::Take(const std::vector<Listing>& listings)
{
    for (std::size_t i = 0; i < listings.size(); ++i) {
        const std::uint32_t folder = index->AddFolder(folders[foldersRead + i].category, listings[i].disk);
        for (const platform::FileEntry& file : listings[i].files) {
            const std::string name = platform::text::Trimmed(platform::path::WithoutLastFour(file.name));
            if (!IsExcluded || !IsExcluded(name))
                index->Add(folder, *library::TemplateTypeOf(file.name), file);
        }
    }
}

std::vector<std::uint32_t> Finder::NextDocuments()
{
    std::vector<std::uint32_t> next;
    const auto& entries = index->Entries();
    held.resize(entries.size(), Open);
    for (; criteria && nextToHold < entries.size() && next.size() < DocumentsAtOnce; ++nextToHold) {
        const auto number = static_cast<std::uint32_t>(nextToHold);
        if (entries[number].isElsewhere)
            held[number] = Fails;
        else if (held[number] == Open && index->IsIn(number, category))
            next.push_back(number);
    }
    if (!next.empty())
        return next;
    for (; nextToDescribe < entries.size() && next.size() < DocumentsAtOnce; ++nextToDescribe)
        if (!entries[nextToDescribe].isRead)
            next.push_back(static_cast<std::uint32_t>(nextToDescribe));
    return next;
}

void Finder::ReadDocuments(std::vector<std::uint32_t> entries)
{
    struct Document {
        std::string path;
        platform::FileEntry listed;
    };
    std::vector<Document> documents;
    documents.reserve(entries.size());
    for (const std::uint32_t number : entries)
        documents.push_back({index->PathOf(number), index->Entries()[number].AsListed()});
    // Who presses Find Now may have changed a document since its folder was listed.
    underWay = jobs.Start(
        [documents = std::move(documents), from = reader, &disk = files, asksAnew = criteria.has_value()](
            const platform::Cancelled& cancelled) -> platform::Result<std::vector<documents::Facts>> {
            std::vector<documents::Facts> facts;
            for (const Document& document : documents)
                if (!cancelled) {
                    const auto now = asksAnew ? disk.Stat(document.path) : document.listed;
                    facts.push_back(from->Read(document.path, now.value_or(document.listed)));
                }
            return facts;
        },
        [this, entries = std::move(entries)](const platform::Result<std::vector<documents::Facts>>& read) {
            bool isNews = false;
            for (std::size_t i = 0; read && i < read->size() && i < entries.size(); ++i) {
                index->SetSays(entries[i], (*read)[i]);
                if (criteria && index->IsIn(entries[i], category))
                    held[entries[i]] = criteria->Fits((*read)[i], clock, locale) ? Fits : Fails;
                isNews = isNews || held[entries[i]] == Fits || !index->Entries()[entries[i]].says.empty();
            }
            Begin();
            if (Changed && (isNews || !underWay))
                Changed();
        });
}

Finder::Found Finder::Search()
{
    Found found;
    const auto count = static_cast<std::uint32_t>(index->Entries().size());
    for (std::uint32_t number = 0; number < count; ++number)
        found.searched += index->IsIn(number, category) ? 1 : 0;
    if (!IsWanted())
        return found;
    held.resize(count, Open);
    std::vector<std::uint32_t> entries = text.empty() ? index->InOrder() : index->Find(text);
    std::erase_if(entries, [&](std::uint32_t number) {
        if (criteria && held[number] != Fits)
            return true;
        const bool isOutside = !index->IsIn(number, category);
        found.elsewhere += isOutside ? 1 : 0;
        return isOutside;
    });
    found.entries = std::move(entries);
    return found;
}

} // namespace search
