// A user who does anything in the real windows of the real program, life after life, for TS_SECONDS. TS_SEED is the
// seed of the first life; it repeats what the user does, and what the system makes of it as far as its timing is the
// same.
#include "tests/endtoend/BrowserTest.h"
#include "tests/prove/Asked.h"
#include "tests/prove/FilledLibrary.h"
#include "tests/prove/RandomUser.h"

#include <algorithm>
#include <cstdio>
#include <ranges>
#include <set>
#include <utility>

namespace prove {
namespace {

using namespace endtoend;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;

constexpr wchar_t ProfilesKey[] = L"Software\\Zelmor Software";
constexpr wchar_t Classes[] = L"Software\\Classes\\";
/// What the shell opens here goes to a program that only notes it.
const std::vector<std::wstring> Opened{L".swt",  L".ccw", L".prt", L".mst", L".pdf",  L".htm",
                                       L".html", L".txt", L".jpg", L"http", L"https", L"mailto"};

struct Row {
    int number;
    const char* text;
};
constexpr Row Strings[] = {
#include "StringRows.inc"
};
/// What the program says to a user who did something that cannot be, or asks before it does something.
constexpr int Expected[] = {
    134, 135, 136, 214, 233, 235, 236, 581, 585, 586, 587,      // profiles
    215, 259, 260, 262, 284, 347, 397, 398, 399, 517, 521, 523, // to be deleted or renamed
    600, 601, 602, 603, 263, 371, 401, 179, 181,                // names of folders, and where to search
    269, 357, 358, 359, 403, 531,                               // favourites
    126, 169, 237, 238, 282, 530, 545, 567, 568, 569, 570, 606, // to be opened
    280, 367,                                                   // help that is not installed here
    406, 407, 408, 409, 410, 411, 412, 413, 414, 415, 416, 222, // export and import
    584, 588, 706, 712, 721,                                    // pictures, and what is copied and pasted
    106, 107, 131, 257, 258, 565,                               // numbers, packs and recent documents
};

/// What Wine's own dialog of files says of names that are typed in it, and of files that are opened in it.
constexpr const wchar_t* OfFileDialog[] = {L"There is no Windows program configured to open this type of file.",
                                           L"File does not exist", L"Path does not exist",
                                           L"The selection contains a non-folder object"};

bool IsExpected(const std::wstring& message)
{
    if (std::ranges::any_of(OfFileDialog, [&](const wchar_t* text) { return message.starts_with(text); }))
        return true;
    return std::ranges::any_of(Expected, [&](int number) {
        const auto row = std::ranges::find(Strings, number, &Row::number);
        const std::string text = row == std::end(Strings) ? "?" : row->text;
        const std::string start = text.substr(0, text.find('%'));
        return message.contains(std::wstring{start.begin(), start.end()});
    });
}

class RandomUserProof : public BrowserTest {
protected:
    RandomUserProof()
    {
        const fs::path program = installation.PutRecorder(installation.folder / L"Programs" / L"opener.exe");
        for (const std::wstring& type : Opened) {
            const std::wstring key = Classes + type;
            borrowed.push_back(std::make_unique<BorrowedKey>(HKEY_LOCAL_MACHINE, key));
            if (type.starts_with(L"."))
                SetText(HKEY_LOCAL_MACHINE, key, L"", Handler);
            else
                SetText(HKEY_LOCAL_MACHINE, key, L"URL Protocol", L"");
            SetText(HKEY_LOCAL_MACHINE, (type.starts_with(L".") ? Classes + std::wstring{Handler} : key) + OpenCommand,
                    L"", L'"' + program.wstring() + L"\" \"%1\"");
        }
        installation.Set(L"Options", L"WebLink", L"http://one.example/|http://two.example/");
        installation.Set(L"Options", L"Profile Images Path", (installation.folder / L"Pictures").wstring());
        installation.Set(L"Options", L"ExportProfilePath", (installation.folder / L"Export").wstring());
        SetText(HKEY_CURRENT_USER, L"Software\\Other", L"theirs", L"kept");
    }
    /// What is on the machine beside the test's own folder.
    static std::set<fs::path> OtherFiles()
    {
        std::set<fs::path> found;
        std::error_code ignored;
        for (const wchar_t* const folder : {L"C:\\Program Files", L"C:\\ProgramData", L"C:\\windows"})
            for (auto each =
                     fs::recursive_directory_iterator{folder, fs::directory_options::skip_permission_denied, ignored};
                 !ignored && each != fs::recursive_directory_iterator{}; each.increment(ignored)) {
                if (each->path().filename() == L"temp")
                    each.disable_recursion_pending();
                else
                    found.insert(each->path());
            }
        return found;
    }
    /// Settings of other programs, but for what the system notes by itself.
    static RegistryTree OtherSettings()
    {
        RegistryTree tree = ReadRegistry(HKEY_CURRENT_USER, L"Software");
        const std::wstring ours[] = {SettingsKey, ProfilesKey, L"Software\\Wine", L"Software\\Microsoft"};
        std::erase_if(tree, [&](const auto& entry) {
            return std::ranges::any_of(ours, [&](const std::wstring& own) {
                return entry.first.starts_with(own) || own.starts_with(entry.first);
            });
        });
        return tree;
    }

