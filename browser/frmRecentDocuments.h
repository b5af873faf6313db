#pragma once

#include "app/base/Program.h"
#include "browser/RecentDocuments.h"
#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/ListView.h"
#include "ui/Menu.h"

#include <functional>
#include <string>

namespace browser {

/// The list of recent documents: open one, forget one, forget all.
class frmRecentDocuments final : public ui::Form, private ui::ListModel {
public:
    /// `open` opens a document and says whether it did; `showOptions` lets the user set the time period.
    frmRecentDocuments(app::Program& program, RecentDocuments& documents,
                       std::function<bool(const std::string& path)> open, std::function<void()> showOptions);
    frmRecentDocuments(const frmRecentDocuments&) = delete;
    frmRecentDocuments& operator=(const frmRecentDocuments&) = delete;
    ~frmRecentDocuments() override { documents.StopLooking(); }

    ui::ListView lvDocuments{*this};
    ui::Button cmdOpen{*this, ui::Tag{561}, ui::Role::Default};
    ui::Button cmdRemove{*this, ui::Tag{564}};
    ui::Button cmdClear{*this, ui::Tag{466}};
    ui::Button cmdOptions{*this, ui::Tag{343}};
    ui::Button cmdClose{*this, ui::Tag{499}, ui::Role::Cancel};
    ui::Menu mnuViewPopup; ///< how the list shows the documents

private:
    app::Program& program;
    RecentDocuments& documents;
    std::function<bool(const std::string& path)> open;

    int Rows() const override { return static_cast<int>(documents.List().size()); }
    std::string Text(int row, int column) const override;
    int Icon(int row) const override { return SmallIcon(row); }
    int SmallIcon(int row) const override;

    void BuildViewPopup();
    void ShowAs(ui::ListView::View view);
    void Fill();
    void ShowDocuments(const std::string& selected);
    /// Full path of the selected document; "" when none is.
    std::string SelectedPath() const;
    void cmdOpen_Click();
    void cmdRemove_Click();
    void cmdClear_Click();
    void EnableButtons();
};

} // namespace browser
