// A user who does anything in any order, on a system where anything fails at any time. Each life of a browser goes by
// its own seed, which a failure names; TS_LIVES asks for more of them than the few of every run, TS_SEED for the first.
#include "tests/support/TestMachine.h"

#include "ui/Button.h"
#include "ui/CheckBox.h"
#include "ui/Image.h"
#include "ui/ListBox.h"
#include "ui/Splitter.h"
#include "ui/UpDown.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <random>

namespace tests {
namespace {

using namespace std::chrono_literals;

constexpr int ActsALife = 250;
constexpr int ActsADialog = 12;
constexpr int MostNested = 4; ///< loops inside loops; a user goes no deeper either

const Texts Words{
    // clang-format off
    "", "Memo", "Größe", "CON", "trail.", "a\\b", "日本の手紙", "&Q&A", "1", "5551234", "  ", "*", "Letters",
    "C:\\Templates", "no \xFF text", std::string(300, 'x'), "Invoice", "-7", "http://example.com/",
    // clang-format on
};
const Texts Folders{"C:\\Templates", "C:\\Templates\\Letters", "C:\\Other", "D:\\", "D:\\More", "C:\\", "X:\\gone", ""};
const Texts Files{"C:\\Other\\photo.jpg", "C:\\Other\\keep.swt", "C:\\Templates\\Business\\Invoice.swt",
                  "X:\\gone.bmp"};

class RandomUser final : public ui::HeadlessToolkit {
public:
    RandomUser(TestMachine& usedMachine, unsigned seed) : machine{usedMachine}, random{seed}
    {
        OnYield = [this](int) {
            if (Chance(4))
                ActAnywhere();
        };
        Elapse = [this](std::chrono::milliseconds atMost) { return machine.system.delays.Live(atMost); };
    }

    std::size_t Below(std::size_t bound) { return bound == 0 ? 0 : random() % bound; }
    bool Chance(std::size_t oneIn) { return Below(oneIn) == 0; }
    template <class Container>
    auto& OneOf(Container& container)
    {
        return container[Below(std::size(container))];
    }

    /// One thing that happens: the user acts, or what runs beside comes to its end.
    void ActAnywhere()
    {
        if (modal.size() + nested >= MostNested)
            return;
        ++nested;
        ++Acts;
        if (Chance(3))
            HappenBeside();
        else if (!modal.empty())
            ActOn(*modal.back());
        else if (auto forms = VisibleForms(); !forms.empty())
            ActOn(*OneOf(forms));
        --nested;
    }
    void RunModal(ui::Form& form) override
    {
        const Yield yield{*this};
        modal.push_back(&form);
        for (int i = 0; i < ActsADialog && form.IsOpen(); ++i)
            ActOn(form);
        for (int i = 0; i < 3 && form.IsOpen(); ++i)
            form.UserCloses();
        if (form.IsOpen())
            form.Unload();
        std::erase(modal, &form);
    }
    ui::Answer ShowMessage(const ui::MessageBox& message) override
    {
        using enum ui::Answer;
        const Yield yield{*this};
        EXPECT_NE(message.text, "");
        if (Chance(4))
            HappenBeside();
        const std::vector<ui::Answer> answers[] = {{Ok}, {Yes, No}, {Yes, No, Cancel}, {Retry, Cancel, Cancel}};
        const ui::Answer answer = OneOf(answers[static_cast<std::size_t>(message.buttons)]);
        SaidYes = SaidYes || answer == Yes;
        return answer;
    }
    std::optional<std::string> BrowseForFolder(const std::string&, const std::string&) override
    {
        return Chance(3) ? std::nullopt : std::optional{OneOf(Folders)};
    }
    std::optional<std::string> OpenFile(const ui::OpenFileDialog&) override
    {
        return Chance(3) ? std::nullopt : std::optional{OneOf(Files)};
    }

    bool SaidYes{}; ///< to anything: something may have been deleted at the user's wish
    long Acts{};

private:
    TestMachine& machine;
    std::mt19937 random;
    std::vector<ui::Form*> modal;
    std::size_t nested{};

    std::vector<ui::Form*> VisibleForms() const
    {
        std::vector<ui::Form*> forms;
        std::ranges::copy_if(Forms(), std::back_inserter(forms), &ui::Form::IsVisible);
        return forms;
    }

