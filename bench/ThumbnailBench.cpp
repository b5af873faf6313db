// The thumbnail view on a folder of many pictures: how soon they are there, and whether the window answers meanwhile.
#include "ui/win32/Win32Toolkit.h"

#include "app/base/Program.h"
#include "browser/LibraryRows.h"
#include "browser/ListPane.h"
#include "library/TemplateLibrary.h"
#include "platform/win32/System.h"
#include "ui/Form.h"
#include "ui/win32/ListViewPeer.h"
#include "ui/win32/NativeText.h"

#include <psapi.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace bench {
namespace {

using Clock = std::chrono::steady_clock;

double Since(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// Posts messages from another thread and notes how long each waits: what a key or a click would wait.
class Heart {
public:
    Heart()
    {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = &Procedure;
        windowClass.lpszClassName = L"BenchHeart";
        RegisterClassW(&windowClass);
        window = CreateWindowW(L"BenchHeart", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
        beats = std::thread{[this] {
            while (!stopped) {
                if (!waiting.exchange(true)) {
                    posted = Clock::now();
                    PostMessageW(window, WM_APP, 0, reinterpret_cast<LPARAM>(this));
                }
                Sleep(1);
            }
        }};
    }
    Heart(const Heart&) = delete;
    Heart& operator=(const Heart&) = delete;
    ~Heart()
    {
        stopped = true;
        beats.join();
        DestroyWindow(window);
    }

    double Longest{}; ///< milliseconds

private:
    HWND window{};
    std::thread beats;
    std::atomic<bool> stopped{};
    std::atomic<bool> waiting{};
    Clock::time_point posted;

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message != WM_APP)
            return DefWindowProcW(window, message, wParam, lParam);
        auto& heart = *reinterpret_cast<Heart*>(lParam);
        heart.Longest = std::max(heart.Longest, Since(heart.posted));
        heart.waiting = false;
        return 0;
    }
};

/// The list's rows, with a note of the thumbnails that were asked for.
class Watched final : public ui::ListModel {
public:
    explicit Watched(const browser::TemplateList& watchedRows) : rows{watchedRows} {}
    int Rows() const override { return rows.Rows(); }
    std::string Text(int row, int column) const override { return rows.Text(row, column); }
    int Icon(int row) const override { return rows.Icon(row); }
    int SmallIcon(int row) const override { return rows.SmallIcon(row); }
    ui::Thumbnail ThumbnailOf(int row) const override
    {
        ++Asked;
        return rows.ThumbnailOf(row);
    }
    mutable int Asked{};

private:
    const browser::TemplateList& rows;
};

class BenchForm final : public ui::Form {
public:
    explicit BenchForm(app::Program& program) : Form{program.toolkit, "BenchForm", Style::Sizable}
    {
        SetPlacement({300, 300, 15000, 11000});
        list.SetBounds({0, 0, 14700, 10400});
        list.SetView(ui::ListView::View::Thumbnails);
        strip.SetVisible(false);
        tree.SetVisible(false);
        status.SetVisible(false);
    }
    ui::ListView list{*this};
    ui::TabStrip strip{*this};
    ui::TreeView tree{*this};
    ui::StatusBar status{*this};

