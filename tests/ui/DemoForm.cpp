#include "DemoForm.h"

#include "ui/Toolkit.h"

#include <algorithm>
#include <array>

std::string DemoRows::Text(int row, int column) const
{
    ++Asked;
    switch (column) {
    case 0:
        return (row == 9000 ? "Zebra " : "Letter number ") + std::to_string(row) + (row % 7 == 0 ? " äöü Ω 日本" : "");
    case 1:
        return "Letters";
    case 2:
        return std::to_string(row * 3) + "KB";
    default:
        return "11/21/2026 02:4" + std::to_string(row % 10) + " PM";
    }
}

std::function<void()> EventForm::Note(std::string event, std::function<std::string()> text)
{
    return [this, event = std::move(event), text = std::move(text)] { Events.push_back(event + (text ? text() : "")); };
}

DemoForm::DemoForm(ui::Toolkit& toolkit) : EventForm{toolkit, "DemoForm", Style::Sizable}
{
    using Button = ui::ToolBar::Button;
    SetCaption("Demonstration");
    SetPlacement({600, 600, 15000, 10500});
    lblFolder.Heading = true;
    lblFolder.SetCaption("Letters && more");
    sbStatus.SetPanel(0, "60 templates");
    sbStatus.SetPanel(1, "Letter number 3");
    tbMain.SetButtons({
        Button{"new", "new", {}, "Create a document", "New", Button::Style::Push},
        Button{"open", "open", {}, "Open", {}, Button::Style::Push},
        Button{"", "", {}, {}, {}, Button::Style::Separator},
        Button{"delete", "delete", {}, "Delete", {}, Button::Style::Push, false},
        Button{"details", "view-details", {}, "Details", {}, Button::Style::Check, true, true},
        Button{"hidden", "bug", {}, "Report a bug", "Report a Bug", Button::Style::Push, true, false, false},
        Button{"more", "more", {}, "Web page", "Get More Templates", Button::Style::Push},
    });
    tbMain.ButtonClick = [this](const std::string& key) { Events.push_back("button " + key); };
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
    ui::Menu& recent = AddEntry(file, "recent", "&Recent");
    AddEntry(recent, "one", "C:\\One.swt");
    AddEntry(file, "exit", "E&xit", ui::Ctrl('Q')).Enabled = false;
    ui::Menu& view = AddEntry(MenuBar, "view", "&View");
    AddEntry(view, "details", "&Details").Checked = true;
    AddEntry(view, "refresh", "Refresh", ui::Plain(ui::KeyCode::F5));
    AddEntry(MenuBar, "help", "&Help");
    AddEntry(PopupMenu, "popOpen", "&Open");
    AddEntry(PopupMenu, "popDelete", "&Delete");
    MenuOpening = Note("opening");
}

void DemoForm::BuildTree()
{
    const ui::TreeUpdate update{tvTree};
    constexpr std::array images{"favorites", "category", "folder", "folder-open"};
    for (std::size_t i = 0; i < images.size(); ++i)
        tvTree.Images.SetNamed(static_cast<int>(i) + 1, images[i]);
    tvTree.Add(nullptr, "My Favorites", "My Favorites", 1, 1);
    for (const std::string category : {"Letters", "Faxes", "Übersichten"}) {
        ui::TreeView::Node* parent = tvTree.Add(nullptr, category, category, 2, 2);
        for (const std::string name : {"Business", "Private", "Holidays"})
            tvTree.Add(parent, category + "\\" + name, name, 3, 4);
    }
    tvTree.SetBold(*tvTree.Find("Letters"), true);
    tvTree.SetExpanded(*tvTree.Find("Letters"), true);
    tvTree.Select(tvTree.Find("Letters\\Private"));
    const auto selected = [this] { return tvTree.Selected()->key; };
    tvTree.Click = Note("select ", selected);
    tvTree.ContextMenu = [note = Note("context ", selected)](ui::Point) { note(); };
    tvTree.Expand = [this](ui::TreeView::Node& node) { Events.push_back("expand " + node.key); };
    tvTree.Collapse = [this](ui::TreeView::Node& node) { Events.push_back("collapse " + node.key); };
    tvTree.DblClick = [this](ui::TreeView::Node& node) { Events.push_back("double " + node.key); };
}

