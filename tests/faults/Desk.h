#pragma once

#include "tests/support/Invariants.h"

#include "profiles/ProfileImages.h"

namespace tests {

struct Scenario;

/// A machine with something of everything that a user can lose, and a browser on it.
struct Desk : TestMachine {
    std::optional<app::Browser> browser;
    Trouble trouble{};

    Desk();
    app::frmMain& Main() { return *browser->Main(); }
    bool IsOpen() { return browser && browser->Main() != nullptr && browser->Main()->IsOpen(); }
    void Start();
    /// Whatever is there, or has happened, before the scenario.
    void Prepare(const Scenario& scenario);
    /// What was posted and what runs beside comes to its end.
    void Settle();
    /// What the user does in a dialog before he closes it, and the command that opens it.
    template <class Dialog>
    void In(const std::string& name, const char* command, const std::function<void(Dialog&)>& act)
    {
        OnDialog(name, act);
        if (IsOpen())
            Main().Commands().Run(command);
        Settle();
    }
    template <class Dialog>
    void OnDialog(const std::string& name, const std::function<void(Dialog&)>& act)
    {
        toolkit.OnModal<Dialog>(name, [act](Dialog& dialog) {
            const ui::Form::Use use{dialog};
            act(dialog);
            if (dialog.IsOpen())
                dialog.UserCloses();
            if (dialog.IsOpen())
                dialog.Unload();
        });
    }
    /// The names of the keys below this beginning of a line of the registry's snapshot.
    Texts KeysBelow(std::string_view line) const;
    /// Whether the user has been told that something could not be read.
    bool CouldNotRead() const;
    void PutProfile(const std::string& name, const std::string& value, const std::string& text);
    std::string ProfileAt(const std::string& name, const std::string& value) const;
    /// Something that somebody else does to what the call that is about to be made is about; one of `Changes` after the
    /// other by `turn`. Gives what has changed: paths, and lines of the registry.
    std::set<std::string> ChangeWorld(std::size_t turn);
    static constexpr std::size_t Changes = 5;
    /// Whatever the world has made unreadable can be read again.
    void Heal();

private:
    std::string unreadable;
};

struct Scenario {
    const char* name;
    /// Nine tenths of those that it makes: fewer mean that something goes round the platform's interfaces.
    std::size_t leastCalls;
    std::function<void(Desk&)> act;
    Scope scope{};
    std::function<void(Desk&)> furnish{}; ///< what else there is, before anything starts
    bool startsItself{};
    bool meetsEveryChange{}; ///< before each of its calls: it removes what may have become somebody else's
};
const std::vector<Scenario>& Scenarios();
inline void PrintTo(const Scenario& scenario, std::ostream* out)
{
    *out << scenario.name;
}

} // namespace tests