    void Live(unsigned seed, Clock::time_point end);

    static constexpr wchar_t Handler[] = L"TSBrowserProof", OpenCommand[] = L"\\shell\\open\\command";
    const BorrowedKey profiles{HKEY_CURRENT_USER, ProfilesKey}, theirs{HKEY_CURRENT_USER, L"Software\\Other"},
        handler{HKEY_LOCAL_MACHINE, Classes + std::wstring{Handler}};
    std::vector<std::unique_ptr<BorrowedKey>> borrowed;
    std::map<std::wstring, int> messages;
    long acts{};
    Milliseconds longest{};
    const Milliseconds longestAllowed{Asked("TS_WAIT", 2000)}; ///< more on a busy machine
};

void RandomUserProof::Live(unsigned seed, Clock::time_point end)
{
    SCOPED_TRACE("seed " + std::to_string(seed));
    constexpr std::size_t shortestLife = 50, longestLife = 1500;
    constexpr int patience = 600;                            // steps home
    const auto contents = FillLibrary(installation.library); // the user may have deleted everything
    WriteFile(installation.folder / L"Other" / L"keep.swt", "kept");
    Start();
    EXPECT_TRUE(WaitFor([] { return FindTop(L"TSBrowserForm") != nullptr || SystemDialog() != nullptr; }));
    RandomUser user{browser->Id(), seed};
    const std::size_t count = shortestLife + seed * 2654435761U % longestLife;
    std::size_t act = 0, read = 0;
    for (; act < count && !browser->HasEnded() && Clock::now() < end && !HasFailure(); ++act) {
        user.Act();
        const Milliseconds took = user.AnswerTime(std::chrono::seconds{30});
        longest = std::max(longest, took);
        EXPECT_LE(took, longestAllowed);
        if (std::exchange(read, user.Messages.size()) != user.Messages.size()) {
            EXPECT_TRUE(std::ranges::all_of(user.Messages | std::views::keys, IsExpected));
        }
    }
    for (int step = 0; step < patience && !browser->HasEnded(); ++step) {
        user.GoHome();
        Sleep(50);
    }
    acts += static_cast<long>(act);
    EXPECT_EQ(browser->ExitCode(), 0u);
    EXPECT_TRUE(WaitFor([] { return CountProcesses(ExeName) == 0; }));
    EXPECT_EQ(ReadFile(installation.folder / L"Other" / L"keep.swt"), "kept");
    std::set<std::string> left;
    for (const auto& [path, bytes] : FilesBelow(installation.library))
        left.insert(bytes);
    for (const std::string& content : contents)
        EXPECT_TRUE(user.SaidYes || left.contains(content)) << content << " is gone, and nobody wished it";
    for (const auto& [text, times] : user.Messages)
        messages[text] += times;
    if (HasFailure())
        user.Report();
}

TEST_F(RandomUserProof, NothingThatAUserDoesBreaksTheProgram)
{
    const auto end = Clock::now() + std::chrono::seconds{Asked("TS_SECONDS", 60)};
    const unsigned first = Asked("TS_SEED", static_cast<unsigned>(GetTickCount() % 100'000));
    const auto files = OtherFiles();
    const RegistryTree settings = OtherSettings();
    unsigned seed = first;
    for (; Clock::now() < end && !HasFailure(); ++seed)
        Live(seed, end);
    std::vector<fs::path> changed;
    std::ranges::set_symmetric_difference(files, OtherFiles(), std::back_inserter(changed));
    EXPECT_TRUE(changed.empty()) << testing::PrintToString(changed) << " came or went";
    EXPECT_TRUE(OtherSettings() == settings);
    for (const auto& [text, times] : messages) {
        std::printf("  %5d x %s\n", times, testing::PrintToString(text).c_str());
        EXPECT_TRUE(IsExpected(text)) << testing::PrintToString(text);
    }
    std::printf("%ld acts in %u lives from seed %u, longest wait %d ms\n", acts, seed - first, first,
                static_cast<int>(longest.count()));
}

} // namespace
} // namespace prove
