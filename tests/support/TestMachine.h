#pragma once

#include "app/shell/Browser.h"
#include "app/shell/frmTemplatesPath.h"
#include "pictures/memory/MemoryPictures.h"
#include "platform/memory/System.h"
#include "tests/support/ScriptedToolkit.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace tests {

using platform::Hive;
using ui::Answer;
using ui::Icon;
using Texts = std::vector<std::string>;

inline constexpr std::string_view SettingsKey = "Software\\VB and VBA Program Settings\\Tessaly GWX 1.0";
inline constexpr std::string_view Templates = "C:\\Templates";

/// A machine in memory with a scripted user, and a browser ready to be started on it.
struct TestMachine {
    platform::memory::System system;
    ScriptedToolkit toolkit;
    pictures::memory::MemoryPictures pictures;

    /// A browser that is set up: Office generation, a templates path on the hard disk, a small library.
    TestMachine();
    /// Nothing but an empty disk and registry.
    struct Bare {};
    explicit TestMachine(Bare)
    {
        toolkit.Elapse = [this](std::chrono::milliseconds atMost) { return system.delays.Live(atMost); };
    }

    void PutSetting(std::string_view section, std::string_view key, std::string_view value);
    std::string Setting(std::string_view section, std::string_view key) const;
    bool HasSetting(std::string_view section, std::string_view key) const;
    /// Adds template files by path relative to the library.
    void AddTemplates(const Texts& paths);
    /// The favourites as they stand in the registry.
    Texts StoredFavorites();
    std::string InLibrary(std::string_view relative) const;
};

/// A browser on a machine.
class BrowserTest : public ::testing::Test, public TestMachine {
protected:
    app::Browser browser{system.AsPlatform(), toolkit, pictures};

    std::string Start(std::string caption = "") { return browser.Start("EXE", "", "", "", std::move(caption)); }
    /// Closes the window, if there is one, and lets the browser end.
    void End()
    {
        if (browser.Main() != nullptr)
            browser.Main()->Close();
        toolkit.RunPosted();
    }
    void Restart(std::string caption = "")
    {
        End();
        Start(std::move(caption));
    }
    app::frmMain& Main() { return *browser.Main(); }
    /// The entry of the menu bar as it stands when the user opens it.
    ui::Menu& Item(std::string_view name)
    {
        Main().MenuOpening();
        return *Main().MenuBar.Find(name);
    }
    app::Program& Program() { return browser.GetProgram(); }
    std::string Text(int id) { return std::string{app::StringTable::Own(static_cast<std::uint16_t>(id))}; }
};

/// "Letters", "Letters\\Formal", "  "... : the tree's nodes as the user reads them, two blanks a level.
Texts TreeTexts(const ui::TreeView& tree);
/// The first column of the list.
Texts ListTexts(const ui::ListView& list);

} // namespace tests
