#include "search/FindPane.h"

#include "app/base/StringId.h"
#include "library/CategoryPath.h"
#include "platform/Text.h"

#include <chrono>
#include <utility>

namespace search {
namespace {

using ui::KeyCode;

constexpr std::chrono::milliseconds BetweenShows{250};

} // namespace

FindPane::FindPane(FindControls& controls, app::Program& program, const library::TemplateLibrary& library,
                   const browser::TemplateReader& reader, browser::Thumbnails& thumbnails,
                   const browser::FileTypeTabs& tabs, browser::ListPane& list, ui::ListView& listView,
                   const library::DocumentFacts& facts)
    : controls{controls}, program{program}, state{program.state}, library{library}, reader{reader},
      thumbnails{thumbnails}, tabs{tabs}, list{list}, listView{listView},
      finder{program.platform.files, program.platform.locale, program.platform.clock, program.platform.jobs, facts}
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
    controls.cboProperty.Click = [this] { controls.FillConditions(controls.SelectedCondition(), program.strings); };
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

bool FindPane::InFavorites() const
{
    return library.Tree().IsFavoritesSelected();
}

std::string FindPane::WantedCategory() const
{
    const auto* folder = library.Tree().Selected();
    return controls.OnlySelected() && folder != nullptr && folder->IsCategory() ? folder->path : std::string{};
}

void FindPane::Open()
{
    if (!IsOpen()) {
        if (InFavorites()) {
            program.messages.Inform(app::str::NoFindInFavorites);
            return;
        }
        if (!std::exchange(isFilled, true)) {
            controls.Fill(program.strings);
            controls.Show(ReadRemembered(program.settings), program.strings);
        }
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
    const auto* folder = library.Tree().Selected();
    if (rows && controls.OnlySelected() && folder != nullptr && folder->IsCategory()) {
        finder.SetCategory(WantedCategory());
        ShowFound({});
        return;
    }
    const bool wasRefused = rows && controls.OnlySelected() && InFavorites();
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
        program.messages.Inform(controls.OnlySelected() ? app::str::NoFindHere : app::str::NoFindInFavorites);
        return;
    }
    auto criteria = Criteria::Of(controls.SelectedProperty(), controls.SelectedCondition(), controls.txtValue.Text(),
                                 program.platform.locale);
    if (!criteria && (finder.Text().empty() || !platform::text::Trimmed(controls.txtValue.Text()).empty())) {
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
    if (!Save(controls.ToRemember(), program.settings))
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
        ResultRows::Results results{finder.Contents(), std::move(found.entries), found.searched, controls.WantedTypes(),
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
