#pragma once

#include "pictures/Thumbnail.h"
#include "ui/Control.h"
#include "ui/ImageList.h"
#include "ui/Key.h"

#include <functional>
#include <vector>

namespace ui {

using Thumbnail = pictures::Thumbnail;

/// The rows behind a list view. The view asks for what it shows and keeps no copy.
class ListModel {
public:
    virtual ~ListModel() = default;
    virtual int Rows() const = 0;
    virtual std::string Text(int row, int column) const = 0;
    /// Entry of ListView::LargeImages / SmallImages.
    virtual int Icon(int row) const = 0;
    virtual int SmallIcon(int row) const = 0;
    /// What View::Thumbnails shows; the row's icon where no picture can be decoded.
    virtual Thumbnail ThumbnailOf(int) const { return {}; }
};

/// A list in one of five styles, with at most one selected row.
class ListView final : public Control {
public:
    enum class View { LargeIcons = 0, SmallIcons = 1, List = 2, Details = 3, Thumbnails = 4 };

    struct Column {
        std::string tagText; ///< string number of the heading
        std::string text;
        int width{}; ///< twips
        bool rightAligned{};
    };

    explicit ListView(Form& form) : Control{form, {}} {}
    std::string_view TypeName() const override { return "ListView"; }
    bool IsTabStop() const override { return true; }

    ImageList LargeImages;
    ImageList SmallImages;

    ListModel* Model() const { return model; }
    void SetModel(ListModel* value);
    /// The model's rows changed: the selection is dropped and the view drawn anew.
    void Refill();
    /// The rows' order changed; `row` is now where the selected one went (-1: nowhere).
    void Reordered(int row);
    /// The model's rows were read again: as Reordered, and the scroll place stays although `row` is out of sight.
    void Refreshed(int row);
    /// While Refreshed updates the native list.
    bool KeepsScrollPlace() const { return keepsScrollPlace; }
    int Rows() const { return model != nullptr ? model->Rows() : 0; }

    const std::vector<Column>& Columns() const { return columns; }
    void SetColumns(std::vector<Column> value);
    void SetColumnText(std::size_t index, std::string text);
    View GetView() const { return view; }
    void SetView(View value);
    /// Column with the sort arrow (-1: none) and its direction.
    int SortColumn() const { return sortColumn; }
    bool SortAscending() const { return sortAscending; }
    void SetSort(int column, bool ascending);
    /// Shown in the list's own area while it has no rows.
    const std::string& EmptyText() const { return emptyText; }
    void SetEmptyText(std::string text);

    /// -1 when none is selected.
    int Selected() const { return selected; }
    /// By code: no event. Also scrolls the row into view.
    void Select(int row);

    std::function<void()> Click; ///< the selection changed
    std::function<void()> DblClick;
    std::function<void(int column)> ColumnClick;
    std::function<void(Point)> ContextMenu;
    std::function<void(Point)> HeaderContextMenu; ///< the same for the headings
    std::function<bool(const Key&)> KeyDown;

    void UserSelects(int row);
    void UserActivates(int row);
    void UserClicksColumn(int column);
    void UserSizesColumn(std::size_t column, int width);

private:
    ListModel* model{};
    std::vector<Column> columns;
    View view{View::LargeIcons};
    int sortColumn{-1};
    bool sortAscending{true};
    int selected{-1};
    bool keepsScrollPlace{};
    std::string emptyText;
};

} // namespace ui
