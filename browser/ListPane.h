#pragma once

#include "app/base/Messages.h"
#include "app/base/PatientFiles.h"
#include "app/base/StringTable.h"
#include "browser/FileTypeTabs.h"
#include "browser/RowSource.h"
#include "browser/TemplateList.h"
#include "ui/ListView.h"
#include "ui/StatusBar.h"
#include "ui/Toolkit.h"

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace browser {

/// The right-hand side of the window: the tabs, the list below them in one of its views, and what the status bar says
/// of both. It shows the rows of one source at a time. The selection is a path: it stays on its template while the list
/// is filled anew, sorted, or shown in another view, as long as the template is there.
class ListPane final : private RowSink {
public:
    using View = ui::ListView::View;

    ListPane(ui::ListView& list, app::PatientFiles& files, FileTypeTabs& tabs, ui::StatusBar& status,
             ui::Toolkit& toolkit, app::Messages& messages, const app::StringTable& strings, platform::Clock& clock,
             platform::Locale& locale);

    /// Other rows are shown, or another one is selected.
    std::function<void()> Changed;

    /// Shows the rows of this source (null: none). Asked for while another one is being read, it makes that one return
    /// first and is shown then: the call comes back at once.
    void Show(std::shared_ptr<RowSource> shown);
    /// The same; the row of this full path is selected, or else the first one.
    void ShowAt(std::shared_ptr<RowSource> shown, std::string path);
    /// Reads the source again.
    void Refill();
    /// The same for what is shown already (`fresh` reads it as it is now): its rows stay in sight until the new ones
    /// are there, and the selection and the scroll place after that.
    void Refresh(std::shared_ptr<RowSource> fresh);
    /// Something that the user ought to know about the last command; shown until the next row is selected.
    void Tell(std::string note);
    /// Shows nothing, so that no file is in use and no path leads anywhere.
    void Clear() { Show(nullptr); }

    View GetView() const { return list.GetView(); }
    void SetView(View view);
    bool ShowsThumbnails() const { return list.GetView() == View::Thumbnails; }
    /// The last view that was not the thumbnails.
    View PlainView() const { return plainView; }
    /// Both as they were left; for a list that shows nothing yet.
    void RestoreViews(View plain, bool thumbnails);
    /// How the rows are sorted, and how wide the column of their folders is, twips; 0: not shown.
    struct Arrangement {
        int sortColumn{-1};
        bool sortAscending{true};
        int folderWidth{};
    };
    /// One for folders, and one for what was found: that comes in its own order, and names whole paths.
    using Arrangements = std::array<Arrangement, 2>;
    Arrangements GetArrangements() const;
    /// For a list that shows nothing yet.
    void RestoreArrangements(const Arrangements& kept);

    /// Null when no row is selected.
    const TemplateRow* Selected() const;
    /// Full path; "" when no row is selected.
    std::string SelectedPath() const;
    /// Selects the row of this full path, where there is one.
    void Select(std::string_view path);
    const TemplateList& Templates() const { return templates; }
    /// Whether the thumbnails include templates without a picture; nothing when no thumbnails are shown.
    std::optional<bool> ShowsWithoutPicture() const
    {
        return withoutPicture ? std::optional{withoutPicture->areShown} : std::nullopt;
    }

    /// The user chose another row.
    void SelectionChanged();
    /// Says in the status bar what is shown and selected.
    void ShowStatus();

private:
    ui::ListView& list;
    app::PatientFiles& files;
    FileTypeTabs& tabs;
    ui::StatusBar& status;
    ui::Toolkit& toolkit;
    app::Messages& messages;
    const app::StringTable& strings;
    TemplateList templates;
    std::shared_ptr<RowSource> source;
    View plainView{View::LargeIcons};
    std::string wanted;                    ///< path of the row to select once it is there
    std::string note;                      ///< shown in place of what is said of the selected row
    std::optional<TemplateRows> refreshed; ///< those read so far by a refresh
    std::optional<RowSink::WithoutPicture> withoutPicture;
    Arrangements arrangements;
    unsigned request{}; ///< number of the latest
    unsigned served{};  ///< number of the one that is being read, or was last
    bool filling{};

    void Add(TemplateRows piece) override;
    void TellWithoutPicture(WithoutPicture found) override { withoutPicture = found; }
    bool GoOn() override;
    void Forget();
    void Read();
    void TakeSource(std::shared_ptr<RowSource> shown);
    bool IsRanked() const;
    void Arrange(const Arrangement& arrangement);
    void Fill();
    void ShowRefreshed();
    std::string EmptyText(RowSource& shown, const std::string& tab) const;
    static std::uint16_t WhyUnread(platform::Error failure);
    std::string CountText() const;
    void SortBy(int column);
};

} // namespace browser
