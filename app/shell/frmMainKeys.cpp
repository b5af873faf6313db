// What the keys do that are no commands: in the whole window, in the tree and in the list.
#include "app/shell/frmMain.h"

namespace app {

bool frmMain::OnKey(const ui::Key& key)
{
    if (key.code == ui::KeyCode::F6 && !key.ctrl && !key.alt) {
        MoveFocus();
        return true;
    }
    if (key.code == ui::KeyCode::Tab && key.ctrl && !key.alt) {
        tabs.SelectNext(key.shift);
        return true;
    }
    return find.OnKey(key) || commands.Press(key);
}

bool frmMain::OnTreeKey(const ui::Key& key)
{
    if (key == ui::Plain(ui::KeyCode::Delete))
        return commands.Run("mnupopDeletefolder");
    if (key == ui::Plain(ui::KeyCode::Enter)) {
        if (!OpenSelectedNode())
            ToggleBranch();
        return true;
    }
    return OnAnyPaneKey(key);
}

bool frmMain::OnListKey(const ui::Key& key)
{
    // F2 and Delete are the folder's in the tree. In the list, where the user looks at a template, F2 must not rename
    // the folder, and Delete is about the template.
    if (key == ui::Plain(ui::KeyCode::F2))
        return true;
    if (key == ui::Plain(ui::KeyCode::Delete))
        return commands.Run("mnuPopRemoveFromFavorites");
    return OnAnyPaneKey(key);
}

bool frmMain::OnAnyPaneKey(const ui::Key& key)
{
    if (key != ui::Plain(ui::KeyCode::Backspace))
        return false;
    SelectParent();
    return true;
}

void frmMain::ToggleBranch()
{
    ui::TreeView::Node* node = tvTreeView.Selected();
    if (node == nullptr || node->children.empty())
        return;
    tvTreeView.SetExpanded(*node, !node->expanded);
    tvTreeView_Expand(*node);
}

void frmMain::SelectParent()
{
    if (const auto* node = tvTreeView.Selected(); node != nullptr)
        SelectNode(node->parent);
}

void frmMain::MoveFocus()
{
    if (lvListView.HasFocus() && values.folderListOn) {
        tvTreeView.SetFocus();
        return;
    }
    lvListView.SetFocus();
}

} // namespace app
