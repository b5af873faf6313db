#include "ui/win32/LabelPeer.h"

#include "platform/Text.h"
#include "ui/TextBox.h"
#include "ui/win32/Canvas.h"
#include "ui/win32/FormWindow.h"
#include "ui/win32/NativeText.h"

#include <algorithm>

namespace ui::win32 {
namespace {

constexpr UINT PlainFlags = DT_NOPREFIX | DT_EDITCONTROL;

} // namespace

LabelPeer::LabelPeer(Label& peerLabel, FormWindow& form, int id) : PeerBase{peerLabel, form}, label{peerLabel}
{
    // Names are drawn here: the system's own label leaves out whatever does not fit, which may be a whole line.
    Create(label.PlainText ? CanvasClass() : WC_STATICW, label.PlainText ? 0u : static_cast<DWORD>(SS_LEFT), 0, id);
}

Size LabelPeer::Preferred(int width) const
{
    const SIZE text = Measure(label.Caption(), Font(), Pixels(width), label.PlainText ? PlainFlags : 0u);
    const int least = label.LeastLines * static_cast<int>(Measure("X", Font()).cy);
    return {Twips(text.cx + 1), Twips(std::max(static_cast<int>(text.cy), least))};
}

void LabelPeer::DpiChanged()
{
    PeerBase::DpiChanged();
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(Font()), TRUE);
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
    if (label.PlainText)
        InvalidateRect(Handle(), nullptr, TRUE);
}

std::optional<LRESULT> LabelPeer::OnMessage(UINT message, WPARAM, LPARAM)
{
    if (!label.PlainText || message != WM_PAINT)
        return std::nullopt;
    PaintNames();
    return 0;
}

void LabelPeer::PaintNames() const
{
    PAINTSTRUCT paint{};
    HDC context = BeginPaint(Handle(), &paint);
    const HGDIOBJ before = SelectObject(context, Font());
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, GetSysColor(COLOR_BTNTEXT));
    RECT room{};
    GetClientRect(Handle(), &room);
    const auto draw = [&](const std::string& text, UINT flags) {
        const std::wstring native = ToNative(text);
        DrawTextW(context, native.c_str(), static_cast<int>(native.size()), &room, flags);
    };
    if (Measure(label.Caption(), Font(), std::max(1, static_cast<int>(room.right)), PlainFlags).cy <= room.bottom) {
        draw(label.Caption(), PlainFlags | DT_WORDBREAK);
    } else {
        const LONG height = Measure("X", Font()).cy;
        for (const std::string& line : platform::text::Split(label.Caption(), '\n')) {
            draw(line.substr(0, line.find('\r')), DT_NOPREFIX | DT_SINGLELINE | DT_END_ELLIPSIS);
            room.top += height;
        }
    }
    SelectObject(context, before);
    EndPaint(Handle(), &paint);
}

HFONT LabelPeer::Font() const
{
    return label.Heading ? Window().WindowFonts().heading.get() : NormalFont();
}

} // namespace ui::win32
