#pragma once

#include "ui/Button.h"
#include "ui/CheckBox.h"
#include "ui/ComboBox.h"
#include "ui/Form.h"
#include "ui/Frame.h"
#include "ui/Label.h"
#include "ui/ListBox.h"
#include "ui/UpDown.h"

/// A dialog with every control that a user enters something in.
class DemoControls final : public ui::Form {
public:
    explicit DemoControls(ui::Toolkit& toolkit);

    ui::Label lblKind{*this};
    ui::ComboBox cboKind{*this};
    ui::Button btnAdd{*this};
    ui::Frame fraPerson{*this};
    ui::Label lblFirst{*this};
    ui::TextBox txtFirst{*this};
    ui::Label lblLast{*this};
    ui::TextBox txtLast{*this};
    ui::Label lblPhone{*this};
    ui::TextBox txtPhone{*this};
    ui::Label lblMonths{*this};
    ui::TextBox txtMonths{*this};
    ui::UpDown udMonths{*this, txtMonths, 1, 99};
    ui::Label lblNotes{*this};
    ui::TextBox txtNotes{*this, ui::TextBox::Lines::Many};
    ui::ListBox lstNames{*this};
    ui::CheckBox chkApply{*this};
    ui::CheckBox chkShow{*this};
    ui::Button btnOk{*this, {}, ui::Role::Default};
    ui::Button btnCancel{*this, {}, ui::Role::Cancel};
    std::vector<std::string> Events; ///< every event in order

private:
    void Watch(ui::TextBox& box, const std::string& name);
    void PlaceAll();
};