void DemoForm::BuildList()
{
    constexpr std::array names{"word", "excel", "ppt", "pdf", "photo"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        const int index = static_cast<int>(i);
        lvList.LargeImages.SetNamed(index + 1, names[i]);
        lvList.SmallImages.SetNamed(index + 3, names[i]);
        tsTypes.Images.SetNamed(index, names[i]);
    }
    tsTypes.Images.SetNamed(5, "all");
    tsTypes.SetTabs({{"Word", {}, {}, "&Word", "Word templates", 0},
                     {"Excel", {}, {}, "Ex&cel", "Excel templates", 1},
                     {"All", {}, {}, "&All", "All templates", 5}});
    tsTypes.Click = Note("tab ", [this] { return tsTypes.Selected(); });
    lvList.SetModel(&Rows);
    lvList.SetColumns({{{}, "Name", 3300}, {{}, "In Folder", 1950}, {{}, "Size", 900, true}, {{}, "Modified", 2100}});
    lvList.SetView(ui::ListView::View::Details);
    lvList.SetSort(0, true);
    lvList.SetEmptyText("No Word templates available in this folder");
    const auto row = [this] { return std::to_string(lvList.Selected()); };
    lvList.Click = Note("row ", row);
    lvList.DblClick = Note("open ", row);
    lvList.ColumnClick = [this](int column) { Events.push_back("column " + std::to_string(column)); };
    lvList.ContextMenu = [note = Note("context ", row)](ui::Point) { note(); };
}

void DemoForm::Place()
{
    const ui::Size client = ClientSize();
    const int barHeight = tbMain.PreferredSize(client.width).height;
    const int statusHeight = sbStatus.PreferredSize(client.width).height;
    const int labelHeight = lblFolder.PreferredSize().height;
    const int tabHeight = tsTypes.PreferredSize().height;
    const int bottom = client.height - statusHeight;
    const int right = SplitterLeft + 75;
    const int previewTop = bottom - 2700;
    tbMain.SetBounds({0, 0, client.width, barHeight});
    lblFolder.SetBounds({90, barHeight, SplitterLeft - 90, labelHeight});
    tvTree.SetBounds({0, barHeight + labelHeight, SplitterLeft, previewTop - barHeight - labelHeight});
    imgPreview.SetBounds({0, previewTop, SplitterLeft, bottom - previewTop});
    spVertical.SetBounds({SplitterLeft, barHeight, 75, bottom - barHeight});
    tsTypes.SetBounds({right, barHeight, client.width - right, tabHeight});
    lvList.SetBounds({right, barHeight + tabHeight, client.width - right, bottom - barHeight - tabHeight});
    sbStatus.SetBounds({0, bottom, client.width, statusHeight});
}

DemoDialog::DemoDialog(ui::Toolkit& toolkit, std::string title) : EventForm{toolkit, "DemoDialog", Style::Dialog}
{
    SetCaption(std::move(title));
    lblHeading.Heading = true;
    const std::pair<ui::Control*, const char*> captions[] = {
        {&lblHeading, "Templates cannot be found"},
        {&lblText, "The browser is unable to read the templates path. Insert the disc and click Retry, or click New to "
                   "select a new templates path."},
        {&lblKind, "&Current profile:"},
        {&btnRetry, "&Retry"},
        {&fraPerson, "Person"},
        {&lblFirst, "&First name:"},
        {&lblLast, "&Last name:"},
        {&lblPhone, "&Business phone number:"},
        {&lblMonths, "&Months:"},
        {&lblNotes, "N&otes:"},
        {&chkApply, "Apply the default &profile without asking"},
        {&btnNew, "&New..."},
        {&btnCancel, "Cancel"},
    };
    for (const auto& [control, caption] : captions)
        control->SetCaption(caption);
    cboKind.SetItems({"Office (default)", "Home", "Übersee"});
    cboKind.Select(0);
    lstNames.SetItems({"Ann", "Bob", "Cäcilie", "Dora", "Emil", "Fritz", "Gerda", "Hans"});
    lstNames.Select(1);
    udMonths.SetValue(12);
    txtLast.SetText("Müller");
    txtLast.SetMaxLength(10);
    pbProgress.SetValue(40);

    for (const auto& [textBox, name] : {std::pair{&txtFirst, "first"}, std::pair{&txtLast, "last"},
                                        std::pair{&txtPhone, "phone"}, std::pair{&txtMonths, "months"}}) {
        ui::TextBox& box = *textBox;
        box.Change = Note(std::string{name} + "=", [&box] { return box.Text(); });
        box.GotFocus = Note(std::string{"into "} + name);
        box.LostFocus = Note(std::string{"out of "} + name);
        box.MouseUp = Note(std::string{name} + " selects ", [&box] { return box.SelText(); });
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
                                           lblNotes, txtNotes)),
                  lstNames, chkApply, pbProgress, Buttons(btnNew, btnCancel)),
           6000);
}
