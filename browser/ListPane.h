#pragma once

#include "app/base/Messages.h"
#include "app/base/StringTable.h"
#include "browser/FileTypeTabs.h"
#include "browser/RowSource.h"
#include "browser/TemplateList.h"
#include "ui/ListView.h"
#include "ui/StatusBar.h"
#include "ui/Toolkit.h"

#include <functional>
#include <memory>
#include <string>

namespace browser {

/// The right-hand side of the window: the tabs, the list below them in one of its views, and what the status bar says
/// of both. It shows the rows of one source at a time. The selection is a path: it stays on its template while the list
/// is filled anew, sorted, or shown in another view, as long as the template is there.
class ListPane final : private RowSink {
public:
    using View = ui::ListView::View;

    ListPane(ui::ListView& list, FileTypeTabs& tabs, ui::StatusBar& status, ui::Toolkit& toolkit,
             app::Messages& messages, const app::StringTable& strings, platform::Clock& clock,
             platform::Locale& locale);

    /// Other rows are shown, or another one is selected.
    std::function<void()> Changed;

    /// Shows the rows of this source (null: none). Asked for while another one is being read, it makes that one return
    /// first and is shown then: the call comes back at once.
    void Show(std::shared_ptr<RowSource> shown);
    /// Reads the source again.
    void Refill();
    /// Shows nothing, so that no file is in use and no path leads anywhere.
    void Clear() { Show(nullptr); }

    View GetView() const { return list.GetView(); }
    void SetView(View view);
    bool ShowsThumbnails() const { return list.GetView() == View::Thumbnails; }
    /// The last view that was not the thumbnails.
    View PlainView() const { return plainView; }
    /// Both as they were left; for a list that shows nothing yet.
    void RestoreViews(View plain, bool thumbnails);

    /// Null when no row is selected.
    const TemplateRow* Selected() const;
    /// Full path; "" when no row is selected.
    std::string SelectedPath() const;
    const TemplateList& Templates() const { return templates; }

    /// The user chose another row.
    void SelectionChanged();

private:
    ui::ListView& list;
    FileTypeTabs& tabs;
    ui::StatusBar& status;
    ui::Toolkit& toolkit;
    app::Messages& messages;
    const app::StringTable& strings;
    TemplateList templates;
    std::shared_ptr<RowSource> source;
    View plainView{View::LargeIcons};
    std::string wanted; ///< path of the row to select once it is there
    unsigned request{}; ///< number of the latest
    unsigned served{};  ///< number of the one that is being read, or was last
    bool filling{};

    void Add(TemplateRows piece) override;
    bool GoOn() override;
    void Forget();
    void Fill();
    std::string EmptyText(const std::string& tab) const;
    void SortBy(int column);
    void ShowStatus();
};

} // namespace browser
