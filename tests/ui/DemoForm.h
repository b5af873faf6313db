#pragma once

#include "ui/Button.h"
#include "ui/CheckBox.h"
#include "ui/ComboBox.h"
#include "ui/Form.h"
#include "ui/Frame.h"
#include "ui/Image.h"
#include "ui/Label.h"
#include "ui/ListBox.h"
#include "ui/ListView.h"
#include "ui/ProgressBar.h"
#include "ui/Splitter.h"
#include "ui/TabStrip.h"
#include "ui/ToolBar.h"
#include "ui/TreeView.h"
#include "ui/UpDown.h"

/// Rows of made-up files; counts what it is asked for.
class DemoRows final : public ui::ListModel {
public:
    int Rows() const override { return Count; }
    std::string Text(int row, int) const override
    {
        ++Asked;
        return (row == 9000 ? "Zebra " : "Letter ") + std::to_string(row);
    }
    int Icon(int) const override { return 1; }
    int SmallIcon(int) const override { return 3; }
    ui::Thumbnail ThumbnailOf(int row) const override
    {
        Composed.push_back(row);
        return {Picture, {}, {}};
    }

    int Count{60};
    std::string Picture; ///< the thumbnail of every row
    mutable int Asked{};
    mutable std::vector<int> Composed;
};

using Events = std::vector<std::string>;

/// What both forms do: every event is written down, in order.
class EventForm : public ui::Form {
public:
    using Form::Form;
    std::vector<std::string> Events;

protected:
    /// A handler that writes the event down, with what `text` makes of what the event tells.
    template <class Text>
    auto Note(std::string event, Text text)
    {
        return [this, event, text](auto&&... told) { Events.push_back(event + text(told...)); };
    }
    auto Note(std::string event)
    {
        return Note(std::move(event), [](auto&&...) { return ""; });
    }
};

/// Something that a user or the code does, the events it must raise, and what a control shows afterwards.
struct Act {
    const char* name;
    std::function<void()> run;
    Events events;
    const ui::Control* control{};
    std::string shown{};
};

/// A main window in small: tool bar, tree, splitter, tabs, list, picture and menus.
class DemoForm final : public EventForm {
public:
    explicit DemoForm(ui::Toolkit& toolkit);

    ui::ToolBar tbMain{*this};
    ui::TreeView tvTree{*this};
    ui::Splitter spVertical{*this, ui::Splitter::Direction::LeftRight};
    ui::TabStrip tsTypes{*this};
    ui::ListView lvList{*this};
    ui::Image imgPreview{*this};

    DemoRows Rows;
    ui::Menu PopupMenu;
    int SplitterLeft{3600};

private:
    void BuildMenus();
    void BuildTree();
    void BuildList();
    void Place();
    ui::Menu& AddEntry(ui::Menu& menu, std::string name, std::string caption, ui::Key shortcut = {});
};

/// A dialog with every control that a user enters something in.
class DemoDialog final : public EventForm {
public:
    explicit DemoDialog(ui::Toolkit& toolkit);

    ui::Label lblHeading{*this}, lblText{*this}, lblKind{*this};
    ui::ComboBox cboKind{*this};
    ui::Button btnRetry{*this};
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
    ui::TextBox txtNotes{*this, ui::TextBox::Lines::Many};
    ui::ListBox lstNames{*this};
    ui::CheckBox chkApply{*this};
    ui::ProgressBar pbProgress{*this};
    ui::Button btnNew{*this, {}, ui::Role::Default};
    ui::Button btnCancel{*this, {}, ui::Role::Cancel};
};
