#pragma once

#include "app/shell/Browser.h"
#include "fuzz/Check.h"
#include "pictures/memory/MemoryPictures.h"
#include "platform/memory/System.h"
#include "ui/headless/HeadlessToolkit.h"

#include <string>
#include <string_view>

namespace fuzz {

inline const std::string SettingsKey = "Software\\VB and VBA Program Settings\\Tessaly GWX 1.0";
inline const std::string Templates = "C:\\Templates";

/// A machine in memory that is set up for a start, and a user who answers every question with no.
struct Machine {
    platform::memory::System system;
    ui::HeadlessToolkit toolkit;
    pictures::memory::MemoryPictures pictures;

    Machine()
    {
        Put("Options", "MSOVersion", {platform::ValueType::String, "XP"});
        Put("Profiles", "FirstRun", {platform::ValueType::String, "0"});
        Put("Browser", "Access HDD_Templates", {platform::ValueType::String, "True"});
        Put("Browser", "HDD Templates Path", {platform::ValueType::String, Templates});
        system.automation.Register("CDIntf.CDIntf");
        system.files.AddFolder(Templates);
        toolkit.ThrowAwayMessages = true;
    }

    void Put(std::string_view section, std::string_view name, const platform::RegistryValue& value)
    {
        system.registry.Put(platform::Hive::CurrentUser, SettingsKey + "\\" + std::string{section}, name, value);
    }

    /// Starts a browser, lets `use` work with its main window when there is one, and ends it.
    template <class Use>
    void Run(const Use& use)
    {
        toolkit.OnModal("frmTemplatesPath", [](ui::Form& form) { form.UserCloses(); });
        app::Browser browser{system.AsPlatform(), toolkit, pictures};
        browser.Start("EXE", "", "", "", "");
        if (browser.Main() != nullptr && browser.Main()->IsOpen()) {
            use(*browser.Main());
            Check(browser.Main() == nullptr || browser.Main()->Close(), "the window closes");
        }
        toolkit.RunPosted();
        Check(!browser.IsRunning(), "the browser ends");
    }
};

} // namespace fuzz
