#include "tests/support/TestMachine.h"

#include <cstdlib>
#include <new>

namespace {

long allocationsLeft = -1; ///< until one fails; negative: none does

} // namespace

// Those of arrays call these. Inlined, the compiler would see memory of malloc that is deleted, and warn.
[[gnu::noinline]] void* operator new(std::size_t size)
{
    if (allocationsLeft >= 0 && allocationsLeft-- == 0)
        throw std::bad_alloc{};
    if (void* memory = std::malloc(size > 0 ? size : 1))
        return memory;
    throw std::bad_alloc{};
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept // what sorting takes, and does without
{
    return std::malloc(size);
}
[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace tests {
namespace {

/// What the user does, one message after the other. A message that fails is given up, as a window procedure does.
void Use(app::Browser& browser, ui::HeadlessToolkit& toolkit)
{
    const std::function<void()> acts[] = {
        [&] { browser.Start("EXE", "", "", "", ""); },
        [&] { toolkit.RunPosted(); },
        [&] { browser.Main()->tvTreeView.UserSelects("Letters"); },
        [&] { browser.Main()->UserPresses(ui::Plain(ui::KeyCode::F5)); },
        [&] {
            auto& tree = browser.Main()->tvTreeView;
            tree.StartLabelEdit();
            tree.UserEndsLabelEdit("Notes");
        },
        [&] { browser.Main()->UserCloses(); },
    };
    for (const auto& act : acts) {
        try {
            if (&act < acts + 2 || (browser.Main() != nullptr && browser.Main()->IsOpen()))
                act();
        } catch (const std::bad_alloc&) {
        }
    }
}

TEST(OutOfMemoryTest, AnAllocationThatFailsLeavesABrowserThatWorks)
{
    bool failed = true;
    // Every one at first, then further and further apart: loops do the same again and again.
    for (long n = 0; failed; n += 1 + n / 40) {
        TestMachine machine;
        machine.toolkit.ThrowAwayMessages = true;
        app::Browser browser{machine.system.AsPlatform(), machine.toolkit, machine.pictures};
        allocationsLeft = n;
        Use(browser, machine.toolkit);
        failed = allocationsLeft < 0;
        allocationsLeft = -1;

        SCOPED_TRACE(n);
        EXPECT_FALSE(machine.toolkit.Busy);
        if (browser.Main() != nullptr && browser.Main()->IsOpen()) {
            EXPECT_TRUE(browser.Main()->tvTreeView.Enabled());
            EXPECT_FALSE(browser.Main()->tvTreeView.Updating());
            EXPECT_FALSE(browser.Main()->Library().Loading());
            EXPECT_TRUE(browser.Main()->Close());
        }
        machine.toolkit.RunPosted();
        ASSERT_FALSE(browser.IsRunning());
        ASSERT_EQ(browser.Main(), nullptr);
        browser.Start("EXE", "", "", "", "");
        ASSERT_NE(browser.Main(), nullptr);
        EXPECT_TRUE(browser.Main()->IsOpen());
        EXPECT_GT(browser.Main()->tvTreeView.Count(), 4u);
    }
}

} // namespace
} // namespace tests
