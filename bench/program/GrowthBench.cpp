// Libraries, lists and folders as large as they get: each opens, in a time that grows no faster than its size.
#include "tests/endtoend/BrowserTest.h"

#include <algorithm>
#include <cstdio>
#include <limits>

namespace bench {
namespace {

using namespace endtoend;
using Clock = std::chrono::steady_clock;

constexpr wchar_t ProfilesKey[] = L"Software\\Zelmor Software\\Zelmor User Profiles\\Profiles";
constexpr int Growth = 4;        ///< from the smaller to the larger size
constexpr double Allowance = 2;  ///< what sorting and a busy machine may add; the square would be 4
constexpr double LeastTime = 60; ///< milliseconds: below it, it is waiting that is measured

class GrowthBench : public BrowserTest {
protected:
    GrowthBench() { Installation::Set(L"Browser", L"LastFolderBrowsed", L"Business"); }

    /// A library of its own for each size.
    void UseLibrary(const fs::path& folder)
    {
        Installation::Set(L"Browser", L"HDD Templates Path", folder.wstring());
        WriteFile(folder / L"Business" / L"Letter.swt");
    }
    fs::path LibraryOf(int size) { return installation.folder / (L"Library " + std::to_wstring(size)); }
    static void AddFiles(const fs::path& folder, int count, std::size_t nameLength = 0)
    {
        constexpr const wchar_t* endings[] = {L".swt", L".ccw", L".prt", L".pdf"};
        fs::create_directories(folder);
        for (int i = 0; i < count; ++i) {
            std::wstring name = L"Template " + std::to_wstring(i) + endings[i % 4];
            if (nameLength != 0)
                name = std::wstring(nameLength - name.size(), L'n') + name;
            const HANDLE file = CreateFileW((L"\\\\?\\" + (folder / name).wstring()).c_str(), GENERIC_WRITE, 0, nullptr,
                                            CREATE_ALWAYS, 0, nullptr);
            ASSERT_NE(file, INVALID_HANDLE_VALUE) << GetLastError();
            CloseHandle(file);
        }
    }

