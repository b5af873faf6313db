#include "browser/ListPane.h"

#include "app/base/StringId.h"
#include "library/TemplateFiles.h"

#include <algorithm>
#include <utility>

namespace browser {

ListPane::ListPane(ui::ListView& list, FileTypeTabs& tabs, ui::StatusBar& status, ui::Toolkit& toolkit,
                   app::Messages& messages, const app::StringTable& strings, platform::Clock& clock,
                   platform::Locale& locale)
    : list{list}, tabs{tabs}, status{status}, toolkit{toolkit}, messages{messages}, strings{strings}, templates{clock,
                                                                                                                locale}
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
    source = std::move(shown);
    Refill();
}

void ListPane::Refill()
{
    Forget();
    ++request;
    if (filling)
        return; // the fill on the stack returns at its next step, and takes this one up
    struct Guard {
        bool& flag;
        explicit Guard(bool& guarded) : flag{guarded} { flag = true; }
        ~Guard() { flag = false; }
    } guard{filling};
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
    if (current)
        read = ShowsThumbnails() ? current->ReadThumbnails(tab, *this) : current->ReadRows(tab, *this);
    if (served != request)
        return;
    if (templates.Rows() == 0 && current)
        list.SetEmptyText(read ? EmptyText(tab) : strings.LoadString(app::str::PathFileAccessError));
    // So that the preview shows what the folder is about, and Enter opens something.
    if (list.Selected() < 0)
        list.Select(0);
    wanted.clear();
    SelectionChanged();
    if (!read && ShowsThumbnails())
        messages.Inform(app::str::ThumbnailsUnavailable);
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
    if (piece.empty())
        return;
    const std::string selected = SelectedPath();
    templates.Add(std::move(piece));
    const std::string& path = selected.empty() ? wanted : selected;
    list.Reordered(path.empty() ? -1 : templates.Find(path));
    ShowStatus();
}

bool ListPane::GoOn()
{
    toolkit.DoEvents();
    return served == request;
}

std::string ListPane::EmptyText(const std::string& tab) const
{
    if (ShowsThumbnails())
        return strings.LoadString(app::str::Empty);
    const auto* kind = std::ranges::find(library::TemplateKinds, tab, &library::TemplateKind::tab);
    if (kind != library::TemplateKinds.end() && kind->noneInFolder != 0)
        return strings.LoadString(static_cast<std::uint16_t>(kind->noneInFolder));
    return "0 " + strings.LoadString(app::str::TemplatesAvailable);
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

void ListPane::SelectionChanged()
{
    ShowStatus();
    if (Changed)
        Changed();
}

void ListPane::ShowStatus()
{
    status.SetPanel(0, source
                           ? std::to_string(templates.Rows()) + " " + strings.LoadString(app::str::TemplatesAvailable)
                           : std::string{});
    std::string selected;
    if (const TemplateRow* row = Selected()) {
        selected = row->text;
        if (row->hasDetails)
            selected += "   " + SizeText(row->size) + "   " + templates.ModifiedOf(*row);
    }
    status.SetPanel(1, std::move(selected));
}

} // namespace browser
