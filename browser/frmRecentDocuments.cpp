#include "browser/frmRecentDocuments.h"

#include "app/base/Captions.h"
#include "app/base/StringId.h"
#include "browser/TemplateRow.h"
#include "library/TemplateFiles.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <string_view>
#include <utility>

namespace browser {
namespace {

// All lengths in twips.
constexpr ui::Size ListSize{10200, 4500};
enum ShownColumn { NameColumn, FolderColumn, ModifiedColumn };

using View = ui::ListView::View;
constexpr int ViewCaptions[] = {114, 115, 116, 117}; ///< string numbers, in the order of the views
constexpr std::string_view ViewSection = "Browser";
constexpr std::string_view ViewSetting = "RecentDocumentsListViewType";

/// Pictures of the documents: of none of the templates' kinds, then of each of these.
constexpr int OtherImage = 0;
constexpr int FirstKindImage = 1;

} // namespace

frmRecentDocuments::frmRecentDocuments(app::Program& program, RecentDocuments& documents,
                                       std::function<bool(const std::string& path)> open,
                                       std::function<void()> showOptions)
    : Form{program.toolkit, "frmRecentDocuments", Style::Dialog, ui::Tag{479}}, program{program}, documents{documents},
      open{std::move(open)}
{
    lvDocuments.SetColumns({{"218", {}, 3900}, {"219", {}, 3900}, {"221", {}, 2100}});
    for (ui::ImageList* images : {&lvDocuments.SmallImages, &lvDocuments.LargeImages}) {
        images->SetNamed(OtherImage, "all");
        for (std::size_t i = 0; i < library::TemplateKinds.size(); ++i)
            images->SetNamed(FirstKindImage + static_cast<int>(i), std::string{library::TemplateKinds[i].image});
    }
    BuildViewPopup();
    LoadCaptions(*this, program.strings);
    lvDocuments.Name = Caption();
    lvDocuments.SetEmptyText(program.Text(app::str::NoRecentDocuments));
    lvDocuments.SetModel(this);
    Layout(Column(Least(lvDocuments, ListSize), Buttons(cmdOpen, cmdRemove, cmdClear, cmdOptions, cmdClose)));
    lvDocuments.Click = [this] { EnableButtons(); };
    lvDocuments.DblClick = [this] { cmdOpen_Click(); };
    lvDocuments.KeyDown = [this](const ui::Key& key) {
        if (key != ui::Plain(ui::KeyCode::Delete))
            return false;
        cmdRemove_Click();
        return true;
    };
    lvDocuments.ContextMenu = [this](ui::Point at) { ShowPopup(mnuViewPopup, at); };
    cmdOpen.Click = [this] { cmdOpen_Click(); };
    cmdRemove.Click = [this] { cmdRemove_Click(); };
    cmdClear.Click = [this] { cmdClear_Click(); };
    cmdOptions.Click = [this, showOptions = std::move(showOptions)] {
        showOptions();
        Fill();
    };
    cmdClose.Click = [this] { Close(); };
    Fill();
}

void frmRecentDocuments::BuildViewPopup()
{
    for (std::size_t i = 0; i < std::size(ViewCaptions); ++i) {
        ui::Menu& item = mnuViewPopup.Add(std::make_unique<ui::Menu>("", ui::Tag{ViewCaptions[i]}));
        item.Click = [this, view = static_cast<View>(i)] {
            ShowAs(view);
            // One that cannot be saved is as before the next time.
            (void)program.settings.SaveNumber(ViewSection, ViewSetting, static_cast<int>(view));
        };
    }
    Popups = {&mnuViewPopup};
    const int last = static_cast<int>(std::size(ViewCaptions)) - 1;
    ShowAs(
        static_cast<View>(program.settings.Number(ViewSection, ViewSetting, static_cast<int>(View::Details), 0, last)));
}

void frmRecentDocuments::ShowAs(View view)
{
    lvDocuments.SetView(view);
    for (std::size_t i = 0; i < std::size(ViewCaptions); ++i)
        mnuViewPopup.Items()[i]->Checked = view == static_cast<View>(i);
}

int frmRecentDocuments::SmallIcon(int row) const
{
    const std::string& file = documents.List().at(static_cast<std::size_t>(row)).path;
    if (platform::text::EndsWithIgnoringCase(file, ".doc"))
        return FirstKindImage + static_cast<int>(library::WordTemplate);
    const auto type = library::TemplateTypeOf(file);
    return type ? FirstKindImage + static_cast<int>(*type) : OtherImage;
}

void frmRecentDocuments::Fill()
{
    documents.GetHistoryListFromRegistry([this] { ShowDocuments(SelectedPath()); });
    ShowDocuments({});
}

void frmRecentDocuments::ShowDocuments(const std::string& selected)
{
    documents.ValidateFilesFromHistoryList();
    documents.ValidateHistoryTimePeriod();
    documents.ValidateHistoryTimePeriodNew();
    lvDocuments.Refill();
    const auto row = std::ranges::find(documents.List(), selected, &RecentDocuments::Document::path);
    lvDocuments.Select(row == documents.List().end() ? 0 : static_cast<int>(row - documents.List().begin()));
    EnableButtons();
}

std::string frmRecentDocuments::Text(int row, int column) const
{
    const auto index = static_cast<std::size_t>(row);
    if (index >= documents.List().size())
        return {};
    const RecentDocuments::Document& document = documents.List()[index];
    switch (column) {
    case FolderColumn:
        return platform::path::Parent(document.path);
    case ModifiedColumn:
        return document.modified ? ModifiedText(program.platform.clock, program.platform.locale, *document.modified)
                                 : std::string{};
    default:
        return std::string{platform::path::Name(document.path)};
    }
}

std::string frmRecentDocuments::SelectedPath() const
{
    const int row = lvDocuments.Selected();
    return row >= 0 && row < Rows() ? documents.List()[static_cast<std::size_t>(row)].path : std::string{};
}

void frmRecentDocuments::cmdOpen_Click()
{
    const std::string path = SelectedPath();
    if (path.empty())
        return;
    if (!open(path)) {
        lvDocuments.SetFocus();
        return;
    }
    documents.Add(path); // the user has accessed it today
    Close();
}

void frmRecentDocuments::cmdRemove_Click()
{
    const std::string path = SelectedPath();
    const int row = lvDocuments.Selected();
    if (path.empty() || !documents.Remove(path))
        return;
    lvDocuments.Refill();
    lvDocuments.Select(std::min(row, Rows() - 1));
    lvDocuments.SetFocus();
    EnableButtons();
}

void frmRecentDocuments::cmdClear_Click()
{
    if (!program.messages.Ask(app::str::ClearRecentQuestion))
        return;
    documents.Clear();
    Fill();
    lvDocuments.SetFocus(); // the button that was pressed may be disabled now
}

void frmRecentDocuments::EnableButtons()
{
    const bool isSelected = lvDocuments.Selected() >= 0;
    cmdOpen.SetEnabled(isSelected);
    cmdRemove.SetEnabled(isSelected);
    cmdClear.SetEnabled(Rows() > 0);
}

} // namespace browser
