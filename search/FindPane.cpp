#include "search/FindPane.h"

#include "app/base/StringId.h"
#include "library/CategoryPath.h"
#include "platform/Text.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace search {
namespace {

using ui::KeyCode;

// All lengths in twips.
constexpr int LeastText = 1500;
constexpr int LeastCombo = 2550;
constexpr std::chrono::milliseconds BetweenShows{250};

/// A label's text as a line of a list.
std::string Plain(std::string label)
{
    std::erase_if(label, [](char c) { return c == '&' || c == ':'; });
    return label;
}

} // namespace

FindControls::FindControls(ui::Form& form)
    : lblLookFor{form, ui::Tag{177}}, txtLookFor{form}, lblFolder{form, ui::Tag{232}}, cboFolder{form},
      chkWord{form, ui::Tag{184}}, chkExcel{form, ui::Tag{185}}, chkPowerPoint{form, ui::Tag{186}},
      lblProperty{form, ui::Tag{175}}, cboProperty{form}, lblCondition{form, ui::Tag{176}},
      cboCondition{form}, lblValue{form, ui::Tag{707}}, txtValue{form}, lblResult{form}, cmdOtherTypes{form},
      cmdAllCategories{form}, cmdFindNow{form, ui::Tag{217}}, cmdStop{form, ui::Tag{216}}, cmdClose{form, ui::Tag{499}}
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

FindPane::FindPane(FindControls& controls, app::Program& program, const library::TemplateLibrary& library,
                   const browser::TemplateReader& reader, browser::Thumbnails& thumbnails,
                   const browser::FileTypeTabs& tabs, browser::ListPane& list, ui::ListView& listView,
                   const library::DocumentFacts& facts)
    : controls{controls}, program{program}, state{program.state}, library{library}, reader{reader},
      thumbnails{thumbnails}, tabs{tabs}, list{list}, listView{listView}, finder{program.platform.files,
                                                                                 program.platform.locale,
                                                                                 program.platform.clock,
                                                                                 program.platform.jobs, facts}
{
    controls.SetVisible(false);
    Wire();
}

void FindPane::Wire()
{
    finder.IsExcluded = [this](const std::string& baseName) { return reader.IsExcluded(baseName); };
    finder.Changed = [this] { OnFinder(); };
    controls.txtLookFor.Change = [this] { OnText(); };
    controls.txtLookFor.CommandKey = [this](const ui::Key& key) {
        if (key == ui::Plain(KeyCode::Enter)) {
            if (OpenSelected && rows)
                OpenSelected();
            return true;
        }
        return OnKey(key);
    };
    controls.txtValue.CommandKey = [this](const ui::Key& key) {
        if (key == ui::Plain(KeyCode::Enter)) {
            FindNow();
            return true;
        }
        return OnKey(key);
    };
    controls.cboFolder.Click = [this] { OnFolder(); };
    controls.cboProperty.Click = [this] { FillConditions(SelectedCondition()); };
    for (ui::CheckBox* type : {&controls.chkWord, &controls.chkExcel, &controls.chkPowerPoint})
        type->Click = [this] { ShowFound(list.SelectedPath()); };
    controls.cmdFindNow.Click = [this] { FindNow(); };
    controls.cmdStop.Click = [this] {
        finder.Stop();
        ShowFound(list.SelectedPath());
        controls.txtLookFor.SetFocus(); // the button that was pressed is disabled now
    };
    controls.cmdOtherTypes.Click = [this] { ShowAllTypes(); };
    controls.cmdAllCategories.Click = [this] { ShowAllCategories(); };
    controls.cmdClose.Click = [this] { Close(); };
}