    void HappenBeside()
    {
        auto& jobs = machine.system.jobs;
        switch (Below(5)) {
        case 0:
            if (const auto count = jobs.Count(); count > 0)
                jobs.DoWork(Below(count));
            break;
        case 1:
        case 2:
            if (const auto count = jobs.Count(); count > 0)
                jobs.Finish(Below(count));
            break;
        case 3:
            if (const auto running = machine.system.timers.Running(); !running.empty())
                machine.system.timers.Elapse(Below(running.size()));
            break;
        default:
            machine.system.mail.Close({});
            if (machine.system.shell.Watched() > 0)
                machine.system.shell.EndWatched(static_cast<std::uint32_t>(Below(2)));
        }
    }

    void ActOn(ui::Form& form)
    {
        const ui::Form::Use use{form};
        OnPopup([this](ui::Menu& menu) { ChooseFrom(menu); });
        switch (Below(16)) {
        case 0:
        case 1:
            if (form.MenuOpening)
                form.MenuOpening();
            ChooseFrom(form.MenuBar);
            break;
        case 2:
        case 3:
            form.UserPresses(AnyKey());
            break;
        case 4:
            form.UserResizes({static_cast<int>(Below(20000)), static_cast<int>(Below(15000))});
            break;
        case 5:
            if (form.MouseWheel)
                form.MouseWheel(static_cast<int>(Below(7)) - 3);
            break;
        case 6:
            if (Chance(8))
                form.UserCloses();
            break;
        default:
            if (!form.Controls().empty())
                ActOn(*OneOf(form.Controls()));
        }
    }

    void ActOn(ui::Control& control)
    {
        if (!control.Visible() || !control.Enabled())
            return;
        if (control.IsTabStop())
            control.UserFocuses();
        if (auto* button = dynamic_cast<ui::Button*>(&control))
            button->UserClicks();
        else if (auto* box = dynamic_cast<ui::CheckBox*>(&control))
            box->UserClicks();
        else if (auto* list = dynamic_cast<ui::ListView*>(&control))
            ActOn(*list);
        else if (auto* tree = dynamic_cast<ui::TreeView*>(&control))
            ActOn(*tree);
        else if (auto* text = dynamic_cast<ui::TextBox*>(&control))
            ActOn(*text);
        else if (auto* lines = dynamic_cast<ui::ListBox*>(&control); lines != nullptr && Chance(3))
            lines->UserActivates(static_cast<int>(Below(lines->Items().size())));
        else if (auto* items = dynamic_cast<ui::ItemControl*>(&control))
            items->UserSelects(static_cast<int>(Below(items->Items().size())));
        else if (auto* tabs = dynamic_cast<ui::TabStrip*>(&control); tabs != nullptr && !tabs->Tabs().empty())
            tabs->UserSelects(std::string{OneOf(tabs->Tabs()).key});
        else if (auto* tools = dynamic_cast<ui::ToolBar*>(&control); tools != nullptr && !tools->Buttons().empty())
            tools->UserClicks(std::string{OneOf(tools->Buttons()).key});
        else if (auto* image = dynamic_cast<ui::Image*>(&control))
            image->UserClicks();
        else if (auto* splitter = dynamic_cast<ui::Splitter*>(&control))
            splitter->UserDrags(static_cast<int>(Below(20000)) - 1000);
        else if (auto* arrows = dynamic_cast<ui::UpDown*>(&control))
            arrows->UserSteps(static_cast<int>(Below(9)) - 4);
    }

    void ActOn(ui::ListView& list)
    {
        const int row = static_cast<int>(Below(static_cast<std::size_t>(list.Rows()) + 1)) - 1;
        const std::size_t column = Below(list.Columns().size());
        switch (Below(9)) {
        case 0:
        case 1:
        case 2:
            list.UserSelects(row);
            break;
        case 3:
            if (row >= 0)
                list.UserActivates(row);
            break;
        case 4:
            if (!list.Columns().empty())
                list.UserClicksColumn(static_cast<int>(column));
            break;
        case 5:
            if (!list.Columns().empty())
                list.UserSizesColumn(column, static_cast<int>(Below(9000)));
            break;
        case 6:
            if (const auto& menu = Chance(4) ? list.HeaderContextMenu : list.ContextMenu)
                menu({100, 100});
            break;
        case 7:
            if (list.DropTarget != nullptr && list.Selected() >= 0)
                list.DropTarget->UserDrops(AnyNode(*list.DropTarget), list);
            break;
        default:
            for (int each = 0; list.Model() != nullptr && each < list.Rows(); ++each)
                (void)list.Model()->ThumbnailOf(each);
            if (list.KeyDown)
                list.KeyDown(AnyKey());
        }
    }

