#pragma once

#include "ui/TextBox.h"
#include "ui/win32/PeerBase.h"

namespace ui::win32 {

class TextBoxPeer final : public PeerBase {
public:
    TextBoxPeer(TextBox& peerBox, FormWindow& form, int id);
    void Update(Aspect aspect) override;
    Size Preferred(int width) const override;
    bool UsesKey(const Key& key) override { return box.UserPressesCommandKey(key); }
    void OnCommand(int code, int id) override;

protected:
    void Sync(Aspect aspect) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    TextBox& box;

    std::wstring NativeText() const;
    /// The native control has no notification for this, so the model is told after each message that may do it.
    void TakeSelection();
    void ShowSelection();
    LRESULT OnCharacter(WPARAM character, LPARAM lParam);
    LRESULT DialogCode(WPARAM wParam, LPARAM lParam);
};

} // namespace ui::win32
