#pragma once

#include "ui/Button.h"
#include "ui/CheckBox.h"
#include "ui/win32/PeerBase.h"

namespace ui::win32 {

/// What push buttons and check boxes share: they are clicked with the mouse, with Space and by their mnemonic.
template <class Kind>
class ClickedPeer : public PeerBase {
public:
    void OnCommand(int code, int) override
    {
        if (code == BN_CLICKED && !IsByCode())
            model.UserClicks();
    }

    bool UsesMnemonic(wchar_t letter) override
    {
        if (!HasMnemonic(letter))
            return false;
        if (TakesFocus())
            model.UserClicks();
        return true;
    }

protected:
    ClickedPeer(Kind& peerModel, FormWindow& form) : PeerBase{peerModel, form}, model{peerModel} {}

    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_LBUTTONDOWN)
            return PressIfFocused(wParam, lParam);
        return std::nullopt;
    }

    Kind& model;
};

class CheckBoxPeer final : public ClickedPeer<CheckBox> {
public:
    CheckBoxPeer(CheckBox& box, FormWindow& form, int id);
    Size Preferred(int width) const override;

protected:
    void Sync(Aspect aspect) override;
};

class ButtonPeer final : public ClickedPeer<Button> {
public:
    ButtonPeer(Button& button, FormWindow& form, int id);
    Size Preferred(int width) const override;

protected:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
};

} // namespace ui::win32