void FindPane::Fill()
{
    // Letters of the menu bar stay the menus'.
    for (ui::Control* control :
         {static_cast<ui::Control*>(&controls.chkWord), static_cast<ui::Control*>(&controls.chkExcel),
          static_cast<ui::Control*>(&controls.chkPowerPoint), static_cast<ui::Control*>(&controls.cmdFindNow),
          static_cast<ui::Control*>(&controls.cmdStop), static_cast<ui::Control*>(&controls.cmdClose)})
        control->SetCaption(Plain(control->Caption()));
    controls.cboFolder.SetItems({program.Text(app::str::SearchAll), program.Text(app::str::SearchSelected)});
    std::vector<std::string> properties;
    properties.reserve(Properties.size());
    for (const Property& property : Properties)
        properties.push_back(Plain(program.Text(property.name)));
    controls.cboProperty.SetItems(std::move(properties));
    const Remembered remembered = ReadRemembered(program.settings);
    controls.cboFolder.Select(remembered.isSelectedCategory ? 1 : 0);
    controls.cboProperty.Select(static_cast<int>(remembered.property));
    FillConditions(remembered.condition);
    controls.txtValue.SetText(remembered.value);
    controls.chkWord.SetChecked(remembered.word);
    controls.chkExcel.SetChecked(remembered.excel);
    controls.chkPowerPoint.SetChecked(remembered.powerPoint);
}

void FindPane::FillConditions(Condition selected)
{
    const std::vector<Condition> conditions = ConditionsOf(SelectedProperty());
    std::vector<std::string> texts;
    int index = 0;
    for (const Condition condition : conditions) {
        if (condition == selected)
            index = static_cast<int>(texts.size());
        texts.push_back(program.Text(std::to_underlying(condition)));
    }
    controls.cboCondition.SetItems(std::move(texts));
    controls.cboCondition.Select(index);
}

const Property& FindPane::SelectedProperty() const
{
    return Properties.at(static_cast<std::size_t>(std::max(controls.cboProperty.Selected(), 0)));
}

Condition FindPane::SelectedCondition() const
{
    const std::vector<Condition> conditions = ConditionsOf(SelectedProperty());
    const auto index = static_cast<std::size_t>(std::max(controls.cboCondition.Selected(), 0));
    return index < conditions.size() ? conditions[index] : conditions.front();
}

bool FindPane::InFavorites() const
{
    const auto* folder = library.Tree().Selected();
    return folder != nullptr && folder->kind == library::Catalog::Kind::Favorites;
}

std::string FindPane::WantedCategory() const
{
    const auto* folder = library.Tree().Selected();
    return OnlySelected() && folder != nullptr && folder->IsCategory() ? folder->path : std::string{};
}

ResultRows::Types FindPane::WantedTypes() const
{
    ResultRows::Types types;
    types.set(); // those without a box of their own are always wanted
    types[library::WordTemplate] = controls.chkWord.Checked();
    types[library::SpreadsheetTemplate] = controls.chkExcel.Checked();
    types[library::PresentationTemplate] = controls.chkPowerPoint.Checked();
    return types;
}

void FindPane::Open()
{
    if (!IsOpen()) {
        if (InFavorites()) {
            program.messages.Inform(app::str::NoFindInFavorites);
            return;
        }
        if (!std::exchange(isFilled, true))
            Fill();
        state.FindPaneOpen = true;
        controls.SetVisible(true);
        finder.SetCategory(WantedCategory());
        ReadLibrary();
        ShowFindings();
        Resized();
    }
    controls.txtLookFor.SetFocus();
    controls.txtLookFor.SelectAll();
}

void FindPane::Close()
{
    if (!IsOpen())
        return;
    Remember();
    Clear();
    finder.Read({});
    state.FindPaneOpen = false;
    listView.SetFocus();
    controls.SetVisible(false);
    Resized();
}

std::shared_ptr<browser::RowSource> FindPane::Rows() const
{
    return rows;
}

