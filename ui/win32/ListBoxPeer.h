#pragma once

#include "ui/ListBox.h"
#include "ui/win32/ItemControlPeer.h"

namespace ui::win32 {

class ListBoxPeer final : public ItemControlPeer {
public:
    ListBoxPeer(ListBox& peerList, FormWindow& form, int id);
    void Update(Aspect aspect) override;
    Size Preferred(int width) const override;
    void DpiChanged() override;
    void OnCommand(int code, int id) override;

private:
    ListBox& list;
};

} // namespace ui::win32
