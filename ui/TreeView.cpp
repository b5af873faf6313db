#include "ui/TreeView.h"

#include <algorithm>
#include <utility>

namespace ui {
namespace {

bool Visit(const std::vector<std::unique_ptr<TreeView::Node>>& nodes, const std::function<bool(TreeView::Node&)>& visit)
{
    return std::ranges::all_of(nodes, [&](const auto& node) { return visit(*node) && Visit(node->children, visit); });
}

} // namespace

void TreeView::Clear()
{
    selected = nullptr;
    editedLabel.reset();
    roots.clear();
    byKey.clear();
    ItemsChanged();
}

TreeView::Node* TreeView::Add(Node* parent, std::string key, std::string text, int image, int selectedImage)
{
    const auto [entry, isNew] = byKey.try_emplace(key, nullptr);
    if (!isNew)
        return nullptr;
    auto node = std::make_unique<Node>();
    node->key = std::move(key);
    node->text = std::move(text);
    node->image = image;
    node->selectedImage = selectedImage;
    node->parent = parent;
    entry->second = node.get();

    auto& siblings = parent != nullptr ? parent->children : roots;
    Node* added = siblings.emplace_back(std::move(node)).get();
    ItemsChanged();
    return added;
}

void TreeView::SetBold(Node& node, bool value)
{
    node.bold = value;
    ItemsChanged();
}

void TreeView::SetImages(Node& node, int image, int selectedImage)
{
    if (node.image == image && node.selectedImage == selectedImage)
        return;
    node.image = image;
    node.selectedImage = selectedImage;
    ItemsChanged();
}

TreeView::Node* TreeView::Find(std::string_view key) const
{
    const auto found = byKey.find(std::string{key});
    return found == byKey.end() ? nullptr : found->second;
}

void TreeView::ForEach(const std::function<bool(Node&)>& visit) const
{
    Visit(roots, visit);
}

void TreeView::Select(Node* node)
{
    selected = node;
    if (node != nullptr)
        for (Node* ancestor = node->parent; ancestor != nullptr; ancestor = ancestor->parent)
            ancestor->expanded = true;
    if (updating > 0)
        changedWhileUpdating = true;
    else
        Changed(Aspect::Selection);
}

void TreeView::EnsureVisible(Node& node)
{
    for (Node* ancestor = node.parent; ancestor != nullptr; ancestor = ancestor->parent)
        ancestor->expanded = true;
    if (updating == 0)
        Changed(Aspect::Scroll);
}

void TreeView::SetExpanded(Node& node, bool value)
{
    if (node.expanded == value)
        return;
    node.expanded = value;
    ItemsChanged();
}

void TreeView::BeginUpdate()
{
    ++updating;
}

void TreeView::EndUpdate()
{
    if (--updating == 0 && changedWhileUpdating) {
        changedWhileUpdating = false;
        Changed(Aspect::Items);
    }
}

void TreeView::UserSelects(std::string_view key)
{
    Node* node = Find(key);
    if (!Enabled() || node == nullptr || node == selected)
        return;
    selected = node;
    if (Click)
        Click();
}

void TreeView::UserClicksAgain()
{
    if (Enabled() && selected != nullptr && ClickAgain)
        ClickAgain();
}

void TreeView::UserExpands(std::string_view key)
{
    Node* node = Find(key);
    if (!Enabled() || node == nullptr || node->expanded)
        return;
    node->expanded = true;
    if (Expand)
        Expand(*node);
}

void TreeView::UserCollapses(std::string_view key)
{
    Node* node = Find(key);
    if (!Enabled() || node == nullptr || !node->expanded)
        return;
    node->expanded = false;
    if (Collapse)
        Collapse(*node);
}

void TreeView::StartLabelEdit()
{
    if (!editedLabel && selected != nullptr && UserStartsLabelEdit(selected->key))
        Changed(Aspect::LabelEdit);
}

bool TreeView::UserStartsLabelEdit(std::string_view key)
{
    Node* node = Find(key);
    if (!Enabled() || node == nullptr || !BeforeLabelEdit)
        return false;
    std::string text = node->text;
    if (!BeforeLabelEdit(*node, text))
        return false;
    editedLabel = LabelEdit{node->key, std::move(text)};
    return true;
}

void TreeView::UserEndsLabelEdit(const std::string& text)
{
    const auto edited = std::exchange(editedLabel, std::nullopt);
    Node* node = edited ? Find(edited->key) : nullptr;
    if (node != nullptr && AfterLabelEdit)
        AfterLabelEdit(*node, text);
}

void TreeView::UserDrops(std::string_view key, Control& source)
{
    Node* node = Find(key);
    if (Enabled() && node != nullptr && source.DropTarget == this && Drop)
        Drop(*node, source);
}

void TreeView::ItemsChanged()
{
    if (updating > 0)
        changedWhileUpdating = true;
    else
        Changed(Aspect::Items);
}

} // namespace ui
