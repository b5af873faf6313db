// What the main window does with the Find pane, the preview window, and the clipboard.
#include "app/shell/frmMain.h"

#include "app/base/StringId.h"
#include "app/shell/WindowPlacement.h"
#include "browser/FrmPreview.h"

#include <algorithm>

namespace app {
namespace {

/// Where the preview window stood, twips; keys of section "Browser".
struct PlaceValue {
    const char* key;
    int ui::Rect::* member;
    int low;
};
constexpr PlaceValue previewPlace[] = {
    {"PreviewWindowLeft", &ui::Rect::left, -PlaceLimit},
    {"PreviewWindowTop", &ui::Rect::top, -PlaceLimit},
    {"PreviewWindowWidth", &ui::Rect::width, browser::FrmPreview::LeastSize.width},
    {"PreviewWindowHeight", &ui::Rect::height, browser::FrmPreview::LeastSize.height}};

constexpr ui::Rect FirstPreviewPlace{1500, 1200, 11'000, 9000};

} // namespace

void frmMain::WireFind()
{
    find.Resized = [this] {
        OnResize();
        RefreshCommands();
    };
    find.ShowList = [this](const std::string& path) {
        const Busy guard{*this};
        list.ShowAt(SelectedRows(), path);
    };
    find.OpenSelected = [this] { lvListView_DblClick(); };
    find.SelectAllTypes = [this] {
        fileTypeTabStrip.Select(browser::FileTypeTabs::AllTab);
        fileTypeTabStrip_Click();
    };
    lvListView.DragFile = imgPreview.DragFile = [this] { return list.SelectedPath(); };
}

void frmMain::mnuFilePreview_Click()
{
    const int row = std::max(lvListView.Selected(), 0); // nothing is selected yet while the list is filled
    if (row >= list.Templates().Rows())
        return;
    const Busy guard{*this};
    browser::FrmPreview form{program,
                             list.Templates().All(),
                             preview,
                             row,
                             {.createDocument = [this](const std::string& path) { opener.CreateDocument(path); },
                              .createTemplate = [this](const std::string& path) { opener.Open(path); },
                              .copy = [this](const std::string& path) { Copy(path); }}};
    ui::Rect place = FirstPreviewPlace;
    for (const PlaceValue& value : previewPlace)
        place.*value.member = program.settings.Number("Browser", value.key, place.*value.member, value.low, PlaceLimit);
    form.Realize(); // its own size first, which the remembered one then takes the place of
    form.SetIconFile(IconFile());
    form.SetPlacement(WholeWithin(place, program.toolkit.WorkAreas()));
    form.ShowModal();
    for (const PlaceValue& value : previewPlace)
        (void)program.settings.SaveNumber("Browser", value.key, form.Placement().*value.member);
    list.Select(form.Path());
}

void frmMain::Copy(const std::string& path)
{
    if (!program.toolkit.CopyToClipboard(path))
        program.messages.Inform(str::CopyFailed);
}

} // namespace app
