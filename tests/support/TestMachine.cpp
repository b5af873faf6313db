#include "tests/support/TestMachine.h"

#include "platform/Path.h"

namespace tests {

TestMachine::TestMachine() : TestMachine{Bare{}}
{
    PutSetting("Options", "MSOVersion", "XP");
    PutSetting("Profiles", "FirstRun", "0");
    PutSetting("Browser", "Access HDD_Templates", "True");
    PutSetting("Browser", "HDD Templates Path", Templates);
    system.automation.Register("CDIntf.CDIntf");
    system.files.AddFolder(Templates);
    AddTemplates({"Business\\Invoice.swt", "Business\\Budget.ccw", "Business\\Pitch.prt", "Business\\Terms.pdf",
                  "Business\\Photo.mst", "Business\\Contracts\\Lease.swt", "Letters\\Memo.swt",
                  "Letters\\Formal\\Complaint.swt"});
}

void TestMachine::PutSetting(std::string_view section, std::string_view key, std::string_view value)
{
    system.registry.PutString(Hive::CurrentUser, platform::path::Join(SettingsKey, section), key, value);
}

std::string TestMachine::Setting(std::string_view section, std::string_view key) const
{
    return system.registry.StringAt(Hive::CurrentUser, platform::path::Join(SettingsKey, section), key);
}

bool TestMachine::HasSetting(std::string_view section, std::string_view key) const
{
    return Setting(section, key) != "(none)";
}

Texts TestMachine::StoredFavorites()
{
    return system.registry.ValueNames(Hive::CurrentUser, platform::path::Join(SettingsKey, "Browser\\Favorites"))
        .value_or(Texts{});
}

void TestMachine::AddTemplates(const Texts& paths)
{
    for (const std::string& path : paths)
        system.files.AddFile(InLibrary(path), "contents of " + path);
}

std::string TestMachine::InLibrary(std::string_view relative) const
{
    return platform::path::Join(Templates, relative);
}

Texts TreeTexts(const ui::TreeView& tree)
{
    Texts texts;
    tree.ForEach([&](const ui::TreeView::Node& node) {
        std::string indent;
        for (const auto* parent = node.parent; parent != nullptr; parent = parent->parent)
            indent += "  ";
        texts.push_back(indent + node.text);
        return true;
    });
    return texts;
}

Texts ListTexts(const ui::ListView& list)
{
    Texts texts;
    for (int row = 0; row < list.Rows(); ++row)
        texts.push_back(list.Model()->Text(row, 0));
    return texts;
}

} // namespace tests