    void ActOn(ui::TreeView& tree)
    {
        const std::string key = AnyNode(tree);
        switch (Below(8)) {
        case 0:
        case 1:
            tree.UserSelects(key);
            break;
        case 2:
            tree.UserClicksAgain();
            break;
        case 3:
            tree.UserExpands(key);
            break;
        case 4:
            tree.UserCollapses(key);
            break;
        case 5:
            if (tree.ContextMenu)
                tree.ContextMenu({100, 100});
            break;
        case 6:
            if (tree.EditedLabel() || tree.UserStartsLabelEdit(key))
                Chance(3) ? tree.UserCancelsLabelEdit() : tree.UserEndsLabelEdit(OneOf(Words));
            break;
        default:
            if (tree.KeyDown)
                tree.KeyDown(AnyKey());
        }
    }

    void ActOn(ui::TextBox& text)
    {
        constexpr ui::KeyCode commands[] = {ui::KeyCode::Enter, ui::KeyCode::Escape, ui::KeyCode::Up,
                                            ui::KeyCode::Down};
        text.Select(Below(text.Text().size() + 1), Below(9));
        if (Chance(4))
            text.UserPressesCommandKey(ui::Plain(OneOf(commands)));
        else if (Chance(3))
            text.UserPastes(OneOf(Words));
        else
            text.UserTypes(Chance(5) ? "\b" : OneOf(Words));
    }

    std::string AnyNode(const ui::TreeView& tree)
    {
        std::size_t left = Below(tree.Count());
        std::string key;
        tree.ForEach([&](const ui::TreeView::Node& node) {
            key = node.key;
            return left-- > 0;
        });
        return key;
    }

    ui::Key AnyKey()
    {
        const auto code = Chance(2) ? 'A' + Below(26) : static_cast<std::size_t>(ui::KeyCode::F1) + Below(24);
        return {static_cast<ui::KeyCode>(code), Chance(2), Chance(4), Chance(6)};
    }

