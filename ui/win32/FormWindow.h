#pragma once

#include "pictures/Pictures.h"
#include "pictures/win32/ImageLoader.h"
#include "platform/Jobs.h"
#include "ui/Form.h"
#include "ui/win32/Dpi.h"
#include "ui/win32/MenuTable.h"

#include <optional>

namespace ui::win32 {

class PeerBase;
class Win32Toolkit;

/// The native window of one form, with the peers of its controls.
class FormWindow final : public FormPeer {
public:
    /// `owner` is the window that this one stays above; may be null.
    FormWindow(Win32Toolkit& windowToolkit, ui::Form& windowForm, HWND owner);
    FormWindow(const FormWindow&) = delete;
    FormWindow& operator=(const FormWindow&) = delete;
    ~FormWindow() override;

    void Update(Aspect aspect) override;
    void Show() override;
    void Hide() override;
    Size ClientSize() const override;
    void FitClient(Size client) override;
    void ShowPopup(Menu& menu, Point at) override;
    void BringToFront() override;

    ui::Form& Model() const { return form; }
    HWND Handle() const { return window; }
    /// Whether messages are for the form: no more when it has been closed and its window only waits for its end.
    bool Serves() const { return !ready || form.IsOpen(); }
    int Dpi() const { return dpi; }
    const Fonts& WindowFonts() const { return fonts; }
    const pictures::win32::ImageLoader& Images() const;
    const pictures::Pictures& Pictures() const;
    platform::Jobs& Jobs() const;

    /// A message of the loop that belongs to this window or a child: keys that commands use, Tab, Enter, Esc and
    /// mnemonics. True when it was used up.
    bool Translate(MSG& message);
    /// Gives the keyboard to the form's active control, or to the first that Tab reaches.
    void FocusActiveControl();
    /// The focus moves to `focus`: shows which button Enter presses then.
    void MarkDefaultButton(HWND focus);
    /// Whether the user can do nothing here but close the window, while something is waited for.
    bool HoldsInput() const;
    void SetToolTip(HWND control, const std::string& text);
    /// The class of every form's window.
    static const wchar_t* WindowClass();

private:
    Win32Toolkit& toolkit;
    ui::Form& form;
    HWND window{};
    int dpi;
    Fonts fonts;
    MenuTable menus;
    IconHandle largeIcon;
    IconHandle smallIcon;
    HWND toolTips{};
    int wheel{}; ///< turned, and no whole notch yet
    bool byCode{};
    bool ready{};
    bool resized{};
    bool frameIsDragged{};

    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnCommand(WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> OnNotify(NMHDR& header);
    /// An open menu, and a window that is being moved or sized, have a loop of the system's that waits for an input.
    /// Without a window that cannot come any more, and what follows the window's end waits with it.
    void CancelLoops() const;
    std::optional<LRESULT> OnMouseWheel(int turned);
    std::optional<LRESULT> OnErase(HDC context);
    void OnColoursChanged();
    void OnMenuPopup(HMENU popup, int index);
    void OnPlaced();
    void OnDpiChanged(int newDpi, const RECT& suggested);
    void Build();
    void TearDown();
    void ApplyPlacement();
    void ApplyIcon();
    void ApplyMenu();
    bool TranslateKey(const MSG& message);
    bool TranslateMnemonic(const MSG& message);
    PeerBase* DefaultButton() const;
    PeerBase* CancelButton() const;
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
};

} // namespace ui::win32