    /// Milliseconds from an act until what it opens is whole.
    static double TimeOf(const std::function<void()>& act, const std::function<bool()>& isOpen)
    {
        const auto start = Clock::now();
        act();
        const auto giveUp = start + std::chrono::seconds{30};
        while (!isOpen()) {
            if (Clock::now() > giveUp) {
                ADD_FAILURE() << "does not open";
                break;
            }
            Sleep(1);
        }
        return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    }
    /// From the start of the program until its window answers.
    double TimeOfStart()
    {
        Installation::Remove(L"Customization", L"ApplicationName");
        return TimeOf([this] { Start(); },
                      [] { return !Installation::Setting(L"Customization", L"ApplicationName").empty(); });
    }
    static int RowsOf(HWND list)
    {
        DWORD_PTR rows = 0;
        SendMessageTimeoutW(list, LVM_GETITEMCOUNT, 0, 0, SMTO_NORMAL, 10'000, &rows);
        return static_cast<int>(rows);
    }
    /// From choosing a folder in the tree until all of its rows are listed.
    static double TimeOfFolder(const wchar_t* folder, int rows)
    {
        const HWND window = MainWindow();
        const double time =
            TimeOf([&] { EXPECT_TRUE(SelectNode(window, folder)); }, [&] { return RowsOf(ListOf(window)) == rows; });
        EXPECT_TRUE(SelectNode(window, L"Business"));
        EXPECT_TRUE(WaitFor([&] { return RowsOf(ListOf(window)) == 1; }));
        return time;
    }
    static double TimeOfDialog(const wchar_t* letters, const std::function<bool(HWND)>& isFilled)
    {
        const double time = TimeOf([&] { EXPECT_TRUE(Choose(MainWindow(), letters)); },
                                   [&] {
                                       const HWND dialog = Dialog();
                                       return dialog != nullptr && isFilled(dialog);
                                   });
        PostMessageW(Dialog(), WM_CLOSE, 0, 0);
        EXPECT_TRUE(WaitFor([] { return Dialog() == nullptr && IsWindowEnabled(MainWindow()); }));
        return time;
    }

    /// Measures at nothing, a quarter of the size, and the size. `measure` prepares a size and gives the time.
    void Grow(const char* what, int size, const std::function<double(int)>& measure)
    {
        constexpr int rounds = 5;
        constexpr double none = std::numeric_limits<double>::max();
        double times[] = {none, none, none};
        const int sizes[] = {1, size / Growth, size};
        // In turn, so that what disturbs one disturbs all.
        for (int round = 0; round < rounds; ++round)
            for (int i = 0; i < 3; ++i)
                times[i] = std::min(times[i], measure(sizes[i]));
        const double small = std::max(times[1] - times[0], LeastTime), large = times[2] - times[0];
        std::printf("%-28s %6d: %6.0f ms, %6d: %6.0f ms (nothing: %4.0f ms), grows by %.2f of %d\n", what, sizes[1],
                    times[1], sizes[2], times[2], times[0], large / small, Growth);
        std::fflush(stdout);
        EXPECT_LE(large / small, Growth * Allowance) << what;
    }
    void EndProgram()
    {
        Close();
        browser.reset();
    }
};

TEST_F(GrowthBench, LargeLibrariesOpenInATimeThatGrowsWithThem)
{
    constexpr int aFolder = 201, files = 499 * aFolder, category = 25; // with "Business", as many folders as are shown
    Grow("files in the library", files, [&](int size) {
        const fs::path library = LibraryOf(size);
        if (!fs::exists(library))
            for (int i = 0; i < size / aFolder; ++i) {
                fs::path folder = library / (L"Category " + std::to_wstring(i / category));
                if (i % category != 0)
                    folder /= L"Folder " + std::to_wstring(i % category);
                AddFiles(folder, aFolder);
            }
        UseLibrary(library);
        const double time = TimeOfStart();
        EXPECT_EQ(NodesOf(MainWindow()).size(), static_cast<std::size_t>(size / aFolder + 4));
        EndProgram();
        return time;
    });
}

TEST_F(GrowthBench, DeepLibrariesOpen)
{
    constexpr int levels = 40, shown = 4;
    Grow("levels", levels, [&](int size) {
        const fs::path library = LibraryOf(size);
        if (!fs::exists(library)) {
            fs::path folder = library;
            for (int i = 0; i < size; ++i)
                AddFiles(folder /= L"L" + std::to_wstring(i), 2);
        }
        UseLibrary(library);
        const double time = TimeOfStart();
        EXPECT_EQ(NodesOf(MainWindow()).size(), static_cast<std::size_t>(std::min(size, shown) + 4));
        EndProgram();
        return time;
    });
}

TEST_F(GrowthBench, LargeFoldersAndLongNamesAreListed)
{
    constexpr struct {
        const char* what;
        int size;
        std::size_t nameLength;
    } rows[] = {{"files in a folder", 10'000, 0}, {"names of 255 characters", 4000, 255}};
    for (const auto& [what, size, nameLength] : rows) {
        UseLibrary(LibraryOf(size));
        for (const int count : {1, size / Growth, size})
            AddFiles(LibraryOf(size) / (L"Files " + std::to_wstring(count)), count, nameLength);
        ASSERT_TRUE(Open());
        Grow(what, size, [](int count) { return TimeOfFolder((L"Files " + std::to_wstring(count)).c_str(), count); });
        EndProgram();
    }
}

TEST_F(GrowthBench, LongListsOpen)
{
    constexpr int favourites = 3000, documents = 1000, profiles = 2000;
    const BorrowedKey borrowed{HKEY_CURRENT_USER, ProfilesKey};
    const fs::path folder = installation.library / L"Large";
    AddFiles(folder, favourites);
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator{folder})
        files.push_back(entry.path());
    const auto fill = [&](const wchar_t* section, int count, const std::function<void(const fs::path&)>& add) {
        RegDeleteTreeW(HKEY_CURRENT_USER, (std::wstring{SettingsKey} + L"\\" + section).c_str());
        for (int i = 0; i < count; ++i)
            add(files[static_cast<std::size_t>(i)]);
    };
    Grow("favourites", favourites, [&](int size) {
        fill(L"Browser\\Favorites", size, [](const fs::path& file) {
            Installation::Set(L"Browser\\Favorites", L"Large\\" + file.filename().wstring(), L"");
        });
        EXPECT_TRUE(Open());
        const double time = TimeOfFolder(L"My Favorites", size);
        EndProgram();
        return time;
    });
    EXPECT_TRUE(Open());
    Grow("recent documents", documents, [&](int size) {
        fill(L"Browser\\History List", size, [](const fs::path& file) {
            SYSTEMTIME now;
            GetLocalTime(&now);
            wchar_t day[40];
            std::swprintf(day, std::size(day), L"%04d-%02d-%02d", now.wYear, now.wMonth, now.wDay);
            Installation::Set(L"Browser\\History List", file.wstring(), day);
        });
        return TimeOfDialog(L"tr", [&](HWND dialog) { return RowsOf(ListOf(dialog)) == size; });
    });
    const auto fillProfiles = [&](int size) {
        RegDeleteTreeW(HKEY_CURRENT_USER, ProfilesKey);
        for (int i = 0; i < size; ++i)
            SetText(HKEY_CURRENT_USER, std::wstring{ProfilesKey} + L"\\Profile " + std::to_wstring(i), L"FirstName",
                    L"Ann");
    };
    const auto itemsOf = [](HWND box, UINT message) {
        DWORD_PTR items = 0;
        SendMessageTimeoutW(box, message, 0, 0, SMTO_NORMAL, 10'000, &items);
        return static_cast<int>(items);
    };
    Grow("profiles, to be edited", profiles, [&](int size) {
        fillProfiles(size);
        return TimeOfDialog(L"re",
                            [&](HWND dialog) { return itemsOf(ChildOf(dialog, WC_COMBOBOXW), CB_GETCOUNT) == size; });
    });
    Grow("profiles, to be managed", profiles, [&](int size) {
        fillProfiles(size);
        return TimeOfDialog(L"r\x2193\r",
                            [&](HWND dialog) { return itemsOf(ChildOf(dialog, WC_LISTBOXW), LB_GETCOUNT) == size; });
    });
    EndProgram();
}

} // namespace
} // namespace bench
