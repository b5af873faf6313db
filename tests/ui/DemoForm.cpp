#include "DemoForm.h"

#include "ui/Toolkit.h"

#include <algorithm>

DemoForm::DemoForm(ui::Toolkit& toolkit) : EventForm{toolkit, "DemoForm", Style::Sizable}
{
    using Button = ui::ToolBar::Button;
    SetPlacement({600, 600, 15000, 10500});
    tbMain.SetButtons({
        Button{"new", "new", {}, "Create a document", "New", Button::Style::Push},
        Button{"open", "open", {}, "Open", {}, Button::Style::Push},
        Button{"", "", {}, {}, {}, Button::Style::Separator},
        Button{"delete", "delete", {}, "Delete", {}, Button::Style::Push, false},
        Button{"details", "view-details", {}, "Details", {}, Button::Style::Check, true, true},
        Button{"hidden", "bug", {}, "Report a bug", "Report a Bug", Button::Style::Push, true, false, false},
        Button{"more", "more", {}, "Web page", "Get More Templates", Button::Style::Push},
    });
    tbMain.ButtonClick = Note("button ", std::identity{});
    BuildMenus();
    BuildTree();
    BuildList();
    spVertical.Clamp = [this](int left) { return std::clamp(left, 300, ClientSize().width - 3000); };
    spVertical.Moved = [this](int left) {
        Events.push_back("moved " + std::to_string(left));
        SplitterLeft = left;
        Place();
    };
    Resize = [this] { Place(); };
}

ui::Menu& DemoForm::AddEntry(ui::Menu& menu, std::string name, std::string caption, ui::Key shortcut)
{
    auto entry = std::make_unique<ui::Menu>(name, ui::Tag{});
    entry->Caption = std::move(caption);
    entry->Shortcut = shortcut;
    entry->Click = Note("menu " + name);
    return menu.Add(std::move(entry));
}

void DemoForm::BuildMenus()
{
    ui::Menu& file = AddEntry(MenuBar, "file", "&File");
    AddEntry(file, "new", "&New", ui::Ctrl('N'));
    AddEntry(file, "open", "&Open", ui::Plain(ui::KeyCode::F3));
    AddEntry(file, "hidden", "Hidden").Visible = false;
    AddEntry(file, "", "").Separator = true;
    AddEntry(AddEntry(file, "recent", "&Recent"), "one", "C:\\One.swt");
    AddEntry(file, "exit", "E&xit", ui::Ctrl('Q')).Enabled = false;
    ui::Menu& view = AddEntry(MenuBar, "view", "&View");
    AddEntry(view, "details", "&Details").Checked = true;
    AddEntry(view, "refresh", "Refresh", ui::Plain(ui::KeyCode::F5));
    AddEntry(PopupMenu, "popOpen", "&Open");
    AddEntry(PopupMenu, "popDelete", "&Delete");
    MenuOpening = Note("opening");
}

void DemoForm::BuildTree()
{
    const ui::TreeUpdate update{tvTree};
    tvTree.Images.SetNamed(1, "folder");
    tvTree.Images.SetNamed(2, "folder-open");
    tvTree.Add(nullptr, "My Favorites", "My Favorites", 1, 1);
    for (const std::string category : {"Letters", "Faxes", "Übersichten"}) {
        ui::TreeView::Node* parent = tvTree.Add(nullptr, category, category, 1, 2);
        for (const std::string name : {"Business", "Private", "Holidays"})
            tvTree.Add(parent, category + "\\" + name, name, 1, 2);
    }
    tvTree.SetBold(*tvTree.Find("Letters"), true);
    tvTree.SetExpanded(*tvTree.Find("Letters"), true);
    tvTree.Select(tvTree.Find("Letters\\Private"));
    const auto selected = [this](auto&&...) { return tvTree.Selected()->key; };
    const auto key = [](const ui::TreeView::Node& node) { return node.key; };
    tvTree.Click = Note("select ", selected);
    tvTree.ClickAgain = Note("again ", selected);
    tvTree.ContextMenu = Note("context ", selected);
    tvTree.Expand = Note("expand ", key);
    tvTree.Collapse = Note("collapse ", key);
    tvTree.DblClick = Note("double ", key);
}

