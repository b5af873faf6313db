#include "FormsUnderTest.h"

#include "ui/headless/HeadlessToolkit.h"

#include <utility>

namespace {

std::vector<ui::TreeView::Node*> ShownNodes(const ui::TreeView& tree)
{
    std::vector<ui::TreeView::Node*> nodes;
    tree.ForEach([&](ui::TreeView::Node& node) {
        bool shown = true;
        for (const auto* above = node.parent; above != nullptr; above = above->parent)
            shown = shown && above->expanded;
        if (shown)
            nodes.push_back(&node);
        return true;
    });
    return nodes;
}

class OnHeadless final : public FormsUnderTest {
public:
    ui::Toolkit& Toolkit() override { return toolkit; }
    void Open(ui::Form& form) override { form.Show(); }
    void Press(ui::Form& form, const ui::Key& key) override { form.UserPresses(key); }
    void Type(ui::TextBox& box, std::string_view text) override { box.UserTypes(text); }
    void CloseByTitleBar(ui::Form& form) override { form.UserCloses(); }
    void RunPosted() override { toolkit.RunPosted(); }

    void Click(ui::Control& control, int part) override
    {
        const auto index = static_cast<std::size_t>(part);
        if (auto* button = dynamic_cast<ui::Button*>(&control))
            button->UserClicks();
        else if (auto* box = dynamic_cast<ui::CheckBox*>(&control))
            box->UserClicks();
        else if (auto* items = dynamic_cast<ui::ItemControl*>(&control))
            items->UserSelects(part);
        else if (auto* arrows = dynamic_cast<ui::UpDown*>(&control))
            arrows->UserSteps(part == 0 ? 1 : -1);
        else if (auto* tree = dynamic_cast<ui::TreeView*>(&control))
            ShownNodes(*tree).at(index) == tree->Selected() ? tree->UserClicksAgain()
                                                            : tree->UserSelects(ShownNodes(*tree).at(index)->key);
        else if (auto* list = dynamic_cast<ui::ListView*>(&control))
            list->UserSelects(part);
        else if (auto* tabs = dynamic_cast<ui::TabStrip*>(&control))
            tabs->UserSelects(tabs->Tabs().at(index).key);
        else if (auto* bar = dynamic_cast<ui::ToolBar*>(&control))
            bar->UserClicks(bar->Buttons().at(index).key);
    }

    void DoubleClick(ui::Control& control, int part) override
    {
        if (auto* list = dynamic_cast<ui::ListBox*>(&control))
            list->UserActivates(part);
        else if (auto* rows = dynamic_cast<ui::ListView*>(&control))
            rows->UserActivates(part);
    }

    void RunModal(ui::Form& form, std::vector<std::function<void()>> acts) override
    {
        toolkit.OnModal(form.Name(), [this, acts = std::move(acts)](ui::Form&) {
            for (const auto& act : acts) {
                act();
                toolkit.RunPosted();
            }
        });
        form.ShowModal();
    }

    void InNextYield(std::function<void()> act) override
    {
        toolkit.OnYield = [this, act = std::move(act)](int) {
            const auto now = act; // the next line takes this handler away
            toolkit.OnYield = nullptr;
            now();
        };
    }

    std::string Shown(const ui::Control& control) override
    {
        const auto places = [](int selected, std::size_t count) {
            return std::to_string(selected) + " of " + std::to_string(count);
        };
        if (const auto* text = dynamic_cast<const ui::TextBox*>(&control))
            return text->Text();
        if (const auto* box = dynamic_cast<const ui::CheckBox*>(&control))
            return box->Checked() ? "on" : "off";
        if (const auto* items = dynamic_cast<const ui::ItemControl*>(&control))
            return places(items->Selected(), items->Items().size());
        if (const auto* list = dynamic_cast<const ui::ListView*>(&control))
            return places(list->Selected(), static_cast<std::size_t>(list->Rows()));
        std::string shown;
        if (const auto* tabs = dynamic_cast<const ui::TabStrip*>(&control))
            for (const auto& tab : tabs->Tabs())
                shown += (tab.key == tabs->Selected() ? "*" : "") + tab.key + " ";
        if (const auto* bar = dynamic_cast<const ui::ToolBar*>(&control))
            for (const auto& button : bar->Buttons())
                shown += button.style == ui::ToolBar::Button::Style::Separator ? '|'
                         : !button.visible                                     ? ' '
                         : !button.enabled                                     ? '_'
                         : button.pressed                                      ? 'x'
                                                                               : 'o';
        if (const auto* tree = dynamic_cast<const ui::TreeView*>(&control))
            for (const auto* node : ShownNodes(*tree)) {
                for (const auto* above = node->parent; above != nullptr; above = above->parent)
                    shown += ' ';
                shown += (node == tree->Selected() ? "*" : "") + node->text + (node->expanded ? "-" : "") + "\n";
            }
        return shown;
    }

private:
    ui::HeadlessToolkit toolkit;
};

} // namespace

std::unique_ptr<FormsUnderTest> FormsUnderTest::Make()
{
    return std::make_unique<OnHeadless>();
}