    const ui::win32::ListViewPeer& Peer() const { return dynamic_cast<const ui::win32::ListViewPeer&>(*list.Peer()); }
    /// Whether the thumbnails of the first rows are there.
    bool HasThumbnails(int rows) const
    {
        for (int row = 0; row < rows; ++row)
            if (!Peer().Thumbnails().IsDone(row))
                return false;
        return true;
    }
    int InView() const
    {
        const HWND window = Peer().Handle();
        RECT client{};
        GetClientRect(window, &client);
        int count = 0;
        for (int row = 0; row < list.Rows(); ++row) {
            RECT place{};
            place.left = LVIR_ICON;
            SendMessageW(window, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
            if (place.top >= client.bottom)
                break;
            ++count;
        }
        return count;
    }
};

int Run(const std::string& library)
{
    ui::win32::Win32Toolkit toolkit;
    platform::win32::System system{[&](std::function<void()> task) { toolkit.Post(std::move(task)); }};
    app::Program program{system.AsPlatform(), toolkit, toolkit.Pictures()};
    program.state.SettingsAppName = "Tessaly bench"; // nobody's settings
    program.state.TemplatesPath = library + "\\\\";
    program.state.HddTemplatesPath = library;
    BenchForm form{program};
    browser::FileTypeTabs tabs{program.settings, program.strings, form.strip};
    library::TemplateLibrary templates{
        form.tree,        program.files,    program.platform.shell, program.platform.locale,
        program.settings, program.messages, program.progress,       program.strings,
        program.state};
    templates.LoadTreeView();
    const browser::TemplateReader reader{templates.Contents(), program.files, program.state, program.settings};
    browser::Thumbnails thumbnails{program.files, program.state, reader};
    browser::ListPane pane{form.list,       program.files,          tabs,
                           form.status,     program.toolkit,        program.messages,
                           program.strings, program.platform.clock, program.platform.locale};
    Watched watched{pane.Templates()};
    form.list.SetModel(&watched);
    form.Show();
    toolkit.DoEvents();

    const auto pumpUntil = [&](const std::function<bool()>& condition) {
        const auto look = system.AsPlatform().timers.Start(std::chrono::milliseconds{5}, [&] {
            if (condition())
                toolkit.Quit();
        });
        toolkit.Run(); // what other threads bring comes in the real loop
    };
    const auto load = [&](const char* category) {
        watched.Asked = 0;
        pane.Show(std::make_shared<browser::CategoryRows>(reader, thumbnails, category));
    };

    const auto finish = [&] { pumpUntil([&] { return form.HasThumbnails(watched.Rows()); }); };

    // What the system's decoder takes for the same; its first round waits for the disk.
    load("Many");
    const int rows = watched.Rows();
    const int inView = form.InView();
    std::vector<std::string> files;
    for (int row = 0; row < rows; ++row)
        files.push_back(watched.ThumbnailOf(row).picture);
    const auto decode = [&](int count, unsigned threads) {
        const auto start = Clock::now();
        std::atomic<int> next{};
        std::vector<std::jthread> workers;
        for (unsigned i = 0; i < threads; ++i)
            workers.emplace_back([&] {
                for (int file = next++; file < count; file = next++)
                    (void)toolkit.Pictures().Decode(files[static_cast<std::size_t>(file)], {130, 150});
            });
        workers.clear();
        return Since(start);
    };
    pane.Clear();
    (void)decode(inView, 1);
    const unsigned processors = std::max(1u, std::thread::hardware_concurrency());
    const double decodeView = decode(inView, processors), decodeAll = decode(rows, 1);

    Heart heart;
    auto start = Clock::now();
    load("Many");
    pumpUntil([&] { return form.HasThumbnails(inView); });
    toolkit.DoEvents(); // the last of them is drawn
    const double firstScreen = Since(start);
    finish();
    const double everything = Since(start);

    load("Few");
    finish();
    start = Clock::now();
    load("Many");
    pumpUntil([&] { return form.HasThumbnails(inView); });
    toolkit.DoEvents();
    const double back = Since(start);
    finish();

    load("Others");
    pumpUntil([&] { return form.HasThumbnails(watched.Rows() / 4); });
    start = Clock::now();
    load("Last");
    finish();
    toolkit.DoEvents();
    const double change = Since(start);
    const int few = watched.Asked;
    pumpUntil([&] { return Since(start) > change + 500; }); // nothing of the old folder may come after it

    PROCESS_MEMORY_COUNTERS memory{};
    K32GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof(memory));
    std::printf("pictures                          %8d, %d of them in view\n", rows, inView);
    std::printf("first screen of thumbnails        %8.0f ms, %.2f of decoding its pictures on %u threads\n",
                firstScreen, firstScreen / decodeView, processors);
    std::printf("all thumbnails                    %8.0f ms, %.2f of decoding on one thread\n", everything,
                everything / decodeAll);
    std::printf("back to this folder               %8.0f ms\n", back);
    std::printf("another folder (%2d) in the middle %8.0f ms, thumbnails begun since: %d\n", watched.Rows(), change,
                watched.Asked);
    std::printf("longest wait of a message         %8.0f ms\n", heart.Longest);
    std::printf("peak memory                       %8.1f MB in use, %.1f MB reserved\n",
                static_cast<double>(memory.PeakWorkingSetSize) / 1048576,
                static_cast<double>(memory.PeakPagefileUsage) / 1048576);
    constexpr double bound = 50; // milliseconds
    return few == watched.Asked && heart.Longest <= bound ? 0 : 1;
}

} // namespace
} // namespace bench

int wmain(int argc, wchar_t** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: thumbnail_bench LIBRARY (with the categories Many, Few, Others and Last)\n");
        return 2;
    }
    return bench::Run(ui::win32::FromNative(argv[1]));
}
