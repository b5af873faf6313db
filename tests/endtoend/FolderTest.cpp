#include "tests/endtoend/BrowserTest.h"

#include <fstream>
#include <functional>
#include <map>
#include <set>

namespace endtoend {
namespace {

namespace fs = std::filesystem;
using Icon = Box::Icon;
using Names = std::vector<std::wstring>;

const std::wstring Title = L"Tessaly Desk";

/// A file or folder that another process, this one, has open: others may look at it, but not rename or delete it.
class Held {
public:
    explicit Held(const fs::path& path)
        : handle{CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                             FILE_FLAG_BACKUP_SEMANTICS, nullptr)}
    {
        EXPECT_NE(handle, INVALID_HANDLE_VALUE);
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held() { CloseHandle(handle); }

private:
    HANDLE handle;
};

/// The folder "Formal" below the category "Business", with favourites and a recent file in it.
class EndToEndFolderTest : public BrowserTest {
protected:
    EndToEndFolderTest()
    {
        installation.Write(formal / L"Memo.swt", "memo");
        installation.Write(formal / L"Offer.swt");
        installation.Write(formal / L"Deep" / L"Plan.swt");
        installation.Write(formal / L"Previews" / L"Memo.jpg");
        installation.Write(business / L"Family" / L"Card.swt");
        for (const wchar_t* const favorite : {L"Formal\\Memo.swt", L"Formal\\Deep\\Plan.swt", L"Family\\Card.swt"})
            installation.Set(L"Browser\\Favorites", L"Business\\" + std::wstring{favorite}, L"");
        installation.Set(L"Browser\\Recent Files", L"File 1", (business / L"Letter.swt").wstring());
        installation.Set(L"Browser\\Recent Files", L"File 2", (formal / L"Memo.swt").wstring());
        installation.Set(L"Browser", L"LastFolderBrowsed", L"Business\\Formal");
    }

    /// The tree below "Business" is this, the list shows these, and the selected folder is stored.
    static bool Shows(HWND window, const Names& tree, const Names& rows, const std::wstring& folder)
    {
        Names nodes{L"My Favorites", L"Business"};
        nodes.insert(nodes.end(), tree.begin(), tree.end());
        nodes.insert(nodes.end(), {L"", L"Get More Templates"});
        return harness::WaitFor([&] {
            return IsWindowEnabled(Child(window, WC_TREEVIEWW)) && NodesOf(window) == nodes && RowsOf(window) == rows &&
                   Installation::Setting(L"Browser", L"LastFolderBrowsed") == folder;
        });
    }
    static std::set<std::wstring> Favorites()
    {
        std::set<std::wstring> names;
        for (const auto& [path, data] :
             harness::RegistryTree(HKEY_CURRENT_USER, std::wstring{SettingsKey} + L"\\Browser\\Favorites"))
            if (const auto value = path.find(L"\\="); value != std::wstring::npos)
                names.insert(path.substr(value + 2));
        return names;
    }
    /// Every file below the folder with what is in it, and every folder.
    static std::map<std::wstring, std::string> Contents(const fs::path& folder)
    {
        std::map<std::wstring, std::string> contents;
        for (const auto& entry : fs::recursive_directory_iterator{folder}) {
            std::ifstream file{entry.path(), std::ios::binary};
            contents[entry.path().wstring()] = {std::istreambuf_iterator<char>{file}, {}};
        }
        return contents;
    }
    /// Deletes the selected folder, "Formal", by the keyboard, and says Yes to the question.
    static void Delete(HWND window)
    {
        // While the tree is being loaded the key does nothing; whoever presses it too early presses it again.
        for (int attempt = 0; attempt < 10 && !SystemDialog(); ++attempt) {
            PressKey(Child(window, WC_TREEVIEWW), VK_DELETE);
            harness::WaitFor([] { return SystemDialog() != nullptr; }, std::chrono::seconds{1});
        }
        EXPECT_EQ(AnswerBox().text, L"Are you sure you want to delete \"Formal\" and all its contents?");
    }

