#include "WindowTest.h"

#include "pictures/win32/pcMemDC.h"

#include <cstring>

using ui::win32::FormWindow;

Acts::Acts() : window{CreateWindowExW(0, WC_STATICW, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)}
{
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Acts::Procedure));
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

void Acts::Add(std::function<bool()> act)
{
    waiting.push_back(std::move(act));
    PostMessageW(window, WM_APP, 0, 0);
}

LRESULT CALLBACK Acts::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    if (message != WM_APP && message != WM_TIMER)
        return DefWindowProcW(window, message, wParam, lParam);
    KillTimer(window, 1);
    auto& waiting = reinterpret_cast<Acts*>(GetWindowLongPtrW(window, GWLP_USERDATA))->waiting;
    auto act = std::move(waiting.front());
    waiting.pop_front(); // the act may run a loop that comes to the next one
    if (!act()) {
        waiting.push_front(std::move(act));
        SetTimer(window, 1, 10, nullptr);
    }
    return 0;
}

bool WindowHands::PumpUntil(const std::function<bool()>& condition)
{
    return support::WaitFor([&] {
        Pump();
        return condition();
    });
}

void WindowHands::Open(ui::Form& form)
{
    form.Show();
    SetForegroundWindow(HandleOf(form));
    ASSERT_TRUE(PumpUntil([&] { return GetActiveWindow() == HandleOf(form) && GetFocus() != nullptr; }));
}

void WindowHands::Focus(ui::Control& control)
{
    control.SetFocus();
    ASSERT_TRUE(PumpUntil([&] { return GetFocus() == HandleOf(control); }));
    if (auto* form = dynamic_cast<EventForm*>(&control.Owner()))
        form->Events.clear();
}

void WindowHands::Check(EventForm& form, const std::vector<Act>& list, const std::function<void()>& after)
{
    for (const Act& act : list) {
        SCOPED_TRACE(act.name);
        form.Events.clear();
        act.run();
        EXPECT_EQ(form.Events, act.events);
        after();
    }
}

void WindowHands::PostKey(UINT message, WPARAM key, LPARAM repeat)
{
    PostMessageW(GetFocus(), message, key, repeat);
    Pump();
}

void WindowHands::Hold(const std::vector<WORD>& held, const std::function<void()>& act)
{
    BYTE before[256];
    GetKeyboardState(before);
    BYTE keys[256]{};
    for (const WORD key : held)
        keys[key] = 0x80;
    SetKeyboardState(keys);
    act();
    SetKeyboardState(before);
}

void WindowHands::Press(WORD virtualKey, const std::vector<WORD>& held)
{
    const bool isAlt = std::ranges::find(held, VK_MENU) != held.end();
    MSG message{};
    message.hwnd = GetFocus();
    message.message = isAlt ? WM_SYSKEYDOWN : WM_KEYDOWN;
    message.wParam = virtualKey;
    message.lParam = isAlt ? 0x20000001 : 1;
    // Straight to the window: the modifiers hold for this thread's next look only.
    const LONG_PTR top = GetWindowLongPtrW(GetAncestor(message.hwnd, GA_ROOT), GWLP_USERDATA);
    Hold(held, [&] { reinterpret_cast<FormWindow*>(top)->Translate(message); });
    Pump();
}

void WindowHands::Type(std::wstring_view text)
{
    for (const wchar_t letter : text)
        PostKey(WM_CHAR, letter);
}

void WindowHands::Mouse(HWND window, POINT at, std::initializer_list<UINT> messages)
{
    for (const UINT message : messages)
        PostMessageW(window, message, 0, MAKELPARAM(at.x, at.y));
    Pump();
}

void WindowHands::BeginDrag(const ui::ListView& list, int row)
{
    NMLISTVIEW begins{};
    begins.hdr = {HandleOf(list), static_cast<UINT_PTR>(GetDlgCtrlID(HandleOf(list))),
                  static_cast<UINT>(LVN_BEGINDRAG)};
    begins.iItem = row;
    SendMessageW(GetParent(HandleOf(list)), WM_NOTIFY, begins.hdr.idFrom, reinterpret_cast<LPARAM>(&begins));
    EXPECT_EQ(GetCapture(), HandleOf(list));
}