void FindPane::ReadLibrary()
{
    std::vector<Finder::FolderToRead> folders;
    const std::string createNew = program.Text(app::str::CreateNew) + "\\";
    library.Contents().ForEach([&](const library::Catalog::Folder& folder) {
        if (!folder.IsCategory())
            return true;
        // Such a folder stands for the one below it where it is not on the disk; that one may be listed by itself.
        const std::string instead = platform::text::Replaced(folder.path, createNew, "");
        const bool isOther = instead != folder.path && library.Contents().FindByPath(instead) == nullptr;
        folders.push_back({folder.path, library::DiskPath(state.TemplatesPath, folder.path),
                           isOther ? library::DiskPath(state.TemplatesPath, instead) : std::string{}});
        return true;
    });
    finder.Read(std::move(folders));
}

void FindPane::LibraryLoaded()
{
    if (!IsOpen())
        return;
    if (finder.IsWanted() && InFavorites())
        Clear();
    finder.SetCategory(WantedCategory());
    ReadLibrary();
    if (finder.IsWanted())
        ShowFound(list.SelectedPath());
}

void FindPane::FolderChosen()
{
    if (!IsOpen())
        return;
    if (rows && OnlySelected() && !InFavorites()) {
        finder.SetCategory(WantedCategory());
        ShowFound({});
        return;
    }
    const bool wasRefused = rows && OnlySelected();
    returnTo.clear();
    rows = nullptr;
    finder.SetCriteria(std::nullopt);
    finder.SetText({});
    controls.txtLookFor.SetText({});
    ShowFindings();
    if (wasRefused)
        controls.lblResult.SetCaption(program.Text(app::str::NoFindHere));
}

void FindPane::OnText()
{
    const std::string text = platform::text::Trimmed(controls.txtLookFor.Text());
    if (text == finder.Text())
        return;
    if (InFavorites()) {
        controls.lblResult.SetCaption(program.Text(app::str::NoFindInFavorites));
        return;
    }
    finder.SetCategory(WantedCategory());
    finder.SetText(text);
    Begin();
}

void FindPane::OnFolder()
{
    if (InFavorites())
        return;
    finder.SetCategory(WantedCategory());
    ShowFound({});
}

void FindPane::FindNow()
{
    if (InFavorites()) {
        program.messages.Inform(OnlySelected() ? app::str::NoFindHere : app::str::NoFindInFavorites);
        return;
    }
    auto criteria =
        Criteria::Of(SelectedProperty(), SelectedCondition(), controls.txtValue.Text(), program.platform.locale);
    if (!criteria && finder.Text().empty()) {
        program.messages.Inform(app::str::CriteriaIncomplete);
        controls.txtValue.SetFocus();
        return;
    }
    Remember();
    finder.SetCategory(WantedCategory());
    finder.SetCriteria(std::move(criteria));
    Begin();
}

void FindPane::Begin()
{
    if (!finder.IsWanted()) {
        Clear();
        return;
    }
    if (!rows)
        returnTo = list.SelectedPath();
    ShowFound({});
}

void FindPane::Clear()
{
    const bool wasShown = rows != nullptr;
    rows = nullptr;
    finder.SetCriteria(std::nullopt);
    finder.SetText({});
    controls.txtLookFor.SetText({});
    ShowFindings();
    if (wasShown)
        ShowList(std::exchange(returnTo, {}));
}

void FindPane::Remember()
{
    const bool saved = Save({.isSelectedCategory = OnlySelected(),
                             .property = static_cast<std::size_t>(std::max(controls.cboProperty.Selected(), 0)),
                             .condition = SelectedCondition(),
                             .value = controls.txtValue.Text(),
                             .word = controls.chkWord.Checked(),
                             .excel = controls.chkExcel.Checked(),
                             .powerPoint = controls.chkPowerPoint.Checked()},
                            program.settings);
    if (!saved)
        program.messages.Stop(app::str::SetValueFailed);
}

platform::Ticket FindPane::Pause()
{
    return program.platform.timers
        .Start(BetweenShows,
               [this] {
                   const platform::Ticket over = std::exchange(pause, {});
                   if (isBehind)
                       OnFinder();
               })
        .value_or(platform::Ticket{});
}

