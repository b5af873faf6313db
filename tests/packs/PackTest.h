#pragma once

#include "tests/packs/PackBuilder.h"
#include "tests/support/TestMachine.h"

#include "packs/frmContentPackManager.h"

#include <functional>
#include <optional>

namespace tests {

using packs::frmContentPackManager;

/// A machine with solution packs, and a browser once it is started.
struct PackMachine : TestMachine {
    std::optional<app::Browser> browser;

    void Start()
    {
        browser.emplace(system.AsPlatform(), toolkit, pictures);
        browser->Start("EXE", "", "", "", "");
    }
    app::frmMain& Main() { return *browser->Main(); }
    /// Opens the manager, lets `act` use it, and closes it.
    void InManager(const std::function<void(frmContentPackManager&)>& act)
    {
        toolkit.OnModal<frmContentPackManager>("frmContentPackManager", [act](auto& form) {
            act(form);
            form.btnClose.UserClicks();
        });
        Main().Commands().Run("mnuSolutionPackManager");
    }

    struct Pack {
        std::string name;
        std::string folders{};
        std::string setUp{"0"};
        std::string description{"Templates"};
    };
    void PutPack(const Pack& pack)
    {
        const std::string section = "Content\\" + pack.name;
        PutSetting(section, "Version", "Tessaly 1.0");
        PutSetting(section, "Description", pack.description);
        PutSetting(section, "PackInstalledBySetUp", pack.setUp);
        PutSetting(section, "TemplateFolders", pack.folders);
    }
    Texts Installed()
    {
        return system.registry.SubKeys(Hive::CurrentUser, std::string{SettingsKey} + "\\Content").value_or(Texts{});
    }
    /// What is in the library, by path from there.
    Texts InTheLibrary(const std::string& folder = {}) const
    {
        Texts paths = system.files.AllPaths(InLibrary(folder));
        for (std::string& path : paths)
            path.erase(0, Templates.size() + 1);
        return paths;
    }
};

/// What the user sees in the list, a line a row.
inline Texts RowsOf(const frmContentPackManager& form)
{
    Texts rows;
    for (int row = 0; row < form.lvPacks.Rows(); ++row) {
        const auto text = [&](int column) { return form.lvPacks.Model()->Text(row, column); };
        rows.push_back(text(0) + "|" + text(1) + "|" + text(2));
    }
    return rows;
}

} // namespace tests
