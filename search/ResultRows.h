#pragma once

#include "app/base/StringTable.h"
#include "browser/RowSource.h"
#include "browser/Thumbnails.h"
#include "library/TemplateFiles.h"
#include "search/Index.h"

#include <bitset>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace search {

/// What a search has found, in its order. "In Folder" is the full path of the template's folder.
class ResultRows final : public browser::RowSource {
public:
    /// Which kinds of templates are wanted, by their positions.
    using Types = std::bitset<library::TemplateKinds.size()>;

    struct Results {
        std::shared_ptr<const Index> index;
        std::vector<std::uint32_t> entries;
        std::size_t searched{};
        Types types;
        bool isComplete{};
    };

    ResultRows(Results results, browser::Thumbnails& thumbnails, const app::StringTable& strings)
        : results{std::move(results)}, thumbnails{thumbnails}, strings{strings}
    {
    }

    platform::Result<> ReadRows(std::string_view tab, browser::RowSink& sink) override;
    platform::Result<> ReadThumbnails(std::string_view tab, browser::RowSink& sink) override;
    bool IsRanked() const override { return true; }
    std::optional<Texts> TextsFor(int rows) const override;

    const Results& Shown() const { return results; }
    /// Whether these are the rows that it has already.
    bool Shows(const Results& other) const
    {
        return results.index == other.index && results.types == other.types && results.entries == other.entries;
    }
    /// More was searched, and nothing more found.
    void Progressed(std::size_t searched, bool isComplete)
    {
        results.searched = searched;
        results.isComplete = isComplete;
    }
    /// How many rows a tab shows of them.
    std::size_t Count(std::string_view tab) const;

    /// "Found 3 from 200 files.", with the numbers.
    static std::string FoundText(const app::StringTable& strings, std::size_t found, std::size_t searched);

private:
    Results results;
    browser::Thumbnails& thumbnails;
    const app::StringTable& strings;

    bool IsShown(std::uint32_t entry, std::string_view tab) const;
    browser::TemplateRow RowOf(std::uint32_t entry) const;
    template <class Finish>
    void Read(std::string_view tab, browser::RowSink& sink, Finish finish);
};

} // namespace search
