#pragma once

#include "app/base/Program.h"
#include "app/shell/HelpDocuments.h"
#include "platform/Ticket.h"
#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/Frame.h"
#include "ui/Label.h"
#include "ui/ListBox.h"
#include "ui/ListView.h"

#include <functional>
#include <string>
#include <vector>

namespace app {

/// Tells which product this is, of what version it and its components are, and where it is on the web.
class frmAbout final : public ui::Form, private ui::ListModel {
public:
    /// The version of a file, for any thread; "" when it has none.
    using VersionReader = std::function<std::string(platform::FileSystem& files, const std::string& path)>;

    frmAbout(Program& program, HelpDocuments& help, const VersionReader& versionOf);

    ui::Label lblProduct{*this, ui::Tag{390}};
    ui::Label lblVersion{*this, ui::Tag{266}};
    ui::Label lblEdition{*this};
    ui::Frame fraDetails{*this, ui::Tag{508}};
    ui::ListView lvComponents{*this};
    ui::Label lblLinks{*this, ui::Tag{695}};
    ui::ListBox lstLinks{*this};
    ui::Button cmdVisit{*this, ui::Tag{696}};
    ui::Button cmdOK{*this, ui::Tag{265}, ui::Role::Default};
    ui::Button cmdCopy{*this, ui::Tag{692}};
    ui::Button cmdHelp{*this, ui::Tag{442}};

private:
    struct Component {
        std::string name;
        std::string file;
        std::string version;
    };

    Program& program;
    HelpDocuments& help;
    std::vector<Component> components; ///< that are there, once they have been looked at
    std::vector<std::string> links;
    platform::Ticket looking;

    int Rows() const override { return static_cast<int>(components.size()); }
    std::string Text(int row, int column) const override;
    int Icon(int) const override { return 0; }
    int SmallIcon(int) const override { return 0; }

    std::string Edition() const;
    std::vector<Component> Candidates() const;
    void LookAt(std::vector<Component> candidates, const VersionReader& versionOf);
    void cmdVisit_Click();
    void cmdCopy_Click();
};

} // namespace app
