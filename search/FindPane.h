#pragma once

#include "app/base/Program.h"
#include "browser/FileTypeTabs.h"
#include "browser/ListPane.h"
#include "browser/TemplateReader.h"
#include "library/TemplateLibrary.h"
#include "search/FindControls.h"
#include "search/Finder.h"
#include "search/ResultRows.h"

#include <functional>
#include <memory>
#include <string>

namespace search {

/// The Find pane: finds by name while the user types, and by what the documents say of themselves. What it finds is
/// shown in the list in place of the selected category; the pane gives that back when it is closed.
class FindPane {
public:
    FindPane(FindControls& controls, app::Program& program, const library::TemplateLibrary& library,
             const browser::TemplateReader& reader, browser::Thumbnails& thumbnails, const browser::FileTypeTabs& tabs,
             browser::ListPane& list, ui::ListView& listView, const library::DocumentFacts& facts);

    /// The pane was opened or closed.
    std::function<void()> Resized;
    /// The list is to show Rows(), or the selected category when there are none, with this path's row selected.
    std::function<void(const std::string& path)> ShowList;
    std::function<void()> OpenSelected;
    /// Shows templates of every type.
    std::function<void()> SelectAllTypes;

    /// Opens the pane, or goes into it. My Favorites cannot be searched, which the user is told.
    void Open();
    void Close();
    /// Keeps what was asked for last.
    void Remember();
    bool IsOpen() const { return state.FindPaneOpen; }
    /// What the list shows while something is looked for; null otherwise.
    std::shared_ptr<browser::RowSource> Rows() const;

    /// The user chose a folder in the tree, which is to be shown: the search goes there, or ends.
    void FolderChosen();
    /// The library was loaded again.
    void LibraryLoaded();
    void TabChosen() { ShowFindings(); }
    /// A key that no control used up; true when the pane did.
    bool OnKey(const ui::Key& key);

private:
    FindControls& controls;
    app::Program& program;
    app::StartUpState& state;
    const library::TemplateLibrary& library;
    const browser::TemplateReader& reader;
    browser::Thumbnails& thumbnails;
    const browser::FileTypeTabs& tabs;
    browser::ListPane& list;
    ui::ListView& listView;
    Finder finder;
    std::shared_ptr<ResultRows> rows;
    std::size_t elsewhere{}; ///< more in other categories
    std::string returnTo;    ///< path of the row that was selected before
    bool isFilled{};
    platform::Ticket pause; ///< runs while the results rest that are shown
    bool isBehind{};        ///< the finder has more than they hold

    void Wire();
    bool InFavorites() const;
    std::string WantedCategory() const;
    void ReadLibrary();
    void OnText();
    void OnFolder();
    void FindNow();
    void Begin();
    void Clear();
    void Escape();
    /// Shows what the finder has, and no more of it for a while: the list must be painted and the user be heard between
    /// two fillings of it, however fast the pieces come.
    void OnFinder();
    platform::Ticket Pause();
    /// Searches again; `path` is the row to select.
    void ShowFound(const std::string& path);
    void ShowFindings();
    void ShowAllTypes();
    void ShowAllCategories();
};

} // namespace search
