#pragma once

#include "ui/Control.h"
#include "ui/ImageList.h"

#include <functional>
#include <vector>

namespace ui {

/// A row of tabs, each known by its key.
class TabStrip final : public Control {
public:
    struct Tab {
        std::string key;
        std::string tagText;     ///< string number of the caption
        std::string toolTipText; ///< string number of the tool tip
        std::string caption;
        std::string toolTip;
        int image{};
    };

    explicit TabStrip(Form& form) : Control{form, {}} {}
    std::string_view TypeName() const override { return "TabStrip"; }
    bool IsTabStop() const override { return true; }

    ImageList Images;
    const std::vector<Tab>& Tabs() const { return tabs; }
    void SetTabs(std::vector<Tab> value);
    /// Puts a tab at `index` (clamped); a key that is there already is left alone.
    void Insert(std::size_t index, Tab tab);
    void Remove(std::string_view key);
    bool Has(std::string_view key) const;
    void SetTabTexts(std::size_t index, std::string caption, std::string toolTip);

    /// The selected tab's key; "" without tabs.
    const std::string& Selected() const { return selected; }
    /// By code: no event. An unknown key is ignored.
    void Select(std::string_view key);

    std::function<void()> Click;
    void UserSelects(std::string_view key);

private:
    std::vector<Tab> tabs;
    std::string selected;
};

} // namespace ui
