#include "DemoControls.h"

DemoControls::DemoControls(ui::Toolkit& toolkit) : Form{toolkit, "DemoControls", Style::Dialog}
{
    SetCaption("Controls");
    const std::pair<ui::Control*, const char*> captions[] = {
        {&lblKind, "&Current profile:"},
        {&btnAdd, "&Add Profile..."},
        {&fraPerson, "Person"},
        {&lblFirst, "&First name:"},
        {&lblLast, "&Last name:"},
        {&lblPhone, "Business phone number:"},
        {&lblMonths, "&Months:"},
        {&lblNotes, "&Notes:"},
        {&chkApply, "Apply the default &profile without asking"},
        {&chkShow, "&Show the dialog"},
        {&btnOk, "OK"},
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
    chkShow.SetChecked(true);

    Watch(txtFirst, "first");
    Watch(txtLast, "last");
    Watch(txtPhone, "phone");
    Watch(txtMonths, "months");
    Watch(txtNotes, "notes");
    cboKind.Click = [this] { Events.push_back("combo " + cboKind.Text()); };
    lstNames.Click = [this] { Events.push_back("list " + lstNames.Text()); };
    lstNames.DblClick = [this] { Events.push_back("double " + lstNames.Text()); };
    chkApply.Click = [this] { Events.push_back(chkApply.Checked() ? "apply on" : "apply off"); };
    udMonths.Change = [this] { Events.push_back("count " + std::to_string(udMonths.Value())); };
    btnAdd.Click = [this] { Events.push_back("add"); };
    btnOk.Click = [this] { Events.push_back("ok"); };
    btnCancel.Click = [this] { Close(); };
    PlaceAll();
}

void DemoControls::Watch(ui::TextBox& box, const std::string& name)
{
    box.Change = [this, &box, name] { Events.push_back(name + "=" + box.Text()); };
    box.GotFocus = [this, name] { Events.push_back("into " + name); };
    box.LostFocus = [this, name] { Events.push_back("out of " + name); };
    box.MouseUp = [this, &box, name] { Events.push_back(name + " selects " + box.SelText()); };
}

void DemoControls::PlaceAll()
{
    using namespace ui;
    Layout(Column(Row(lblKind, Fill(cboKind), btnAdd),
                  Framed(fraPerson, Column(Grid(Row(lblFirst, Fill(txtFirst), lblLast, Fill(txtLast)),
                                                Row(lblPhone, Fill(txtPhone), lblMonths, Joined(txtMonths, udMonths))),
                                           lblNotes, txtNotes)),
                  lstNames, chkApply, chkShow, Buttons(btnOk, btnCancel)),
           6000);
}
