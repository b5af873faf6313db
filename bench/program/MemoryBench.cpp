// What the program takes after it has browsed for a while, against the first minute. TS_WARM and TS_SECONDS say how
// long either lasts.
#include "bench/program/Resources.h"
#include "tests/endtoend/BrowserTest.h"
#include "tests/prove/Asked.h"
#include "tests/prove/FilledLibrary.h"

#include <cstdio>

namespace bench {
namespace {

using namespace endtoend;
using prove::Asked;
using Clock = std::chrono::steady_clock;
using MemoryBench = BrowserTest;

/// One round through everything that can be looked at, back to where it began.
void BrowseAll(HWND window)
{
    const HWND tree = TreeOf(window);
    for (const wchar_t* const view : {L"vd", L"vt", L"vg"}) {
        EXPECT_TRUE(Choose(window, view));
        for (const wchar_t* const folder : {L"Business", L"Letters", L"Formal", L"Many", L"My Favorites"}) {
            EXPECT_TRUE(SelectNode(window, folder)) << testing::PrintToString(NodesOf(window));
            PressKey(ListOf(window), VK_DOWN);
        }
    }
    PressKey(tree, VK_F5);
    EXPECT_TRUE(Choose(window, L"vd"));
    // In the middle of the load nothing can be selected, and the folder is read beside the window.
    EXPECT_TRUE(WaitFor([&] { return SelectNode(window, L"Business") && SelectRow(window, L"Letter"); }))
        << testing::PrintToString(TextOf(ChildOf(window, STATUSCLASSNAMEW)));
    for (const wchar_t* const dialog : {L"fp", L"fr", L"od", L"re", L"r\x2193\r", L"ri", L"tm", L"ha"}) {
        EXPECT_TRUE(Choose(window, dialog));
        const HWND opened = Await(Dialog);
        ASSERT_TRUE(opened) << fs::path{dialog}.string();
        PostMessageW(opened, WM_CLOSE, 0, 0);
        EXPECT_TRUE(AwaitGone(opened));
    }
    EXPECT_TRUE(Choose(window, L"ef"));
    for (const wchar_t letter : std::wstring{L"Template 1"})
        PostMessageW(ChildOf(window, WC_EDITW), WM_CHAR, letter, 1);
    Sleep(500);
    PressKey(ChildOf(window, WC_EDITW), VK_ESCAPE);
    EXPECT_TRUE(SelectNode(window, L"Business"));
    Sleep(500);
}

TEST_F(MemoryBench, TakesNoMoreAfterAWhileThanAfterTheFirstMinute)
{
    constexpr double mostGrowth = 1.1;
    constexpr std::size_t most = 20; // handles and drawing objects that come and go
    const auto start = Clock::now();
    const auto warm = start + std::chrono::seconds{Asked("TS_WARM", 60)};
    const auto end = start + std::chrono::seconds{Asked("TS_SECONDS", 120)};
    prove::FillLibrary(installation.library);
    const HWND window = Open();
    ASSERT_TRUE(window);
    std::optional<Resources> first;
    Resources last;
    int rounds = 0;
    for (; (Clock::now() < end || !first) && !HasFailure(); ++rounds) {
        BrowseAll(window);
        last = ResourcesOf(browser->Id());
        if (!first && Clock::now() >= warm) {
            first = last;
            std::printf("after the first minute: %s\n", first->Text().c_str());
        }
    }
    if (first) {
        const double growth = static_cast<double>(last.privateKilobytes) / static_cast<double>(first->privateKilobytes);
        std::printf("after %d rounds: %s: %.3f times the memory\n", rounds, last.Text().c_str(), growth);
        EXPECT_LE(growth, mostGrowth);
        EXPECT_LE(last.handles, first->handles + most);
        EXPECT_LE(last.drawing, first->drawing + most);
        EXPECT_EQ(last.windows, first->windows);
    }
    Close();
}

} // namespace
} // namespace bench