    /// As the user sees it: an entry below one that is hidden or grey is out of reach.
    void ChooseFrom(ui::Menu& menu)
    {
        std::vector<ui::Menu*> entries;
        for (const auto& item : menu.Items())
            if (item->Visible && item->Enabled && !item->Separator)
                entries.push_back(item.get());
        if (entries.empty())
            return;
        ui::Menu& chosen = *OneOf(entries);
        if (chosen.Items().empty())
            chosen.UserClicks();
        else
            ChooseFrom(chosen);
    }
};

/// Something beside the browser changes its world, or a call of the system that comes soon fails.
void MakeTrouble(TestMachine& machine, RandomUser& user, bool& removed)
{
    using namespace platform;
    auto& files = machine.system.files;
    constexpr Error errors[] = {error::AccessDenied, error::SharingViolation, error::FileNotFound, error::DiskFull,
                                error::NotReady};
    switch (user.Below(10)) {
    case 0:
        files.AddFile("C:\\Templates\\Letters\\New " + std::to_string(user.Below(50)) + ".swt", "new");
        break;
    case 1:
        if (const auto paths = files.AllPaths(Templates); !paths.empty()) {
            files.Remove(paths[user.Below(paths.size())]);
            removed = true;
        }
        break;
    case 2:
        files.SetDriveReady("D:", user.Chance(2));
        break;
    case 3:
        machine.PutSetting("Browser\\Favorites", user.Chance(2) ? "Letters\\Memo.swt" : "no\\such*file", "");
        break;
    case 4:
    case 5: {
        constexpr memory::Delays::Time delays[] = {0ms, 5ms, 40ms, 6s, memory::Delays::Never};
        machine.system.delays.Set(user.OneOf(Folders), user.OneOf(delays));
        break;
    }
    case 6:
        machine.system.faults.FailFrom(1 + user.Below(40), errors[user.Below(std::size(errors))]);
        break;
    default:
        machine.system.faults.FailAt(1 + user.Below(40), errors[user.Below(std::size(errors))]);
    }
}

void Prepare(TestMachine& machine)
{
    auto& files = machine.system.files;
    machine.toolkit.ThrowAwayMessages = true;
    machine.PutSetting("Options", "ReportABug", "1");
    machine.AddTemplates({"Letters\\Memo.jpg", "Business\\Previews\\Invoice.jpg", "Letters\\Formal\\Folder.bmp"});
    files.AddFile("C:\\Other\\keep.swt", "kept");
    files.AddFile("C:\\Other\\photo.jpg", "\xFF\xD8\xFF");
    files.AddFile("C:\\Windows\\win.ini", "kept");
    files.AddFile("D:\\More\\Cards\\Card.swt", "card");
    machine.system.registry.PutString(Hive::CurrentUser, "Software\\Other", "theirs", "kept");
}

void CheckLife(unsigned seed, long& acts)
{
    SCOPED_TRACE("seed " + std::to_string(seed));
    TestMachine machine;
    Prepare(machine);
    const auto otherFiles = machine.system.files.Snapshot("C:\\Other"),
               system = machine.system.files.Snapshot("C:\\Windows");
    RandomUser user{machine, seed};
    const bool troubled = user.Chance(2);
    bool removed = false;
    app::Browser browser{machine.system.AsPlatform(), user, machine.pictures};
    for (int act = 0; act < ActsALife; ++act) {
        if (!browser.IsRunning())
            browser.Start("EXE", "", "", "", "");
        if (troubled && user.Chance(20))
            MakeTrouble(machine, user, removed);
        user.ActAnywhere();
        if (user.Chance(3))
            user.RunPosted();
        if (user.Chance(10))
            machine.system.faults.Clear();
    }
    acts += user.Acts;

    machine.system.delays.Set("", 0ms);
    machine.system.faults.Clear();
    user.OnYield = nullptr;
    if (browser.Main() != nullptr && browser.Main()->IsOpen()) {
        user.RunPosted();
        machine.system.jobs.FinishAll();
    }
    if (browser.Main() != nullptr && browser.Main()->IsOpen()) {
        EXPECT_FALSE(user.Busy);
        EXPECT_TRUE(browser.Main()->tvTreeView.Enabled());
        EXPECT_FALSE(browser.Main()->tvTreeView.Updating());
        EXPECT_FALSE(browser.Main()->Library().Loading());
        for (int i = 0; i < 20 && browser.Main() != nullptr && !browser.Main()->Close(); ++i) {
        }
    }
    user.RunPosted();
    EXPECT_FALSE(browser.IsRunning());
    EXPECT_TRUE(user.Forms().empty()) << user.Forms().front()->Name() << " is left";

    const auto holds = [&](const auto& before, const auto& after) {
        for (const auto& [path, contents] : before)
            EXPECT_TRUE(after.contains(path) && after.at(path) == contents) << path;
    };
    holds(system, machine.system.files.Snapshot("C:\\Windows"));
    holds(otherFiles, machine.system.files.Snapshot("C:\\Other"));
    EXPECT_EQ(machine.system.registry.StringAt(Hive::CurrentUser, "Software\\Other", "theirs"), "kept");
    if (!user.SaidYes && !removed) {
        const auto after = machine.system.files.Snapshot(Templates);
        EXPECT_GE(std::ranges::count_if(after, [](const auto& entry) { return entry.second.contains("contents of "); }),
                  11)
            << "a template is gone, and nobody wished it";
    }
}

unsigned Asked(const char* variable, unsigned otherwise)
{
    const char* const text = std::getenv(variable);
    return text != nullptr ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : otherwise;
}

TEST(RandomUserTest, NothingThatAUserDoesBreaksTheBrowser)
{
    const unsigned first = Asked("TS_SEED", 1), lives = Asked("TS_LIVES", 40);
    long acts = 0;
    for (unsigned seed = first; seed < first + lives && !HasFailure(); ++seed)
        CheckLife(seed, acts);
    std::printf("%ld acts in %u lives\n", acts, lives);
}

} // namespace
} // namespace tests