POINT WindowHands::PlaceOf(const ui::Control& control, int part)
{
    RECT place{0, 0, 10, 10};
    if (dynamic_cast<const ui::TreeView*>(&control) != nullptr) {
        LRESULT item = Send(control, TVM_GETNEXTITEM, TVGN_ROOT);
        for (int i = 0; i < part; ++i)
            item = Send(control, TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, item);
        std::memcpy(&place, &item, sizeof(item));
        Send(control, TVM_GETITEMRECT, TRUE, &place);
    } else if (const auto* list = dynamic_cast<const ui::ListView*>(&control)) {
        place = PlaceOfRow(*list, part, LVIR_LABEL);
        place.right = place.left + 20;
    } else if (dynamic_cast<const ui::UpDown*>(&control) != nullptr && part == 1) {
        place = ClientOf(HandleOf(control));
        place.top = place.bottom - 6;
    }
    for (const auto& [kind, message] : {std::pair<std::string_view, UINT>{"ListBox", LB_GETITEMRECT},
                                        {"TabStrip", TCM_GETITEMRECT},
                                        {"Toolbar", TB_GETITEMRECT}})
        if (control.TypeName() == kind)
            Send(control, message, static_cast<WPARAM>(part), &place);
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

RECT WindowHands::PlaceOfRow(const ui::ListView& list, int row, LONG part)
{
    RECT place{part, 0, 0, 0};
    Send(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), &place);
    return place;
}

RECT WindowHands::ClientOf(HWND window)
{
    RECT client{};
    GetClientRect(window, &client);
    return client;
}

int WindowHands::RowOf(const ui::ListView& list)
{
    return static_cast<int>(Send(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

std::string WindowHands::Outline(const ui::TreeView& tree)
{
    std::string shown;
    const LRESULT caret = Send(tree, TVM_GETNEXTITEM, TVGN_CARET);
    for (LRESULT item = Send(tree, TVM_GETNEXTITEM, TVGN_ROOT); item != 0;
         item = Send(tree, TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, item)) {
        for (LRESULT above = item; (above = Send(tree, TVM_GETNEXTITEM, TVGN_PARENT, above)) != 0;)
            shown += ' ';
        wchar_t text[256]{};
        TVITEMW native{};
        native.mask = TVIF_TEXT | TVIF_STATE | TVIF_HANDLE;
        native.hItem = reinterpret_cast<HTREEITEM>(item);
        native.stateMask = TVIS_EXPANDED;
        native.pszText = text;
        native.cchTextMax = 256;
        Send(tree, TVM_GETITEMW, 0, &native);
        shown += (item == caret ? "*" : "") + ui::win32::FromNative(text) +
                 ((native.state & TVIS_EXPANDED) != 0 ? "-" : "") + "\n";
    }
    return shown;
}

void WindowHands::MoveToDpi(HWND window, int dpi, SIZE size)
{
    RECT place{};
    GetWindowRect(window, &place);
    place.right = place.left + size.cx * dpi / 96;
    place.bottom = place.top + size.cy * dpi / 96;
    SendMessageW(window, 0x02E0 /* WM_DPICHANGED */, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
}

std::vector<unsigned> Capture(HWND window)
{
    UpdateWindow(window);
    const RECT client = WindowHands::ClientOf(window);
    pictures::win32::pcMemDC memory;
    memory.CreateFromPicture(pictures::PixelBuffer{{client.right, client.bottom}});
    const HDC source = GetDC(window);
    BitBlt(memory.hdc(), 0, 0, client.right, client.bottom, source, 0, 0, SRCCOPY);
    ReleaseDC(window, source);
    const pictures::PixelBuffer copy = memory.Picture();
    std::vector<unsigned> pixels(copy.Bytes().size() / sizeof(unsigned));
    std::memcpy(pixels.data(), copy.Bytes().data(), copy.Bytes().size());
    for (unsigned& pixel : pixels)
        pixel &= 0xFFFFFF;
    return pixels;
}