void DemoForm::BuildList()
{
    lvList.LargeImages.SetNamed(1, "word");
    lvList.SmallImages.SetNamed(3, "word");
    tsTypes.Images.SetNamed(0, "word");
    tsTypes.SetTabs({{"Word", {}, {}, "&Word", "Word templates", 0},
                     {"Excel", {}, {}, "Ex&cel", "Excel templates", 0},
                     {"All", {}, {}, "&All", "All templates", 0}});
    tsTypes.Click = Note("tab ", [this] { return tsTypes.Selected(); });
    lvList.SetModel(&Rows);
    lvList.SetColumns({{{}, "Name", 3300}, {{}, "In Folder", 1950}, {{}, "Size", 900, true}});
    lvList.SetView(ui::ListView::View::Details);
    lvList.SetSort(0, true);
    lvList.SetEmptyText("No Word templates available in this folder");
    const auto row = [this](auto&&...) { return std::to_string(lvList.Selected()); };
    lvList.Click = Note("row ", row);
    lvList.DblClick = Note("open ", row);
    lvList.ContextMenu = Note("context ", row);
    lvList.ColumnClick = Note("column ", [](int column) { return std::to_string(column); });
}

void DemoForm::Place()
{
    const ui::Size client = ClientSize();
    const int top = tbMain.PreferredSize(client.width).height;
    const int tabs = tsTypes.PreferredSize().height;
    const int right = SplitterLeft + 75;
    const int previewTop = client.height - 2700;
    tbMain.SetBounds({0, 0, client.width, top});
    tvTree.SetBounds({0, top, SplitterLeft, previewTop - top});
    imgPreview.SetBounds({0, previewTop, SplitterLeft, 2700});
    spVertical.SetBounds({SplitterLeft, top, 75, client.height - top});
    tsTypes.SetBounds({right, top, client.width - right, tabs});
    lvList.SetBounds({right, top + tabs, client.width - right, client.height - top - tabs});
}

DemoDialog::DemoDialog(ui::Toolkit& toolkit) : EventForm{toolkit, "DemoDialog", Style::Dialog}
{
    lblHeading.Heading = true;
    const std::pair<ui::Control&, const char*> captions[] = {
        // clang-format off
        {lblHeading, "Templates cannot be found"}, {lblKind, "&Current profile:"}, {btnRetry, "&Retry"},
        {lblText, "The browser is unable to read the templates path. Insert the disc and click Retry, or click New to "
                  "select a new templates path."},
        {fraPerson, "Person"}, {lblFirst, "&First name:"}, {lblLast, "&Last name:"},
        {lblPhone, "&Business phone number:"}, {lblMonths, "&Months:"},
        {chkApply, "Apply the default &profile without asking"}, {btnNew, "&New..."}, {btnCancel, "Cancel"},
        // clang-format on
    };
    for (const auto& [control, caption] : captions)
        control.SetCaption(caption);
    cboKind.SetItems({"Office (default)", "Home", "Übersee"});
    cboKind.Select(0);
    lstNames.SetItems({"Ann", "Bob", "Cäcilie", "Dora", "Emil", "Fritz", "Gerda", "Hans"});
    lstNames.Select(1);
    udMonths.SetValue(12);
    txtLast.SetText("Müller");
    txtLast.SetMaxLength(10);
    pbProgress.SetValue(40);

    const std::pair<ui::TextBox&, std::string> boxes[] = {
        {txtFirst, "first"}, {txtLast, "last"}, {txtPhone, "phone"}, {txtMonths, "months"}};
    for (const auto& [textBox, name] : boxes) {
        textBox.Change = Note(name + "=", [&box = textBox] { return box.Text(); });
        textBox.MouseUp = Note(name + " selects ", [&box = textBox](auto&&...) { return box.SelText(); });
        textBox.GotFocus = Note("into " + name);
        textBox.LostFocus = Note("out of " + name);
    }
    cboKind.Click = Note("combo ", [this] { return cboKind.Text(); });
    lstNames.Click = Note("list ", [this] { return lstNames.Text(); });
    lstNames.DblClick = Note("double ", [this] { return lstNames.Text(); });
    chkApply.Click = Note("apply ", [this] { return chkApply.Checked() ? "on" : "off"; });
    udMonths.Change = Note("count ", [this] { return std::to_string(udMonths.Value()); });
    btnRetry.Click = Note("retry");
    btnNew.Click = Note("new");
    btnCancel.Click = [this] {
        Events.push_back("cancel");
        Close();
    };
    using namespace ui;
    Layout(Column(lblHeading, lblText, Row(lblKind, Fill(cboKind), btnRetry),
                  Framed(fraPerson, Column(Grid(Row(lblFirst, Fill(txtFirst), lblLast, Fill(txtLast)),
                                                Row(lblPhone, Fill(txtPhone), lblMonths, Joined(txtMonths, udMonths))),
                                           txtNotes)),
                  lstNames, chkApply, pbProgress, Buttons(btnNew, btnCancel)),
           6000);
}
