#pragma once

#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/Image.h"
#include "ui/Label.h"
#include "ui/ListView.h"
#include "ui/ProgressBar.h"
#include "ui/Splitter.h"
#include "ui/StatusBar.h"
#include "ui/TabStrip.h"
#include "ui/ToolBar.h"
#include "ui/TreeView.h"

/// Rows of made-up files.
class DemoRows final : public ui::ListModel {
public:
    int Rows() const override { return Count; }
    std::string Text(int row, int column) const override;
    int Icon(int row) const override { return row % 5 + 1; }
    int SmallIcon(int row) const override { return row % 5 + 3; }

    int Count{60};
};

/// A main window in small: tree, list, tabs, tool bar, menus, status bar, splitter and picture.
class DemoForm final : public ui::Form {
public:
    explicit DemoForm(ui::Toolkit& toolkit);

    ui::ToolBar tbMain{*this};
    ui::Label lblFolder{*this};
    ui::TreeView tvTree{*this};
    ui::Splitter spVertical{*this, ui::Splitter::Direction::LeftRight};
    ui::TabStrip tsTypes{*this};
    ui::ListView lvList{*this};
    ui::Image imgPreview{*this};
    ui::StatusBar sbStatus{*this};

    DemoRows Rows;
    ui::Menu PopupMenu;
    std::vector<std::string> Events; ///< every event in order
    int SplitterLeft{3600};

private:
    void BuildMenus();
    void BuildToolBar();
    void BuildTree();
    void BuildList();
    void Place();
    ui::Menu& AddEntry(ui::Menu& menu, std::string name, std::string caption, ui::Key shortcut = {});
};

/// A small dialog with a wrapping text.
class DemoDialog final : public ui::Form {
public:
    explicit DemoDialog(ui::Toolkit& toolkit, std::string title = "Templates path");

    ui::Label lblHeading{*this};
    ui::Label lblText{*this};
    ui::ProgressBar pbProgress{*this};
    ui::Button btnRetry{*this};
    ui::Button btnNew{*this, {}, ui::Role::Default};
    ui::Button btnCancel{*this, {}, ui::Role::Cancel};
    std::vector<std::string> Events;
};
