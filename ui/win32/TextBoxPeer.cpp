#include "ui/win32/TextBoxPeer.h"

#include "ui/win32/Accessible.h"
#include "ui/win32/NativeText.h"

namespace ui::win32 {
namespace {

constexpr int Width = 1500;              ///< twips
constexpr int ManyLines = 4;             ///< lines in sight of a box of several
constexpr WPARAM SelectAllCharacter = 1; ///< Ctrl+A, which older systems leave to the program

DWORD StyleOf(const TextBox& box)
{
    const DWORD style = box.GetLines() == TextBox::Lines::Many
                            ? ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | static_cast<DWORD>(WS_VSCROLL)
                            : static_cast<DWORD>(ES_AUTOHSCROLL);
    return style | (box.ReadOnly() ? ES_READONLY : 0u);
}

} // namespace

TextBoxPeer::TextBoxPeer(TextBox& peerBox, FormWindow& form, int id) : PeerBase{peerBox, form}, box{peerBox}
{
    Create(WC_EDITW, StyleOf(box), WS_EX_CLIENTEDGE, id);
    NameForReaders(Handle(), box.ToolTipText); // the label before it may say less, or belong to another box
    const ByCode guard{*this};
    Sync(Aspect::View);
    Sync(Aspect::Value);
}

void TextBoxPeer::Update(Aspect aspect)
{
    PeerBase::Update(aspect);
    if (aspect != Aspect::Bounds)
        return;
    // Selecting in a box that had no size yet scrolled the text out of sight.
    const ByCode guard{*this};
    Send(EM_SETSEL, 0, LPARAM{0});
    Send(EM_SCROLLCARET);
    ShowSelection();
}

Size TextBoxPeer::Preferred(int) const
{
    const int lines = box.GetLines() == TextBox::Lines::Many ? ManyLines : 1;
    return {Width, FieldHeight() + (lines - 1) * Twips(Measure({}, NormalFont()).cy)};
}

void TextBoxPeer::Sync(Aspect aspect)
{
    switch (aspect) {
    case Aspect::Value:
        SetWindowTextW(Handle(), ToNative(box.Text()).c_str());
        ShowSelection();
        break;
    case Aspect::Selection:
        ShowSelection();
        break;
    case Aspect::View:
        Send(EM_SETLIMITTEXT, box.MaxLength());
        Send(EM_SETREADONLY, box.ReadOnly());
        break;
    default:
        break;
    }
}

std::wstring TextBoxPeer::NativeText() const
{
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(Handle())) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(Handle(), text.data(), static_cast<int>(text.size()))));
    return text;
}

void TextBoxPeer::ShowSelection()
{
    const auto units = [&](std::size_t bytes) {
        return ToNative(std::string_view{box.Text()}.substr(0, bytes)).size();
    };
    Send(EM_SETSEL, units(box.SelStart()), static_cast<LPARAM>(units(box.SelStart() + box.SelLength())));
    Send(EM_SCROLLCARET);
}

void TextBoxPeer::TakeSelection()
{
    DWORD start = 0;
    DWORD end = 0;
    Send(EM_GETSEL, reinterpret_cast<WPARAM>(&start), &end);
    const std::wstring text = NativeText();
    const auto bytes = [&](DWORD units) { return FromNative(std::wstring_view{text}.substr(0, units)).size(); };
    box.UserSelects(bytes(start), bytes(end) - bytes(start));
}

void TextBoxPeer::OnCommand(int code, int)
{
    if (code != EN_CHANGE || IsByCode())
        return;
    DWORD cursor = 0;
    Send(EM_GETSEL, 0, &cursor);
    const std::wstring text = NativeText();
    box.UserEdits(FromNative(text), FromNative(std::wstring_view{text}.substr(0, cursor)).size());
}

LRESULT TextBoxPeer::OnCharacter(WPARAM character, LPARAM lParam)
{
    if (character == SelectAllCharacter) {
        Send(EM_SETSEL, 0, -1);
        return 0;
    }
    const Watch watch{*this};
    const LRESULT answer = Default(WM_CHAR, character, lParam);
    if (!watch.Gone())
        TakeSelection();
    return answer;
}

LRESULT TextBoxPeer::DialogCode(WPARAM wParam, LPARAM lParam)
{
    LRESULT code = Default(WM_GETDLGCODE, wParam, lParam);
    if (box.GetLines() == TextBox::Lines::Many) {
        // By itself such a box would keep Tab and Esc from the dialog.
        code &= ~static_cast<LRESULT>(DLGC_WANTALLKEYS | DLGC_WANTTAB | DLGC_HASSETSEL);
        if (const auto* message = reinterpret_cast<const MSG*>(lParam);
            message != nullptr && message->message == WM_KEYDOWN && message->wParam == VK_RETURN && !box.ReadOnly())
            code |= DLGC_WANTMESSAGE;
    }
    return code;
}

std::optional<LRESULT> TextBoxPeer::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CHAR:
        return OnCharacter(wParam, lParam);
    case WM_GETDLGCODE:
        return DialogCode(wParam, lParam);
    case WM_PASTE:
        box.UserStartsPaste();
        return std::nullopt;
    case WM_KEYDOWN:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_LBUTTONUP:
    case EM_SETSEL:
        break;
    default:
        return std::nullopt;
    }
    const Watch watch{*this};
    if (message == WM_KEYDOWN)
        box.UserPressesKey();
    if (watch.Gone())
        return 0;
    const LRESULT answer = Default(message, wParam, lParam);
    if (!watch.Gone() && !IsByCode()) {
        TakeSelection();
        if (message == WM_LBUTTONUP)
            box.UserReleasesMouse();
    }
    return answer;
}

} // namespace ui::win32
