#include "ui/win32/TextBoxPeer.h"

#include "ui/win32/NativeText.h"

#include <oleacc.h>

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

/// The name by which a screen reader calls a box: otherwise it is the label before it, which may say less, or belong to
/// another box. Where the system cannot be told, that label has to do.
void NameForScreenReaders(HWND box, const std::string& name)
{
    // The numbers of the system's own header, whose names need a library that is not linked.
    constexpr GUID service{0xb5f8350b, 0x0548, 0x48b1, {0xa6, 0xee, 0x88, 0xbd, 0x00, 0xb4, 0xa5, 0xe7}};
    constexpr GUID interfaceId{0x6e26e776, 0x04f0, 0x495d, {0x80, 0xe4, 0x33, 0x30, 0x35, 0x2e, 0x31, 0x69}};
    constexpr GUID nameProperty{0x608d3df8, 0x8128, 0x4aa7, {0xa4, 0x28, 0xf5, 0x5e, 0x49, 0x26, 0x72, 0x91}};
    IAccPropServices* services = nullptr;
    if (FAILED(
            CoCreateInstance(service, nullptr, CLSCTX_INPROC_SERVER, interfaceId, reinterpret_cast<void**>(&services))))
        return;
    (void)services->SetHwndPropStr(box, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, nameProperty,
                                   ToNative(name).c_str());
    services->Release();
}

} // namespace

TextBoxPeer::TextBoxPeer(TextBox& peerBox, FormWindow& form, int id) : PeerBase{peerBox, form}, box{peerBox}
{
    Create(WC_EDITW, StyleOf(box), WS_EX_CLIENTEDGE, id);
    if (!box.ToolTipText.empty())
        NameForScreenReaders(Handle(), box.ToolTipText);
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
