#pragma once

#include "app/base/StringTable.h"
#include "search/Criteria.h"
#include "search/ResultRows.h"
#include "ui/Button.h"
#include "ui/CheckBox.h"
#include "ui/ComboBox.h"
#include "ui/Form.h"
#include "ui/Label.h"
#include "ui/Layout.h"
#include "ui/TextBox.h"

namespace search {

/// The Find pane's controls, on the form that they stand on, in the order of Tab.
struct FindControls {
    explicit FindControls(ui::Form& form);

    ui::Label lblLookFor;
    ui::TextBox txtLookFor;
    ui::Label lblFolder;
    ui::ComboBox cboFolder;
    ui::CheckBox chkWord, chkExcel, chkPowerPoint;
    ui::Label lblProperty;
    ui::ComboBox cboProperty;
    ui::Label lblCondition;
    ui::ComboBox cboCondition;
    ui::Label lblValue;
    ui::TextBox txtValue;
    ui::Label lblResult;
    ui::Button cmdOtherTypes, cmdAllCategories; ///< shown when they would find something
    ui::Button cmdFindNow, cmdStop, cmdClose;

    /// How they stand.
    ui::Cell Layout();
    /// All but the two that only show at times, which go with the others.
    void SetVisible(bool visible);

    /// Writes the texts that do not come by number, and fills the lists.
    void Fill(const app::StringTable& strings);
    /// Fills the list of conditions with those of the selected property.
    void FillConditions(Condition selected, const app::StringTable& strings);
    void Show(const Remembered& remembered, const app::StringTable& strings);
    /// What they show, to be shown again later.
    Remembered ToRemember() const;

    bool OnlySelected() const { return cboFolder.Selected() == 1; }
    const Property& SelectedProperty() const;
    Condition SelectedCondition() const;
    ResultRows::Types WantedTypes() const;
};

} // namespace search
