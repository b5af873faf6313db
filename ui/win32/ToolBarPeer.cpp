#include "ui/win32/ToolBarPeer.h"

#include "pictures/win32/NativePixels.h"
#include "ui/win32/FormWindow.h"
#include "ui/win32/NativeText.h"

#include <algorithm>

namespace ui::win32 {
namespace {

constexpr int ImageSide = 360; ///< twips: 24 pixels at 96 dpi
constexpr int FirstCommand = 0x8000;

int CommandOf(std::size_t index)
{
    return FirstCommand + static_cast<int>(index);
}

bool IsSeparator(const ToolBar::Button& button)
{
    return button.style == ToolBar::Button::Style::Separator;
}

BYTE StyleOf(const ToolBar::Button& button)
{
    if (IsSeparator(button))
        return BTNS_SEP;
    const int style = (button.style == ToolBar::Button::Style::Check ? BTNS_CHECK : BTNS_BUTTON) | BTNS_AUTOSIZE |
                      (button.caption.empty() ? 0 : BTNS_SHOWTEXT);
    return static_cast<BYTE>(style);
}

} // namespace

ToolBarPeer::ToolBarPeer(ToolBar& peerBar, FormWindow& form, int id) : PeerBase{peerBar, form}, bar{peerBar}
{
    Create(TOOLBARCLASSNAMEW,
           TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS | CCS_NOPARENTALIGN | CCS_NORESIZE | CCS_NODIVIDER, 0, id);
    Send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
    Send(TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS);
}

Size ToolBarPeer::Preferred(int width) const
{
    const ByCode guard{*this};
    RECT client{};
    GetClientRect(Handle(), &client);
    const SIZE needed = BreakIntoRows(width > 0 ? Pixels(width) : 0);
    if (client.right > 0) // it is shown: asking changes nothing
        BreakIntoRows(client.right);
    return {Twips(needed.cx), Twips(needed.cy + 2)};
}

SIZE ToolBarPeer::BreakIntoRows(int width) const
{
    if (broken && broken->width == width)
        return broken->needed;
    broken.reset();
    // The control's own wrapping breaks at every separator once it has broken at one, and stays so.
    const auto setBreak = [this](std::size_t index, bool isBreak) {
        const auto command = static_cast<WPARAM>(CommandOf(index));
        const auto state = Send(TB_GETSTATE, command);
        const LRESULT wanted = isBreak ? state | TBSTATE_WRAP : state & ~TBSTATE_WRAP;
        if (wanted == state)
            return;
        // The bar places its buttons anew only when one appears.
        Send(TB_SETSTATE, command, wanted | TBSTATE_HIDDEN);
        Send(TB_SETSTATE, command, wanted);
    };
    for (std::size_t i = 0; i < shown.size(); ++i)
        setBreak(i, false);
    Send(TB_AUTOSIZE);
    std::vector<RECT> places(shown.size());
    for (std::size_t i = 0; i < shown.size(); ++i)
        if (shown[i].visible)
            Send(TB_GETITEMRECT, i, &places[i]);

    // Groups stay together where they can: a row ends at the separator before the button that does not fit, or just
    // before that button when its group alone is too wide.
    std::size_t rowStart = 0;
    std::size_t groupStart = 0;
    for (std::size_t i = 0; i < shown.size() && width > 0; ++i) {
        if (shown[i].style == ToolBar::Button::Style::Separator)
            groupStart = i + 1;
        if (!shown[i].visible || groupStart == i + 1)
            continue;
        while (rowStart < i && !shown[rowStart].visible)
            ++rowStart;
        if (i > rowStart && places[i].right - places[rowStart].left > width) {
            rowStart = groupStart > rowStart ? groupStart : i;
            setBreak(rowStart - 1, true);
        }
    }
    Send(TB_AUTOSIZE);
    SIZE needed{};
    for (std::size_t i = 0; i < shown.size(); ++i) {
        RECT place{};
        if (shown[i].visible && Send(TB_GETITEMRECT, i, &place) != 0) {
            needed.cx = std::max(needed.cx, place.right);
            needed.cy = std::max(needed.cy, place.bottom);
        }
    }
    broken = Broken{width, needed};
    return needed;
}

void ToolBarPeer::DpiChanged()
{
    PeerBase::DpiChanged();
    const ByCode guard{*this};
    shown.clear();
    SyncButtons();
}

void ToolBarPeer::Sync(Aspect aspect)
{
    if (aspect == Aspect::Items)
        SyncButtons();
}

std::optional<LRESULT> ToolBarPeer::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != WM_SIZE)
        return std::nullopt;
    const LRESULT result = Default(message, wParam, lParam);
    BreakIntoRows(LOWORD(lParam));
    return result;
}

