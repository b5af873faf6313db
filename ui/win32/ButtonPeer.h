#pragma once

#include "ui/Button.h"
#include "ui/win32/PeerBase.h"

namespace ui::win32 {

class ButtonPeer final : public PeerBase {
public:
    ButtonPeer(Button& peerButton, FormWindow& form, int id);
    Size Preferred(int width) const override;
    void OnCommand(int code, int id) override;
    bool UsesMnemonic(wchar_t letter) override;

protected:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    Button& button;
};

} // namespace ui::win32
