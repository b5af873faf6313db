#pragma once

#include "app/base/Program.h"
#include "packs/SolutionPacks.h"
#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/Label.h"
#include "ui/ListView.h"

#include <string>
#include <vector>

namespace packs {

/// The list of installed solution packs: install further ones, delete one or all, find more on the web.
class frmContentPackManager final : public ui::Form, private ui::ListModel {
public:
    frmContentPackManager(app::Program& program, SolutionPacks& packs);

    /// Fills the list from the registry, and keeps the selection. Yields.
    void GetTemplatPacks();
    /// Shows whether a pack is being installed.
    void ShowInstalling();

    ui::Label lblIntroduction{*this, ui::Tag{450}};
    ui::Label lblInstalled{*this, ui::Tag{451}};
    ui::ListView lvPacks{*this};
    ui::Button btnInstall{*this, ui::Tag{393}};
    ui::Button btnDelete{*this, ui::Tag{454}};
    ui::Button btnDeleteAll{*this, ui::Tag{453}};
    ui::Label lblInstalling{*this}; ///< empty while nothing is being installed
    ui::Label lblDownload{*this, ui::Tag{452}};
    ui::Button btnGetMore{*this, ui::Tag{455}};
    ui::Button btnHelp{*this, ui::Tag{468}};
    ui::Button btnClose{*this, ui::Tag{473}, ui::Role::Cancel};

private:
    app::Program& program;
    SolutionPacks& packs;
    std::vector<SolutionPack> listed;
    int fills{};
    bool deleting{};

    int Rows() const override { return static_cast<int>(listed.size()); }
    std::string Text(int row, int column) const override;
    int Icon(int) const override { return 0; }
    int SmallIcon(int) const override { return 0; }

    void EnableButtons();
    void btnDelete_Click();
    void btnDeleteAll_Click();
    void Delete(const std::vector<std::string>& names);
};

} // namespace packs
