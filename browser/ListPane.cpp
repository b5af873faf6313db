#include "browser/ListPane.h"

#include "app/base/StringId.h"
#include "library/TemplateFiles.h"
#include "platform/Scoped.h"
#include "platform/Text.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace browser {

ListPane::ListPane(ui::ListView& list, app::PatientFiles& files, FileTypeTabs& tabs, ui::StatusBar& status,
                   ui::Toolkit& toolkit, app::Messages& messages, const app::StringTable& strings,
                   platform::Clock& clock, platform::Locale& locale)
    : list{list}, files{files}, tabs{tabs}, status{status}, toolkit{toolkit}, messages{messages}, strings{strings},
      templates{clock, locale}
{
    for (int i = 0; i < static_cast<int>(library::TemplateKinds.size()); ++i) {
        const std::string image{library::TemplateKinds[static_cast<std::size_t>(i)].image};
        list.LargeImages.SetNamed(i + 1, image);
        list.SmallImages.SetNamed(i + 3, image);
    }
    // The small pictures of the types stand behind those of a folder.
    list.SmallImages.SetNamed(1, "folder");
    list.SmallImages.SetNamed(2, "folder-open");
    list.SetColumns({{"218"}, {"219"}, {"220", {}, 0, true}, {"221"}}); // name, in folder, size, modified
    list.SetModel(&templates);
    list.ColumnClick = [this](int column) { SortBy(column); };
}

void ListPane::Show(std::shared_ptr<RowSource> shown)
{
    TakeSource(std::move(shown));
    Refill();
}

void ListPane::ShowAt(std::shared_ptr<RowSource> shown, std::string path)
{
    TakeSource(std::move(shown));
    Forget();
    wanted = std::move(path);
    Refill();
}

void ListPane::TakeSource(std::shared_ptr<RowSource> shown)
{
    const bool wasRanked = IsRanked();
    arrangements = GetArrangements();
    source = std::move(shown);
    if (IsRanked() != wasRanked) {
        Forget(); // as long as the rows stand where they are selected
        Arrange(arrangements.at(IsRanked() ? 1 : 0));
    }
}

bool ListPane::IsRanked() const
{
    return source && source->IsRanked();
}

ListPane::Arrangements ListPane::GetArrangements() const
{
    Arrangements all = arrangements;
    Arrangement& now = all.at(IsRanked() ? 1 : 0);
    now.folderWidth = list.Columns()[TemplateList::FolderColumn].width;
    if (!IsRanked()) { // what is found next comes in its own order again
        now.sortColumn = templates.SortColumn();
        now.sortAscending = templates.SortAscending();
    }
    return all;
}

void ListPane::RestoreArrangements(const Arrangements& kept)
{
    arrangements = kept;
    Arrange(kept.front());
}

void ListPane::Arrange(const Arrangement& arrangement)
{
    templates.SortBy(arrangement.sortColumn, arrangement.sortAscending);
    list.SetSort(arrangement.sortColumn, arrangement.sortAscending);
    auto columns = list.Columns();
    columns[TemplateList::FolderColumn].width = arrangement.folderWidth;
    list.SetColumns(std::move(columns));
}

void ListPane::Refill()
{
    Forget();
    refreshed.reset();
    Read();
}

void ListPane::Refresh(std::shared_ptr<RowSource> fresh)
{
    source = std::move(fresh);
    if (filling) {
        Forget();
        refreshed.reset(); // with what the one on the stack has read
    } else {
        refreshed.emplace();
    }
    Read();
}

void ListPane::Read()
{
    ++request;
    if (filling)
        return; // the fill on the stack returns at its next step, and takes this one up
    const platform::Scoped now{filling, true};
    while (served != request) {
        served = request;
        Fill();
    }
}

void ListPane::Fill()
{
    const auto current = source; // stays while it is read, whatever is shown next
    platform::Result<> read;
    const std::string tab = tabs.Selected();
    withoutPicture.reset();
    const std::function<bool()> isUnwanted = [this] { return served != request; };
    const app::PatientFiles::Unless unless{files, isUnwanted};
    if (current)
        read = ShowsThumbnails() ? current->ReadThumbnails(tab, *this) : current->ReadRows(tab, *this);
    if (served != request)
        return;
    ShowRefreshed();
    if (templates.Rows() == 0 && current) {
        std::string text = read ? EmptyText(*current, tab) : strings.LoadString(WhyUnread(read.error()));
        if (served != request) // the user has gone on meanwhile
            return;
        list.SetEmptyText(std::move(text));
    }
    // So that the preview shows what the folder is about, and Enter opens something.
    if (list.Selected() < 0)
        list.Select(0);
    wanted.clear();
    SelectionChanged();
    if (!read && ShowsThumbnails() && read.error() != platform::error::Timeout) {
        const app::PatientFiles::Unless others{files};
        messages.Inform(app::str::ThumbnailsUnavailable);
    }
}

std::uint16_t ListPane::WhyUnread(platform::Error failure)
{
    return failure == platform::error::Timeout ? app::str::FolderDoesNotAnswer : app::str::PathFileAccessError;
}

