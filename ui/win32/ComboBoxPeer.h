#pragma once

#include "ui/ComboBox.h"
#include "ui/win32/ItemControlPeer.h"

namespace ui::win32 {

class ComboBoxPeer final : public ItemControlPeer {
public:
    ComboBoxPeer(ComboBox& peerCombo, FormWindow& form, int id);
    Size Preferred(int width) const override;
    void DpiChanged() override;
    void OnCommand(int code, int id) override;

private:
    ComboBox& combo;
    bool cancelled{}; ///< the open list is being closed without a choice
};

} // namespace ui::win32
