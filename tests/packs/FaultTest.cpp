// One call of the system after the other goes wrong while packs are deleted, and when one has been installed.
#include "tests/packs/PackTest.h"
#include "tests/support/FaultRunner.h"

#include <algorithm>

namespace tests {
namespace {

struct Desk : PackMachine {
    Texts listed; ///< the manager's rows at its end

    /// Failures that the user has heard of; that something was left in place is none.
    std::size_t Told() const
    {
        const std::string leftInPlace{app::StringTable::Own(643)};
        return static_cast<std::size_t>(std::ranges::count_if(toolkit.Messages, [&](const auto& shown) {
            return shown.icon != Icon::Question && !shown.text.starts_with(leftInPlace);
        }));
    }
};

void Prepare(Desk& desk)
{
    desk.AddTemplates({"Garden\\List.swt", "Garden\\Previews\\List.jpg", "Garden\\Flyers\\Spring.swt",
                       "Shared\\Mine.swt", "Shared\\Theirs.swt", "Second\\A.swt"});
    desk.system.files.AddFile("C:\\Outside\\precious.swt");
    desk.system.files.AddFolder("C:\\Outside\\Previews");
    desk.PutPack({"Garden", "Garden\nGarden\\Flyers\nShared|Theirs.swt"});
    desk.PutPack({"Second", "Second\nGarden\\Flyers"});
    desk.PutPack({"Bundled", "Letters", "1"});
    desk.toolkit.ThrowAwayMessages = desk.toolkit.AnswerYes = true;
    desk.Start();
    desk.toolkit.Messages.clear();
}

/// What is there after a run: nothing that is nobody's to remove is gone, and what is listed is what there is.
void Check(Desk& desk, bool dies, bool isReadable)
{
    if (dies) {
        desk.browser.reset();
        desk.system.EndProcess();
    }
    for (const char* kept :
         {"Shared\\Mine.swt", "Letters\\Memo.swt", "Letters\\Formal\\Complaint.swt", "Business\\Invoice.swt"})
        EXPECT_TRUE(desk.system.files.Exists(desk.InLibrary(kept))) << kept;
    EXPECT_TRUE(desk.system.files.Exists("C:\\Outside\\precious.swt"));
    const Texts installed = desk.Installed();
    const auto has = [&](const std::string& name) { return std::ranges::find(installed, name) != installed.end(); };
    for (const auto& [pack, file] : {std::pair{"Garden", "Garden\\List.swt"}, {"Second", "Second\\A.swt"}}) {
        const bool isNamed = !desk.toolkit.Messages.empty() && desk.toolkit.Messages.back().text.contains(pack);
        EXPECT_TRUE(has(pack) || isNamed || !desk.system.files.Exists(desk.InLibrary(file)))
            << "nobody knows of " << file << " any more";
    }
    if (dies || !isReadable)
        return;
    Texts names;
    for (const std::string& row : desk.listed)
        names.push_back(row.substr(0, row.find('|')));
    EXPECT_EQ(names, installed) << "the list shows something else";
    const Texts shown = TreeTexts(desk.Main().tvTreeView);
    desk.Main().UserPresses(ui::Plain(ui::KeyCode::F5));
    EXPECT_EQ(TreeTexts(desk.Main().tvTreeView), shown) << "the tree shows something else";
}

const Trouble troubles[] = {
    {},
    {Trouble::OneCallFails, platform::error::NotReady},
    {Trouble::NothingWorksFromThereOn},
    {Trouble::TheProcessDies},
    {Trouble::TheWorldChanges,
     {},
     [](TestMachine& m) { // the pack's folder becomes a link, all that is in it somebody else's
         if (m.system.files.Exists(m.InLibrary("Garden")))
             m.system.files.Remove(m.InLibrary("Garden"));
         m.system.files.AddLink(m.InLibrary("Garden"), "C:\\Outside");
     }},
};
class PackFaultTest : public ::testing::TestWithParam<Trouble> {};

TEST_P(PackFaultTest, ADeletionLosesNothingAndTheViewsSayWhatIsThere)
{
    const Trouble& trouble = GetParam();
    const bool dies = trouble.kind == Trouble::TheProcessDies;
    for (const bool all : {false, true}) {
        SCOPED_TRACE(all ? "all" : "one");
        const auto act = [&](Desk& desk) {
            desk.InManager([&](auto& form) {
                form.lvPacks.UserSelects(1);
                (all ? form.btnDeleteAll : form.btnDelete).UserClicks();
                desk.listed = RowsOf(form);
            });
        };
        ForEachCall<Desk>(60, trouble, Prepare, act, [&](Desk& desk, const std::string& call) {
            if (trouble.kind == Trouble::OneCallFails) {
                EXPECT_LE(desk.Told(), 1u) << "one failure, one message";
            }
            // What could not be read cannot be shown; and a world that changes on its own is shown when it is read.
            const bool isReadable = trouble.kind == Trouble::OneCallFails && !call.contains(".List ") &&
                                    !call.contains(".Stat ") && !call.starts_with("Registry.SubKeys");
            Check(desk, dies, isReadable);
            if (!all && trouble.kind != Trouble::TheWorldChanges) {
                EXPECT_TRUE(desk.system.files.Exists(desk.InLibrary("Garden\\Flyers\\Spring.swt"))) << "another's";
            }
        });
    }
}
INSTANTIATE_TEST_SUITE_P(Troubles, PackFaultTest, ::testing::ValuesIn(troubles));

TEST(InstallFaultTest, TheLockEndsAndTheLibraryIsLoadedWhateverFails)
{
    const auto prepare = [](Desk& desk) {
        Prepare(desk);
        desk.system.files.AddFile("C:\\New.exe", PackBuilder::Pack("Tessaly 1.0"));
    };
    const auto act = [](Desk& desk) {
        desk.toolkit.FileChoices.push_back("C:\\New.exe");
        desk.Main().Commands().Run("mnuInstallNewTemplates");
        while (desk.system.jobs.Count() > 0)
            desk.system.jobs.Finish();
        desk.AddTemplates({"New\\N.swt"});
        if (desk.system.shell.Watched() > 0)
            desk.system.shell.EndWatched(0);
    };
    ForEachCall<Desk>(20, {}, prepare, act, [](Desk& desk, const std::string& call) {
        // A failed look at the file is told twice: why, and what follows from it.
        EXPECT_LE(desk.Told(), call.contains(".Open ") || call.starts_with("Jobs") ? 2u : 1u);
        if (!desk.system.shell.Runs().empty() && !call.contains(".List ") && !call.contains(".Stat ")) {
            EXPECT_NE(desk.Main().tvTreeView.Find("New"), nullptr);
        }
        desk.toolkit.FileChoices.clear();
        desk.toolkit.FilesAsked.clear();
        desk.toolkit.FileChoices.push_back(std::nullopt);
        desk.Main().Commands().Run("mnuInstallNewTemplates");
        EXPECT_EQ(desk.toolkit.FilesAsked.size(), 1u) << "locked for good";
    });
}

} // namespace
} // namespace tests
