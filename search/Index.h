#pragma once

#include "documents/Facts.h"
#include "platform/FileSystem.h"
#include "platform/Locale.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace search {

/// The library's templates by what can be found in them. Numbers of folders and entries stay what they are.
class Index {
public:
    struct Folder {
        std::string category; ///< relative to the templates path
        std::string disk;     ///< full path
        std::string folded;   ///< the category
    };
    struct Entry {
        std::string file;
        std::string name; ///< without its ending, folded
        std::string says; ///< what the document says of itself: title, keywords, author; folded
        std::uint64_t size{};
        platform::FileTime modified{};
        std::uint32_t folder{};
        std::uint8_t type{}; ///< position among the kinds of templates
        bool isRead{};       ///< `says` is known, or is not to be asked for
        bool isElsewhere{};  ///< only its name is here: reading it would fetch it from where it is kept

        platform::FileEntry AsListed() const { return {.name = file, .size = size, .modified = modified}; }
    };

    explicit Index(const platform::Locale& locale) : locale{locale} {}

    std::uint32_t AddFolder(std::string category, std::string disk);
    /// A template by its listing.
    void Add(std::uint32_t folder, std::size_t type, const platform::FileEntry& listed);
    /// All are added: gives back the memory that was kept for more.
    void EndAdding() { entries.shrink_to_fit(); }
    void SetSays(std::uint32_t entry, const documents::Facts& facts);

    const std::vector<Folder>& Folders() const { return folders; }
    const std::vector<Entry>& Entries() const { return entries; }
    std::string PathOf(std::uint32_t entry) const;
    /// Whether the entry lies in the category or below it; "" is all of them.
    bool IsIn(std::uint32_t entry, std::string_view category) const;

    /// The entries in which each word of the text is found, in the name, the names of the folders, or what the document
    /// says of itself; the best first: where every word begins one, then where one stands elsewhere in a word, then
    /// where one has a wrong letter; of these, names that begin so before other names before the rest; then in the
    /// order of the names. A text without any word is looked for as it stands.
    std::vector<std::uint32_t> Find(std::string_view text);
    /// All, in the order of the names.
    const std::vector<std::uint32_t>& InOrder();

private:
    const platform::Locale& locale;
    std::vector<Folder> folders;
    std::vector<Entry> entries;
    std::vector<std::uint32_t> order; ///< by name, then folder; those behind its end are new
};

} // namespace search
