#pragma once

#include "ui/CheckBox.h"
#include "ui/win32/PeerBase.h"

namespace ui::win32 {

class CheckBoxPeer final : public PeerBase {
public:
    CheckBoxPeer(CheckBox& peerBox, FormWindow& form, int id);
    Size Preferred(int width) const override;
    void OnCommand(int code, int id) override;
    bool UsesMnemonic(wchar_t letter) override;

protected:
    void Sync(Aspect aspect) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    CheckBox& box;
};

} // namespace ui::win32
