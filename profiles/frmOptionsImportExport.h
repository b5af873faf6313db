#pragma once

#include "app/base/Program.h"
#include "profiles/ProfileManager.h"
#include "profiles/ProfileTransfer.h"
#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/Frame.h"
#include "ui/Label.h"
#include "ui/TextBox.h"

#include <functional>

namespace profiles {

/// Writes all profiles into a folder of the user's choice, or merges such a folder. Stays open afterwards.
class frmOptionsImportExport final : public ui::Form {
public:
    frmOptionsImportExport(app::Program& program, ProfileManager& profiles, ProfileTransfer& transfer,
                           std::function<void()> openHelp);

    ui::Frame fraExport{*this, ui::Tag{483}};
    ui::Label lblExport{*this, ui::Tag{485}};
    ui::TextBox txtExportPath{*this};
    ui::Button btnBrowse{*this, ui::Tag{139}};
    ui::Label lblFolder{*this, ui::Tag{486}};
    ui::Label lblProfileName{*this, ui::Tag{487}};
    ui::TextBox txtProfileName{*this};
    ui::Button btnExport{*this, ui::Tag{489}};
    ui::Frame fraImport{*this, ui::Tag{484}};
    ui::Label lblImport{*this, ui::Tag{488}};
    ui::Button btnImport{*this, ui::Tag{490}};
    ui::Button OKButton{*this, ui::Tag{265}, ui::Role::Default};
    ui::Button btnHelp{*this, ui::Tag{442}};

private:
    app::Program& program;
    ProfileManager& profiles;
    ProfileTransfer& transfer;
    bool running{}; ///< an export or import, which a message of its own may hold up

    ProfileTransfer::Confirm Confirm();
    void btnBrowse_Click();
    void btnExport_Click();
    void btnImport_Click();
};

} // namespace profiles