void FindPane::OnFinder()
{
    isBehind = pause && finder.IsReading();
    if (isBehind)
        return;
    pause = finder.IsReading() ? Pause() : platform::Ticket{};
    ShowFound(list.SelectedPath());
    if (pause)
        pause = Pause(); // it may have elapsed while the list was filled
}

void FindPane::ShowFound(const std::string& path)
{
    if (!IsOpen())
        return;
    if (finder.IsWanted()) {
        Finder::Found found = finder.Search();
        elsewhere = found.elsewhere;
        ResultRows::Results results{finder.Contents(), std::move(found.entries), found.searched, WantedTypes(),
                                    !finder.IsReading()};
        // The list is not disturbed for what nobody sees.
        const bool isSame = rows && rows->Shows(results) && (!results.entries.empty() || !results.isComplete);
        if (isSame) {
            rows->Progressed(results.searched, results.isComplete);
            list.ShowStatus();
        } else {
            rows = std::make_shared<ResultRows>(std::move(results), thumbnails, program.strings);
            ShowList(path);
        }
    }
    ShowFindings();
}

void FindPane::ShowFindings()
{
    if (!IsOpen())
        return;
    controls.cmdStop.SetEnabled(finder.IsReading() && rows != nullptr);
    std::string text;
    std::size_t otherTypes = 0;
    const std::size_t shown = rows ? rows->Count(tabs.Selected()) : 0;
    if (rows) {
        const ResultRows::Results& results = rows->Shown();
        text = ResultRows::FoundText(program.strings, shown, results.searched);
        if (finder.IsReading())
            text = program.Text(app::str::Searching) + "  " + text;
        else if (shown == 0)
            text = program.Text(app::str::NothingFound);
        otherTypes = results.entries.size() - shown;
    }
    controls.lblResult.SetCaption(std::move(text));
    const auto offer = [&](ui::Button& button, std::uint16_t caption, std::size_t count) {
        const bool isOffered = rows && shown == 0 && count > 0;
        const bool wasOffered = button.Visible();
        if (isOffered)
            button.SetCaption(program.Text(caption) + " (" + std::to_string(count) + ")");
        button.SetVisible(isOffered);
        return isOffered || wasOffered;
    };
    const bool areTypes = offer(controls.cmdOtherTypes, app::str::SearchOtherTypes, otherTypes);
    const bool areCategories = offer(controls.cmdAllCategories, app::str::SearchAll, elsewhere);
    if (areTypes || areCategories)
        Resized(); // beside them the text may take a second line
}

void FindPane::ShowAllTypes()
{
    for (ui::CheckBox* type : {&controls.chkWord, &controls.chkExcel, &controls.chkPowerPoint})
        type->SetChecked(true);
    SelectAllTypes();
    ShowFound({});
    controls.txtLookFor.SetFocus();
}

void FindPane::ShowAllCategories()
{
    controls.cboFolder.Select(0);
    OnFolder();
    controls.txtLookFor.SetFocus();
}

void FindPane::Escape()
{
    if (finder.IsWanted() || !controls.txtLookFor.Text().empty())
        Clear();
    else
        Close();
}

bool FindPane::OnKey(const ui::Key& key)
{
    if (key == ui::Plain(KeyCode::F3)) {
        Open();
        return true;
    }
    if (!IsOpen())
        return false;
    if (key == ui::Plain(KeyCode::Escape)) {
        Escape();
        return true;
    }
    const bool isInText = controls.txtLookFor.HasFocus() || controls.txtValue.HasFocus();
    if (key == ui::Plain(KeyCode::Down) && isInText) {
        listView.SetFocus();
        return true;
    }
    const bool isInCriteria = controls.cboProperty.HasFocus() || controls.cboCondition.HasFocus();
    if (key == ui::Plain(KeyCode::Enter) && isInCriteria) {
        FindNow();
        return true;
    }
    return false;
}

} // namespace search