void ListPane::ShowRefreshed()
{
    if (!refreshed)
        return;
    const int place = list.Selected();
    const std::string selected = SelectedPath();
    templates.Clear();
    templates.Add(*std::exchange(refreshed, std::nullopt));
    list.SetEmptyText({});
    const int row = selected.empty() ? -1 : templates.Find(selected);
    list.Refreshed(row >= 0 ? row
                            : std::min(place, templates.Rows() - 1)); // one that is gone gives way to its neighbour
}

void ListPane::Forget()
{
    if (std::string path = SelectedPath(); !path.empty())
        wanted = std::move(path);
    templates.Clear();
    list.SetEmptyText({});
    list.Refill();
}

void ListPane::Add(TemplateRows piece)
{
    // Between a piece and the question whether to go on the disk is asked, and messages are handled.
    if (piece.empty() || served != request)
        return;
    if (refreshed) {
        std::ranges::move(piece, std::back_inserter(*refreshed));
        return;
    }
    const std::string selected = SelectedPath();
    templates.Add(std::move(piece));
    const std::string& path = selected.empty() ? wanted : selected;
    list.Reordered(path.empty() ? -1 : templates.Find(path));
    ShowStatus();
}

bool ListPane::GoOn()
{
    // Painting waits: a list that is filled in a moment would be drawn empty first, and scroll bars come and go.
    if (toolkit.InputWaits()) {
        const app::PatientFiles::Unless others{files};
        toolkit.DoEvents();
    }
    return served == request;
}

std::string ListPane::EmptyText(RowSource& shown, const std::string& tab) const
{
    if (const auto texts = shown.TextsFor(0))
        return texts->empty;
    /// Counts what it is given.
    struct Counter final : RowSink {
        void Add(TemplateRows piece) override { rows += piece.size(); }
        bool GoOn() override { return true; }
        std::size_t rows{};
    } all;
    (void)shown.ReadRows(FileTypeTabs::AllTab, all);
    if (all.rows == 0 && shown.EmptyText() != 0)
        return strings.LoadString(shown.EmptyText());
    const auto* kind = std::ranges::find(library::TemplateKinds, tab, &library::TemplateKind::tab);
    std::string text;
    if (ShowsThumbnails())
        text = strings.LoadString(app::str::Empty);
    else if (kind != library::TemplateKinds.end() && kind->noneInFolder != 0)
        text = strings.LoadString(static_cast<std::uint16_t>(kind->noneInFolder));
    else
        text = "0 " + strings.LoadString(app::str::TemplatesAvailable);
    if (withoutPicture && withoutPicture->count > 0)
        text += "\r\n" + strings.LoadString(app::str::WithoutPictureAreHidden);
    else if (all.rows > 0 && tab != FileTypeTabs::AllTab)
        text += "\r\n" + strings.LoadString(app::str::OtherTypesHere);
    return text;
}

void ListPane::SetView(View view)
{
    const bool refills = (view == View::Thumbnails) != ShowsThumbnails();
    if (view != View::Thumbnails)
        plainView = view;
    if (refills)
        Forget(); // the rows of one kind of view must not show in the other
    list.SetView(view);
    if (refills)
        Refill();
}

void ListPane::RestoreViews(View plain, bool thumbnails)
{
    plainView = plain;
    list.SetView(thumbnails ? View::Thumbnails : plain);
}

void ListPane::SortBy(int column)
{
    const std::string selected = SelectedPath();
    templates.SortBy(column);
    list.SetSort(templates.SortColumn(), templates.SortAscending());
    list.Reordered(selected.empty() ? -1 : templates.Find(selected));
}

const TemplateRow* ListPane::Selected() const
{
    const int row = list.Selected();
    return row >= 0 && row < templates.Rows() ? &templates.At(row) : nullptr;
}

std::string ListPane::SelectedPath() const
{
    const TemplateRow* row = Selected();
    return row != nullptr ? FullPath(*row) : std::string{};
}

void ListPane::Select(std::string_view path)
{
    const int row = templates.Find(path);
    if (row < 0 || row == list.Selected())
        return;
    list.Select(row);
    SelectionChanged();
}

void ListPane::SelectionChanged()
{
    note.clear();
    ShowStatus();
    if (Changed)
        Changed();
}

void ListPane::Tell(std::string text)
{
    note = std::move(text);
    ShowStatus();
}

std::string ListPane::CountText() const
{
    std::string text = templates.Rows() == 1
                           ? strings.LoadString(app::str::TemplateAvailable)
                           : std::to_string(templates.Rows()) + " " + strings.LoadString(app::str::TemplatesAvailable);
    if (withoutPicture && withoutPicture->count > 0)
        text += platform::text::Replaced(
            strings.LoadString(withoutPicture->areShown ? app::str::WithoutPicture : app::str::MoreWithoutPicture),
            "%1", std::to_string(withoutPicture->count));
    return text;
}

void ListPane::ShowStatus()
{
    const auto texts = source ? source->TextsFor(templates.Rows()) : std::nullopt;
    status.SetPanel(0, texts ? texts->status : source ? CountText() : std::string{});
    std::string selected = note;
    if (const TemplateRow* row = Selected(); row != nullptr && note.empty()) {
        selected = row->text;
        if (row->hasDetails)
            selected += "   " + SizeText(row->size) + "   " + templates.ModifiedOf(*row);
    }
    status.SetPanel(1, std::move(selected));
}

} // namespace browser
