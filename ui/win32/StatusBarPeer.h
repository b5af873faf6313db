#pragma once

#include "ui/StatusBar.h"
#include "ui/win32/PeerBase.h"

#include <string>

namespace ui::win32 {

class StatusBarPeer final : public PeerBase {
public:
    StatusBarPeer(StatusBar& peerBar, FormWindow& form, int id);
    Size Preferred(int width) const override;
    void DpiChanged() override;

protected:
    void Sync(Aspect aspect) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    StatusBar& bar;

    void SetParts();
    std::wstring Shortened(const std::wstring& text, int width) const;
    int WidthOf(const std::wstring& text) const;
};

} // namespace ui::win32
