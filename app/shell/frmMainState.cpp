// What the main window remembers from one start to the next, and how it closes.
#include "app/shell/frmMain.h"

#include "app/base/StringId.h"

namespace app {

void frmMain::PreviousRunSettings()
{
    list.RestoreViews(static_cast<ui::ListView::View>(values.listView), values.thumbnailViewOn);
    auto columns = lvListView.Columns();
    for (std::size_t i = 0; i < columns.size(); ++i)
        columns[i].width = values.*WindowValues::Columns[i];
    lvListView.SetColumns(std::move(columns));
    list.RestoreArrangements({{{values.sortColumn, !values.sortsDescending, values.folderColumn},
                               {.folderWidth = values.foundFolderColumn}}});
    templateLibrary.Tree().OpenBranches(program.settings.Text("Browser", OpenBranchesSetting));
    tabs.Restore();
    if (!program.settings.Text("Browser", WithoutPictureSetting).empty())
        thumbnails.ShowWithoutPicture = program.settings.Flag("Browser", WithoutPictureSetting, false);
}

bool frmMain::OnClosing()
{
    if (busy > 0) {
        closeWhenIdle = true;
        program.progress.Cancelled = true;
        program.messages.Silent = true;
        Hide(); // what has begun to change something ends first
        return false;
    }
    updates.End();
    banner.Stop();
    // A window that never got as far as being filled has nothing worth keeping.
    if (program.state.MainLoaded)
        SaveState();
    return true;
}

void frmMain::CloseMeanwhile()
{
    const auto forms = program.toolkit.Forms();
    for (ui::Form* form : forms)
        if (form != this && form->GetStyle() != Style::Splash)
            form->Unload();
    Close();
}

void frmMain::CloseNow() noexcept
{
    try {
        Close();
    } catch (...) {
        Unload();
    }
}

void frmMain::SaveState()
{
    values.isMaximized = State() == WindowState::Maximized;
    values.left = Placement().left;
    values.top = Placement().top;
    values.width = Placement().width;
    values.height = Placement().height;
    values.listView = static_cast<int>(list.PlainView());
    values.thumbnailViewOn = list.ShowsThumbnails();
    for (std::size_t i = 0; i < std::size(WindowValues::Columns); ++i)
        values.*WindowValues::Columns[i] = lvListView.Columns()[i].width;
    const auto [folders, found] = list.GetArrangements();
    values.folderColumn = folders.folderWidth;
    values.foundFolderColumn = found.folderWidth;
    values.sortColumn = folders.sortColumn;
    values.sortsDescending = !folders.sortAscending;
    (void)program.settings.Save("Browser", OpenBranchesSetting, templateLibrary.Tree().OpenBranches());
    const bool saved = SaveWindowValues(values, program.settings);
    templateLibrary.RememberSelection();
    tabs.RememberSelection();
    if (find.IsOpen())
        find.Remember();
    if (!saved)
        program.messages.Stop(str::SetValueFailed);
}

} // namespace app
