// What a search finds, and in which order, over a library in many kinds of writing; and what it would find if it looked
// for plain parts of file names.
#include "Library.h"

#include "platform/Text.h"
#include "platform/memory/MemoryLocale.h"
#include "search/Index.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace tests {
namespace {

using Texts = std::vector<std::string>;
using platform::text::Split;

class SearchTable : public testing::Test {
protected:
    platform::memory::MemoryLocale locale;
    search::Index index{locale};

    SearchTable()
    {
        for (const LibraryFolder& folder : manyScripts) {
            const auto number = index.AddFolder(std::string{folder.category}, std::string{folder.category});
            for (const std::string& line : Split(folder.templates, '\n')) {
                const Texts parts = Split(line, '|');
                index.Add(number, 0, {.name = parts[0] + ".swt"});
                if (parts.size() > 1)
                    index.SetSays(static_cast<std::uint32_t>(index.Entries().size() - 1), {.keywords = parts[1]});
            }
        }
    }

    std::string NameOf(std::uint32_t entry) const
    {
        const std::string& file = index.Entries()[entry].file;
        return file.substr(0, file.size() - 4);
    }
    Texts Find(std::string_view text)
    {
        Texts names;
        for (const std::uint32_t entry : index.Find(text))
            names.push_back(NameOf(entry));
        return names;
    }
    /// How many names hold the text as it was typed.
    int Plain(std::string_view text) const
    {
        int count = 0;
        for (std::uint32_t entry = 0; entry < index.Entries().size(); ++entry)
            count += platform::text::ContainsIgnoringCase(NameOf(entry), text) ? 1 : 0;
        return count;
    }
};

TEST_F(SearchTable, FindsTheRightTemplatesInTheRightOrder)
{
    const struct {
        const char* text;
        Texts found;
        int plain;   ///< found as plain parts of names
        bool more{}; ///< others follow, whose words only begin so
    } rows[] = {
        // clang-format off
        // Beginnings of names, of words, parts of words, one letter wrong.
        {"memo", {"Memo", "ＭＥＭＯ　２", "Memorandum", "Business Memo"}, 3},
        {"MEMO b", {"Business Memo"}, 0},
        {"plan business", {"Business Plan", "Marketing Plan", "Project Plan"}, 0},
        {"lease", {"Lease", "Press Release", "Sublease"}, 3},
        {"invoise", {"Invoice", "Invoice 2023", "Invoice 2024", "Ｉｎｖｏｉｃｅ　Ｗｉｄｅ", "Pro-forma Invoice",
                     "Sales Invoice with Tax"}, 0},
        {"calender", {"Calendar 2024", "Calendar 2025"}, 0},
        {"recipt", {"Receipt", "Recipe"}, 0},
        {"agreemetn", {"Loan Agreement", "Non-disclosure Agreement", "Partnership Agreement",
                       "Service Level Agreement"}, 0},
        {"invoice 2024", {"Invoice 2024"}, 1}, // another number is another thing
        {"2025 cal", {"Calendar 2025"}, 0},
        {"letter blue", {"Letterhead Blue"}, 0},
        {"head", {"Letterhead Blue", "Letterhead Green"}, 2},
        {"xyzzy", {}, 0},
        // Folders, and what the documents say of themselves.
        {"contracts pow", {"Power of Attorney"}, 0},
        {"nda", {"Non-disclosure Agreement", "Calendar 2024", "Calendar 2025", "Letter of Recommendation",
                 "Meeting Agenda"}, 4},
        {"wohnung", {"Mietvertrag"}, 0},
        // Accents, and letters that are written in two ways.
        {"kundigung", {"Kündigung", "Kuendigung Mobilfunk"}, 0},
        {"KÜNDIGUNG", {"Kündigung", "Kuendigung Mobilfunk"}, 1}, {"strassenfest", {"Straßenfest"}, 0},
        {"vitae", {"Curriculum vitæ"}, 0}, {"hebergement", {"Attestation d'hébergement"}, 0},
        {"proces verbal", {"Procès-verbal"}, 0}, {"lodz", {"Łódź - plan"}, 0},
        {"is basvurusu", {"İş başvurusu"}, 0}, {"IZIN", {"İzin formu"}, 0}, {"αποδειξη", {"ΑΠΟΔΕΙΞΗ"}, 1},
        {"договор", {"Договор аренды"}, 1}, {"догавор", {"Договор аренды"}, 0},
        // Writing without blanks: any part. Width.
        {"請求", {"請求書", "請求書_2024年", "東京都請求書テンプレート"}, 3},
        {"求書", {"東京都請求書テンプレート", "請求書", "請求書_2024年"}, 3},
        {"プレゼン", {"プレゼンテーション", "ﾌﾟﾚｾﾞﾝ資料"}, 1}, {"2024 請求書", {"請求書_2024年"}, 0},
        {"カント", {}, 0}, // another letter than ガ
        {"报告 总结", {"工作总结报告"}, 0}, {"계획", {"사업계획서"}, 1}, {"שלום", {"שָׁלוֹם"}, 0},
        {"محمد", {"مُحَمَّد"}, 0}, {"เสนอ", {"ใบเสนอราคา"}, 1},
        {"ＩＮＶＯＩＣＥ wide", {"Ｉｎｖｏｉｃｅ　Ｗｉｄｅ"}, 0},
        // Signs.
        {"c++", {"C++ notes"}, 1, true}, {"+", {"+++", "C++ notes"}, 2}, {"o'brien", {"O'Brien form"}, 1},
        {"a.b", {"a.b"}, 1, true}, {"", {}, 0}, {"   ", {}, 0},
        // clang-format on
    };
    for (const auto& row : rows) {
        Texts found = Find(row.text);
        if (row.more)
            found.resize(std::min(found.size(), row.found.size()));
        EXPECT_EQ(found, row.found) << row.text;
        if (!platform::text::Trimmed(row.text).empty()) {
            EXPECT_EQ(Plain(row.text), row.plain) << row.text;
        }
    }
    EXPECT_GE(index.Entries().size(), 190U);
}

TEST_F(SearchTable, ATextNeverFindsLessThanPlainPartsOfNamesWould)
{
    // Whatever is typed out of a name, the name is found: every part between two places of every name.
    for (std::uint32_t entry = 0; entry < index.Entries().size(); entry += 7) {
        const std::string name = NameOf(entry);
        for (std::size_t from = 0; from < name.size(); ++from)
            for (std::size_t size = 1; from + size <= name.size(); size += 3) {
                const std::string part = name.substr(from, size);
                if ((static_cast<unsigned char>(part[0]) & 0xC0) == 0x80 ||
                    (from + size < name.size() && (static_cast<unsigned char>(name[from + size]) & 0xC0) == 0x80) ||
                    platform::text::Trimmed(part).empty())
                    continue; // half a character
                const auto found = index.Find(part);
                EXPECT_NE(std::ranges::find(found, entry), found.end()) << name << ": " << part;
            }
    }
}

TEST_F(SearchTable, ALongTextAndBrokenCharactersAreTakenAsTheyAre)
{
    EXPECT_TRUE(Find(std::string(10'000, 'a')).empty());
    EXPECT_TRUE(Find("\xFF\xFE").empty());
    std::string words;
    for (int i = 0; i < 1000; ++i)
        words += "memo ";
    EXPECT_EQ(Find(words).size(), 4U);
}

} // namespace
} // namespace tests