    const fs::path business = installation.library / L"Business";
    const fs::path formal = business / L"Formal";
    const Names before{L"  Family", L"  Formal", L"    Deep"};
    const Names beforeRows{L"Memo", L"Offer"};
};

TEST_F(EndToEndFolderTest, RenamesAFolderOnceNobodyHoldsItAndWhatPointsIntoItFollows)
{
    const fs::path word = installation.PutRecorder(installation.folder / L"word.exe");
    const FileType type{L".swt", word};
    const HWND window = Open();
    const auto stored = Favorites();
    const auto disk = Contents(business);
    const auto isUnchanged = [&] {
        return Shows(window, before, beforeRows, L"Business\\Formal") && Favorites() == stored &&
               Contents(business) == disk;
    };
    {
        const Held file{formal / L"Memo.swt"};
        const Held folder{formal}; // Wine would move a folder with an open file in it
        ASSERT_TRUE(TypeLabel(window, L"Casual"));
        EXPECT_EQ(AnswerBox(), (Box{Title,
                                    L"Cannot rename folder, templates may be in use.\r\nClose the template(s) and try "
                                    L"again.",
                                    Icon::Information}));
    }
    EXPECT_TRUE(isUnchanged());
    ASSERT_TRUE(TypeLabel(window, L"Family"));
    EXPECT_EQ(AnswerBox(), (Box{Title,
                                L"Cannot rename Formal: A folder with the name you specified already exists. Specify a "
                                L"different folder name.",
                                Icon::Information}));
    EXPECT_TRUE(isUnchanged());

    ASSERT_TRUE(TypeLabel(window, L"Casual"));
    EXPECT_TRUE(Shows(window, {L"  Casual", L"    Deep", L"  Family"}, beforeRows, L"Business\\Casual"));
    EXPECT_FALSE(fs::exists(formal));
    EXPECT_EQ(Favorites(), (std::set<std::wstring>{L"Business\\Casual\\Memo.swt", L"Business\\Casual\\Deep\\Plan.swt",
                                                   L"Business\\Family\\Card.swt"}));
    EXPECT_EQ(installation.Setting(L"Browser\\Recent Files", L"File 1"), (business / L"Letter.swt").wstring());
    EXPECT_EQ(installation.Setting(L"Browser\\Recent Files", L"File 2"),
              (business / L"Casual" / L"Memo.swt").wstring());
    // The favourite opens what it says.
    EXPECT_TRUE(SelectNode(window, L"My Favorites"));
    ASSERT_TRUE(SelectRow(window, L"Plan"));
    DoubleClickSelection(window);
    EXPECT_NE(Installation::Recorded(word).find((business / L"Casual" / L"Deep" / L"Plan.swt").wstring()),
              std::wstring::npos);
    Close();
}

TEST_F(EndToEndFolderTest, DeletesWhatItCanAndTheRestOnceItIsFree)
{
    const fs::path memo = formal / L"Memo.swt";
    const auto readOnly = [&](bool value) {
        SetFileAttributesW(memo.c_str(), value ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL);
    };
    std::optional<Held> held;
    const struct {
        const char* obstacle;
        std::function<void()> set;
        std::function<void()> clear;
    } rows[] = {
        {"held open", [&] { held.emplace(memo); }, [&] { held.reset(); }},
        {"read-only", [&] { readOnly(true); }, [&] { readOnly(false); }},
    };
    const HWND window = Open();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.obstacle);
        installation.Write(memo, "memo");
        installation.Write(formal / L"Deep" / L"Plan.swt");
        for (const wchar_t* const favorite : {L"Memo.swt", L"Deep\\Plan.swt"})
            installation.Set(L"Browser\\Favorites", L"Business\\Formal\\" + std::wstring{favorite}, L"");
        PressKey(Child(window, WC_TREEVIEWW), VK_F5);
        EXPECT_TRUE(harness::WaitFor([&] { return NodesOf(window).size() == 7 && SelectNode(window, L"Formal"); }));
        row.set();
        Delete(window);
        EXPECT_EQ(AnswerBox(), (Box{Title,
                                    L"Cannot delete folder, templates may be in use.\rClose the template(s) and try "
                                    L"again.",
                                    Icon::Critical}));
        EXPECT_TRUE(Shows(window, {L"  Family", L"  Formal"}, {L"Letter"}, L"Business"));
        row.clear();
        EXPECT_EQ(Contents(formal), (std::map<std::wstring, std::string>{{memo.wstring(), "memo"}}));
        EXPECT_EQ(Favorites(), (std::set<std::wstring>{L"Business\\Formal\\Memo.swt", L"Business\\Family\\Card.swt"}));

        EXPECT_TRUE(SelectNode(window, L"Formal"));
        Delete(window);
        EXPECT_TRUE(Shows(window, {L"  Family"}, {L"Letter"}, L"Business"));
        EXPECT_FALSE(fs::exists(formal));
        EXPECT_EQ(Favorites(), (std::set<std::wstring>{L"Business\\Family\\Card.swt"}));
    }
    Close();
}

TEST_F(EndToEndFolderTest, DeletesNothingBehindALink)
{
    const fs::path outside = installation.folder / L"Outside";
    installation.Write(outside / L"Theirs.swt", "theirs");
    installation.Write(outside / L"Previews" / L"Theirs.jpg", "their picture");
    installation.Write(outside / L"Deeper" / L"Other.swt", "other");
    const auto theirs = Contents(outside);
    if (!Installation::Link(formal / L"Linked", outside) ||
        !Installation::Link(formal / L"Deep" / L"Up", installation.folder) ||
        !Installation::Link(formal / L"Previews" / L"Pictures", outside / L"Previews"))
        GTEST_SKIP() << "no links here";
    const HWND window = Open();
    Delete(window);
    // Wine cannot remove the links, so they stay with the folders that they lie in.
    EXPECT_EQ(AnswerBox().icon, Icon::Critical);
    EXPECT_TRUE(Shows(window, {L"  Family", L"  Formal", L"    Linked", L"      Deeper"}, {L"Letter"}, L"Business"));
    EXPECT_EQ(Contents(outside), theirs);
    EXPECT_FALSE(fs::exists(formal / L"Memo.swt"));
    EXPECT_TRUE(fs::exists(business / L"Family" / L"Card.swt"));
    Close();
}

} // namespace
} // namespace endtoend
