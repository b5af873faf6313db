#pragma once

#include "ui/Control.h"
#include "ui/ImageList.h"
#include "ui/Key.h"

#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace ui {

/// A tree of nodes, each known by its key.
class TreeView final : public Control {
public:
    struct Node {
        std::string key;
        std::string text;
        int image{};
        int selectedImage{};
        bool bold{};
        bool expanded{};
        Node* parent{};
        std::vector<std::unique_ptr<Node>> children;
    };

    explicit TreeView(Form& form) : Control{form, {}} {}
    std::string_view TypeName() const override { return "TreeView"; }
    bool IsTabStop() const override { return true; }

    ImageList Images;

    const std::vector<std::unique_ptr<Node>>& Roots() const { return roots; }
    std::size_t Count() const { return byKey.size(); }
    void Clear();
    /// Adds a node as the last child of `parent` (null: as a root). Null when the key is taken.
    Node* Add(Node* parent, std::string key, std::string text, int image, int selectedImage);
    void SetBold(Node& node, bool value);
    void SetImages(Node& node, int image, int selectedImage);
    Node* Find(std::string_view key) const;
    /// Every node, parents before children, in the order shown. Stops when `visit` gives false.
    void ForEach(const std::function<bool(Node&)>& visit) const;

    Node* Selected() const { return selected; }
    /// By code: no event. Null selects nothing.
    void Select(Node* node);
    /// Opens the ancestors and scrolls.
    void EnsureVisible(Node& node);
    void SetExpanded(Node& node, bool value);

    /// A label that is being edited.
    struct LabelEdit {
        std::string key;
        std::string text; ///< what stands in the box at first
    };
    /// Opens the selected node's label for editing, when BeforeLabelEdit allows it.
    void StartLabelEdit();
    /// Nothing while no label is being edited.
    const std::optional<LabelEdit>& EditedLabel() const { return editedLabel; }

    /// Holds the native tree's drawing back between the two calls; they nest. For bulk changes.
    void BeginUpdate();
    void EndUpdate();
    bool Updating() const { return updating > 0; }

    std::function<void()> Click;
    /// The node that was selected already was clicked.
    std::function<void()> ClickAgain;
    std::function<void(Node&)> Expand;
    std::function<void(Node&)> Collapse;
    std::function<void(Node&)> DblClick;
    /// A pop-up menu is wanted here (client area of the form). The node under the pointer has been selected.
    std::function<void(Point)> ContextMenu;
    /// True when the key was used up.
    std::function<bool(const Key&)> KeyDown;
    /// Asked before a label is edited; may change the text that is offered. False keeps it shut. Labels cannot be
    /// edited without it.
    std::function<bool(Node&, std::string& text)> BeforeLabelEdit;
    /// The user ended the editing with this text. The node keeps its own until somebody changes it.
    std::function<void(Node&, const std::string& text)> AfterLabelEdit;
    /// Something was dragged from `source` (whose DropTarget this is) and let go over the node.
    std::function<void(Node&, Control& source)> Drop;

    void UserSelects(std::string_view key);
    void UserClicksAgain();
    void UserExpands(std::string_view key);
    void UserCollapses(std::string_view key);
    /// By a click on the selected node's label; false when it may not be edited.
    bool UserStartsLabelEdit(std::string_view key);
    void UserEndsLabelEdit(const std::string& text);
    void UserCancelsLabelEdit() { editedLabel.reset(); }
    void UserDrops(std::string_view key, Control& source);

private:
    std::vector<std::unique_ptr<Node>> roots;
    std::unordered_map<std::string, Node*> byKey;
    Node* selected{};
    int updating{};
    bool changedWhileUpdating{};
    std::optional<LabelEdit> editedLabel;

    void ItemsChanged();
};

/// Keeps a tree's drawing held back for a scope.
class TreeUpdate {
public:
    explicit TreeUpdate(TreeView& treeView) : tree{treeView} { tree.BeginUpdate(); }
    TreeUpdate(const TreeUpdate&) = delete;
    TreeUpdate& operator=(const TreeUpdate&) = delete;
    ~TreeUpdate() { tree.EndUpdate(); }

private:
    TreeView& tree;
};

} // namespace ui