bool ToolBarPeer::SameLook() const
{
    return std::ranges::equal(bar.Buttons(), shown, [](const ToolBar::Button& a, const ToolBar::Button& b) {
        return a.key == b.key && a.image == b.image && a.caption == b.caption && a.style == b.style;
    });
}

void ToolBarPeer::BuildImages()
{
    const int size = Pixels(ImageSide);
    std::vector<pictures::PixelBuffer> icons;
    for (const ToolBar::Button& button : bar.Buttons())
        if (!IsSeparator(button))
            icons.push_back(Window().Images().Pixels({button.image, {}}, size));
    ImageListHandle normal = pictures::win32::ToImageList(icons, size);
    std::ranges::for_each(icons, &pictures::PixelBuffer::Fade);
    ImageListHandle disabled = pictures::win32::ToImageList(icons, size);
    Send(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(normal.get()));
    Send(TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(disabled.get()));
    images = std::move(normal);
    disabledImages = std::move(disabled);
}

void ToolBarPeer::SyncButtons()
{
    if (!SameLook()) {
        const DrawnLater drawing{*this};
        while (Send(TB_DELETEBUTTON, 0) != 0) {
        }
        BuildImages();
        const auto& buttons = bar.Buttons();
        // All at a time: with each one that is added the control lays out those before it.
        std::vector<std::wstring> captions(buttons.size());
        std::vector<TBBUTTON> native(buttons.size());
        int image = 0;
        for (std::size_t i = 0; i < buttons.size(); ++i) {
            captions[i] = ToNative(buttons[i].caption);
            native[i].iBitmap = IsSeparator(buttons[i]) ? 0 : image++;
            native[i].idCommand = CommandOf(i);
            native[i].fsStyle = StyleOf(buttons[i]);
            native[i].fsState = TBSTATE_ENABLED;
            native[i].iString = captions[i].empty() ? 0 : reinterpret_cast<INT_PTR>(captions[i].data());
        }
        Send(TB_ADDBUTTONSW, native.size(), native.data());
        shown = buttons;
        broken.reset();
    }
    SyncStates();
    if (broken)
        return;
    Send(TB_AUTOSIZE);
    InvalidateRect(Handle(), nullptr, TRUE);
}

void ToolBarPeer::SyncStates()
{
    const auto& buttons = bar.Buttons();
    for (std::size_t i = 0; i < buttons.size() && i < shown.size(); ++i) {
        const ToolBar::Button& button = buttons[i];
        int state = button.enabled ? TBSTATE_ENABLED : 0;
        state |= button.pressed ? TBSTATE_CHECKED : 0;
        state |= button.visible ? 0 : TBSTATE_HIDDEN;
        const auto command = static_cast<WPARAM>(CommandOf(i));
        // Where the bar breaks into rows is kept in the same bits.
        const auto before = static_cast<int>(Send(TB_GETSTATE, command));
        state |= before & TBSTATE_WRAP;
        if (state != before)
            Send(TB_SETSTATE, command, state);
        if (shown[i].visible != button.visible)
            broken.reset();
        shown[i].visible = button.visible;
    }
}

void ToolBarPeer::OnCommand(int, int id)
{
    const auto index = static_cast<std::size_t>(id - FirstCommand);
    if (index >= shown.size() || IsByCode())
        return;
    const Watch watch{*this};
    bar.UserClicks(std::string{shown[index].key});
    // A check button has changed by itself; what it shows is the program's to say.
    if (!watch.Gone())
        SyncStates();
}

std::optional<LRESULT> ToolBarPeer::OnNotify(NMHDR& header)
{
    if (header.code != TBN_GETINFOTIPW)
        return std::nullopt;
    auto& info = reinterpret_cast<NMTBGETINFOTIPW&>(header);
    const auto index = static_cast<std::size_t>(info.iItem - FirstCommand);
    if (index < bar.Buttons().size() && info.cchTextMax > 0)
        lstrcpynW(info.pszText, ToNative(bar.Buttons()[index].toolTip).c_str(), info.cchTextMax);
    return 0;
}

} // namespace ui::win32
