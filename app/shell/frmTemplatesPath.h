#pragma once

#include "app/base/Program.h"
#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/Label.h"

namespace app {

/// Shown when the templates path cannot be read: try again, choose another one, or quit the browser.
class frmTemplatesPath final : public ui::Form {
public:
    explicit frmTemplatesPath(Program& program);

    /// True once the templates path can be read; false when the user quits.
    static bool EnsureReadable(Program& program);

    ui::Label lblReason{*this};
    ui::Label lblPath{*this};
    ui::Label lblQuit{*this, ui::Tag{337}};
    ui::Button cmdRetry{*this, ui::Tag{507}, ui::Role::Default};
    ui::Button cmdNew{*this, ui::Tag{334}};
    ui::Button cmdCancel{*this, ui::Tag{231}, ui::Role::Cancel};

    bool IsReadable() const { return readable; }

private:
    Program& program;
    bool readable{};

    void cmdRetry_Click();
    void cmdNew_Click();
    /// What became of an attempt: ends the dialog, or leaves the keyboard where it was made.
    void SetReadable(bool value, ui::Button& tried);
    void ShowReason();
};

/// Lets the user choose another templates path and stores it for the location in use (hard disk or CD). A folder
/// without a single template is refused with string 338 before anything is stored. True when another one is in use now.
bool ChooseTemplatesPath(Program& program);

} // namespace app
