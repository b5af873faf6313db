#include "ui/win32/LabelPeer.h"

#include "platform/Text.h"
#include "ui/TextBox.h"
#include "ui/win32/Accessible.h"
#include "ui/win32/Canvas.h"
#include "ui/win32/FormWindow.h"
#include "ui/win32/NativeText.h"

#include <oleacc.h>

#include <algorithm>

namespace ui::win32 {

LabelPeer::LabelPeer(Label& peerLabel, FormWindow& form, int id) : PeerBase{peerLabel, form}, label{peerLabel}
{
    Create(CanvasClass(), 0, 0, id);
    RoleForReaders(Handle(), ROLE_SYSTEM_STATICTEXT);
}

Size LabelPeer::Preferred(int width) const
{
    const SIZE text = Measure(label.Caption(), Font(), Pixels(width), Flags());
    const int least = label.LeastLines * static_cast<int>(Measure("X", Font()).cy);
    return {Twips(text.cx + 1), Twips(std::max(static_cast<int>(text.cy), least))};
}

bool LabelPeer::UsesMnemonic(wchar_t letter)
{
    if (label.PlainText || !HasMnemonic(letter))
        return false;
    const auto& controls = Window().Model().Controls();
    const auto next = std::find_if(std::ranges::find(controls, &Model()), controls.end(), [](const Control* control) {
        return control->IsTabStop() && control->Visible() && control->Enabled() && control->Peer() != nullptr;
    });
    if (next == controls.end())
        return false;
    (*next)->SetFocus();
    if (auto* box = dynamic_cast<TextBox*>(*next); box != nullptr && box->HasFocus())
        box->SelectAll();
    return true;
}

void LabelPeer::Sync(Aspect aspect)
{
    PeerBase::Sync(aspect);
    InvalidateRect(Handle(), nullptr, TRUE);
}

std::optional<LRESULT> LabelPeer::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_GETDLGCODE:
        return DLGC_STATIC;
    case WM_ENABLE:
        InvalidateRect(Handle(), nullptr, TRUE);
        return 0;
    case WM_UPDATEUISTATE: { // Alt shows the lines under the mnemonics
        const LRESULT answer = Default(message, wParam, lParam);
        InvalidateRect(Handle(), nullptr, TRUE);
        return answer;
    }
    case WM_PAINT:
        Paint();
        return 0;
    default:
        return std::nullopt;
    }
}

void LabelPeer::Paint() const
{
    PAINTSTRUCT paint{};
    HDC context = BeginPaint(Handle(), &paint);
    const HGDIOBJ before = SelectObject(context, Font());
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, GetSysColor(label.Enabled() ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    RECT room{};
    GetClientRect(Handle(), &room);
    const bool hidesMnemonics = (SendMessageW(Handle(), WM_QUERYUISTATE, 0, 0) & UISF_HIDEACCEL) != 0;
    const UINT always = Flags() | DT_EXPANDTABS | (hidesMnemonics ? DT_HIDEPREFIX : 0u);
    const auto draw = [&](const std::string& text, UINT flags) {
        const std::wstring native = ToNative(text);
        DrawTextW(context, native.c_str(), static_cast<int>(native.size()), &room, always | flags);
    };
    if (Measure(label.Caption(), Font(), std::max(1, static_cast<int>(room.right)), Flags()).cy <= room.bottom) {
        draw(label.Caption(), DT_WORDBREAK);
    } else {
        const LONG height = Measure("X", Font()).cy;
        for (const std::string& line : platform::text::Split(label.Caption(), '\n')) {
            draw(line.substr(0, line.find('\r')), DT_SINGLELINE | DT_END_ELLIPSIS);
            room.top += height;
        }
    }
    SelectObject(context, before);
    EndPaint(Handle(), &paint);
}

UINT LabelPeer::Flags() const
{
    return label.PlainText ? DT_NOPREFIX | DT_EDITCONTROL : 0u;
}

HFONT LabelPeer::Font() const
{
    return label.Heading ? Window().WindowFonts().heading.get() : NormalFont();
}

} // namespace ui::win32
