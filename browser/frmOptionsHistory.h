#pragma once

#include "app/base/Program.h"
#include "browser/RecentDocuments.h"
#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/Label.h"
#include "ui/TextBox.h"
#include "ui/UpDown.h"

#include <functional>

namespace browser {

/// Asks for how many months recent documents are remembered.
class frmOptionsHistory final : public ui::Form {
public:
    /// `showHelp` opens the help document about recent documents.
    frmOptionsHistory(app::Program& program, RecentDocuments& documents, std::function<void()> showHelp);

    ui::Label lblExplanation{*this, ui::Tag{480}};
    ui::Label lblBefore{*this};
    ui::TextBox txtNoOfMonthsForHistoryList{*this};
    ui::UpDown UpDownMonths{*this, txtNoOfMonthsForHistoryList, RecentDocuments::LeastMonths,
                            RecentDocuments::MostMonths};
    ui::Label lblAfter{*this};
    ui::Button cmdOK{*this, ui::Tag{265}, ui::Role::Default};
    ui::Button cmdCancel{*this, ui::Tag{231}, ui::Role::Cancel};
    ui::Button cmdHelp{*this, ui::Tag{127}};

private:
    app::Program& program;
    RecentDocuments& documents;

    void cmdOK_Click();
    void ShowPeriodLabel();
};

} // namespace browser
