#include "search/FindControls.h"

#include "app/base/StringId.h"

#include <algorithm>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace search {
namespace {

// All lengths in twips.
constexpr int LeastText = 1500;
constexpr int LeastCombo = 2550;

} // namespace

FindControls::FindControls(ui::Form& form)
    : lblLookFor{form, ui::Tag{177}}, txtLookFor{form}, lblFolder{form, ui::Tag{232}}, cboFolder{form},
      chkWord{form, ui::Tag{184}}, chkExcel{form, ui::Tag{185}}, chkPowerPoint{form, ui::Tag{186}},
      lblProperty{form, ui::Tag{175}}, cboProperty{form}, lblCondition{form, ui::Tag{176}}, cboCondition{form},
      lblValue{form, ui::Tag{707}}, txtValue{form}, lblResult{form}, cmdOtherTypes{form}, cmdAllCategories{form},
      cmdFindNow{form, ui::Tag{217}}, cmdStop{form, ui::Tag{216}}, cmdClose{form, ui::Tag{499}}
{
}

ui::Cell FindControls::Layout()
{
    using ui::Fill;
    using ui::Least;
    using ui::Row;
    return ui::Column(
        Row(lblLookFor, Fill(Least(txtLookFor, {LeastText, 0})), lblFolder, Least(cboFolder, {LeastCombo, 0}), chkWord,
            chkExcel, chkPowerPoint),
        Row(lblProperty, cboProperty, lblCondition, cboCondition, lblValue, Fill(Least(txtValue, {LeastText, 0}))),
        Row(Fill(lblResult), cmdOtherTypes, cmdAllCategories, cmdFindNow, cmdStop, cmdClose));
}

void FindControls::SetVisible(bool visible)
{
    const std::initializer_list<ui::Control*> always{
        &lblLookFor,    &txtLookFor,  &lblFolder,   &cboFolder,    &chkWord,      &chkExcel,
        &chkPowerPoint, &lblProperty, &cboProperty, &lblCondition, &cboCondition, &lblValue,
        &txtValue,      &lblResult,   &cmdFindNow,  &cmdStop,      &cmdClose};
    for (ui::Control* control : always)
        control->SetVisible(visible);
    if (!visible)
        for (ui::Button* offer : {&cmdOtherTypes, &cmdAllCategories})
            offer->SetVisible(false);
}

void FindControls::Fill(const app::StringTable& strings)
{
    // Letters of the menu bar stay the menus'.
    const std::initializer_list<ui::Control*> withLetter{&chkWord,    &chkExcel, &chkPowerPoint,
                                                         &cmdFindNow, &cmdStop,  &cmdClose};
    for (ui::Control* control : withLetter)
        control->SetCaption(Plain(control->Caption()));
    cboFolder.SetItems({strings.LoadString(app::str::SearchAll), strings.LoadString(app::str::SearchSelected)});
    std::vector<std::string> properties;
    properties.reserve(Properties.size());
    for (const Property& property : Properties)
        properties.push_back(Plain(strings.LoadString(property.name)));
    cboProperty.SetItems(std::move(properties));
}

void FindControls::FillConditions(Condition selected, const app::StringTable& strings)
{
    const std::vector<Condition> conditions = ConditionsOf(SelectedProperty());
    std::vector<std::string> texts;
    int index = 0;
    for (const Condition condition : conditions) {
        if (condition == selected)
            index = static_cast<int>(texts.size());
        texts.push_back(strings.LoadString(std::to_underlying(condition)));
    }
    cboCondition.SetItems(std::move(texts));
    cboCondition.Select(index);
}

void FindControls::Show(const Remembered& remembered, const app::StringTable& strings)
{
    cboFolder.Select(remembered.isSelectedCategory ? 1 : 0);
    cboProperty.Select(static_cast<int>(remembered.property));
    FillConditions(remembered.condition, strings);
    txtValue.SetText(remembered.value);
    chkWord.SetChecked(remembered.word);
    chkExcel.SetChecked(remembered.excel);
    chkPowerPoint.SetChecked(remembered.powerPoint);
}

Remembered FindControls::ToRemember() const
{
    return {.isSelectedCategory = OnlySelected(),
            .property = static_cast<std::size_t>(std::max(cboProperty.Selected(), 0)),
            .condition = SelectedCondition(),
            .value = txtValue.Text(),
            .word = chkWord.Checked(),
            .excel = chkExcel.Checked(),
            .powerPoint = chkPowerPoint.Checked()};
}

const Property& FindControls::SelectedProperty() const
{
    return Properties.at(static_cast<std::size_t>(std::max(cboProperty.Selected(), 0)));
}

Condition FindControls::SelectedCondition() const
{
    const std::vector<Condition> conditions = ConditionsOf(SelectedProperty());
    const auto index = static_cast<std::size_t>(std::max(cboCondition.Selected(), 0));
    return index < conditions.size() ? conditions[index] : conditions.front();
}

ResultRows::Types FindControls::WantedTypes() const
{
    ResultRows::Types types;
    types.set(); // those without a box of their own are always wanted
    types[library::WordTemplate] = chkWord.Checked();
    types[library::SpreadsheetTemplate] = chkExcel.Checked();
    types[library::PresentationTemplate] = chkPowerPoint.Checked();
    return types;
}

} // namespace search
