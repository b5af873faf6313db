#include "library/DocumentFacts.h"

#include "documents/Read.h"
#include "platform/ByteSource.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace library {
namespace {

/// What one file says, its texts one behind the other: a library has many files, and most leave most texts empty.
class PackedFacts {
public:
    explicit PackedFacts(const documents::Facts& facts)
        : created{Packed(facts.created)}, saved{Packed(facts.saved)}, pages{facts.pages}
    {
        std::size_t length = 0;
        for (const auto text : Texts)
            length += (facts.*text).size();
        texts.reserve(length);
        auto* end = ends.begin();
        for (const auto text : Texts) {
            texts += facts.*text;
            *end++ = static_cast<std::uint16_t>(texts.size());
        }
    }
    documents::Facts Unpacked() const
    {
        documents::Facts facts;
        std::size_t start = 0;
        const auto* end = ends.begin();
        for (const auto text : Texts) {
            facts.*text = texts.substr(start, *end - start);
            start = *end++;
        }
        facts.created = Unpacked(created);
        facts.saved = Unpacked(saved);
        facts.pages = pages;
        return facts;
    }

private:
    using Facts = documents::Facts;
    static constexpr std::array Texts{&Facts::title,    &Facts::subject, &Facts::author,  &Facts::keywords,
                                      &Facts::comments, &Facts::company, &Facts::manager, &Facts::category};
    static_assert(Texts.size() * Facts::MostText <= 0xFFFF);

    std::string texts;
    std::array<std::uint16_t, Texts.size()> ends{}; ///< of each in `texts`
    std::int64_t created, saved;
    int pages;

    /// In the last bit whether it is local; the steps since 1601 leave one free at the other end.
    static constexpr std::int64_t NoDate = -1;
    static std::int64_t Packed(const std::optional<documents::Date>& date)
    {
        return date ? date->time * 2 + (date->isLocal ? 1 : 0) : NoDate;
    }
    static std::optional<documents::Date> Unpacked(std::int64_t packed)
    {
        return packed == NoDate ? std::nullopt : std::optional{documents::Date{packed / 2, packed % 2 != 0}};
    }
};

} // namespace

/// The answers, shared with the jobs, which may outlive whoever began them.
class DocumentFacts::Kept final : public Reader {
public:
    Kept(platform::FileSystem& fileSystem, const platform::Locale& userLocale) : files{fileSystem}, locale{userLocale}
    {
    }

    documents::Facts Read(const std::string& path, const platform::FileEntry& entry) override
    {
        const std::string key = platform::text::Folded(platform::path::Normalized(path));
        {
            const std::lock_guard lock{mutex};
            const auto found = answers.find(key);
            if (found != answers.end() && found->second.size == entry.size && found->second.modified == entry.modified)
                return found->second.facts.Unpacked();
        }
        const auto bytes = files.Open(path);
        if (!bytes)
            return {}; // and asked for again the next time: another program may have let go of it
        if (entry.size > 0 && platform::ReadBytes(**bytes, 0, 1).empty())
            return {}; // the share has gone, or another program reads it alone
        documents::Facts facts = documents::Read(**bytes, [this](std::uint32_t codePage, std::string_view text) {
            return locale.FromCodePage(codePage, text);
        });
        const std::lock_guard lock{mutex};
        if (answers.size() >= Most)
            answers.clear();
        answers.insert_or_assign(key, Answer{entry.size, entry.modified, PackedFacts{facts}});
        return facts;
    }

private:
    /// Beyond any library; only there so that memory has a bound.
    static constexpr std::size_t Most = 20'000;
    struct Answer {
        std::uint64_t size;
        platform::FileTime modified;
        PackedFacts facts;
    };

    platform::FileSystem& files;
    const platform::Locale& locale;
    std::mutex mutex;
    std::unordered_map<std::string, Answer> answers; ///< by folded path
};

DocumentFacts::DocumentFacts(platform::FileSystem& files, platform::Locale& locale, platform::Jobs& jobs)
    : files{files}, jobs{jobs}, kept{std::make_shared<Kept>(files, locale)}
{
}

platform::Ticket DocumentFacts::Ask(std::string path, Told told)
{
    return jobs.Start(
        [path = std::move(path), &disk = files,
         reader = kept](const platform::Cancelled&) -> platform::Result<DescribedFile> {
            auto entry = disk.Stat(path);
            if (!entry)
                return std::unexpected{entry.error()};
            documents::Facts facts = reader->Read(path, *entry);
            return DescribedFile{*std::move(entry), std::move(facts)};
        },
        [told = std::move(told)](const platform::Result<DescribedFile>& described) { told(described); });
}

std::shared_ptr<DocumentFacts::Reader> DocumentFacts::ForJobs() const
{
    return kept;
}

} // namespace library
