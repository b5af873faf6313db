#include "ui/Form.h"

#include "platform/Scoped.h"
#include "ui/Button.h"
#include "ui/Toolkit.h"

#include <algorithm>
#include <utility>

namespace ui {

Form::Form(Toolkit& formToolkit, std::string formName, Style formStyle, ui::Tag tag)
    : toolkit{formToolkit}, name{std::move(formName)}, style{formStyle}
{
    if (tag.id > 0)
        TagText = std::to_string(tag.id);
}

Form::~Form()
{
    std::erase(toolkit.forms, this);
}

Toolkit::Yield::Yield(Toolkit& yieldToolkit) : toolkit{yieldToolkit}, held{yieldToolkit.forms}
{
    for (Form* form : held)
        ++form->uses;
}

Toolkit::Yield::~Yield()
{
    for (Form* form : held)
        if (std::ranges::find(toolkit.forms, form) != toolkit.forms.end())
            form->EndUse();
}

void Form::SetCaption(std::string text)
{
    caption = std::move(text);
    Update(FormPeer::Aspect::Caption);
}

void Form::SetIconFile(std::string path)
{
    iconFile = std::move(path);
    Update(FormPeer::Aspect::Icon);
}

void Form::SetPlacement(const Rect& rect)
{
    if (rect == placement)
        return;
    placement = rect;
    Update(FormPeer::Aspect::Placement);
}

void Form::SetState(WindowState value)
{
    if (value == state)
        return;
    state = value;
    Update(FormPeer::Aspect::State);
}

void Form::Realize()
{
    open = true;
    if (peer)
        return;
    const Use use{*this};
    toolkit.forms.push_back(this);
    try {
        peer = toolkit.CreatePeer(*this);
    } catch (...) {
        open = false;
        std::erase(toolkit.forms, this);
        for (Control* control : controls)
            control->SetPeer(nullptr);
        throw;
    }
    clientSize = peer->ClientSize();
    if (layout) {
        const int inner = layoutWidth > 0 ? layoutWidth - 2 * LayoutMargin : 0;
        Size size = Measure(*layout, inner);
        // Texts wrap at the wanted width; a row of long captions makes the window wider, and the texts less high.
        size.width = std::max(size.width, inner);
        size.height = Measure(*layout, size.width).height;
        peer->FitClient({size.width + 2 * LayoutMargin, size.height + 2 * LayoutMargin});
        clientSize = peer->ClientSize();
        PlaceControls();
    }
}

void Form::Show()
{
    Realize();
    const Use use{*this};
    visible = true;
    peer->Show();
}

void Form::Hide()
{
    const Use use{*this};
    visible = false;
    if (peer)
        peer->Hide();
}

void Form::ShowModal()
{
    Realize();
    const Use use{*this};
    visible = true;
    toolkit.RunModal(*this);
}

bool Form::Close()
{
    if (!open)
        return true;
    // A handler of the closing that closes again must not run it twice.
    if (closing)
        return false;
    const Use use{*this};
    const platform::Scoped now{closing, true};
    if (Closing && !Closing())
        return false;
    Unload();
    return true;
}

void Form::Unload()
{
    if (!open)
        return;
    const Use use{*this};
    open = false;
    Hide();
}

void Form::EndUse() noexcept
{
    if (--uses > 0 || open || !peer)
        return;
    std::erase(toolkit.forms, this);
    for (Control* control : controls)
        control->SetPeer(nullptr);
    peer.reset();
    if (!Closed)
        return;
    try {
        Closed();
    } catch (...) {
        // Memory was short; whoever waits for the form's end must hear of it all the same.
        Closed();
    }
}

const Button* Form::DefaultButton(const Control* focus) const
{
    if (const auto* focused = dynamic_cast<const Button*>(focus))
        return focused;
    if (focus != nullptr && focus->EnterButton != nullptr)
        return focus->EnterButton;
    for (const Control* control : controls)
        if (const auto* button = dynamic_cast<const Button*>(control);
            button != nullptr && button->GetRole() == Role::Default)
            return button;
    return nullptr;
}

void Form::ShowPopup(Menu& menu, Point at)
{
    const Use use{*this};
    if (MenuOpening)
        MenuOpening();
    if (peer)
        peer->ShowPopup(menu, at);
}

void Form::BringToFront()
{
    const Use use{*this};
    if (peer)
        peer->BringToFront();
}

void Form::UserResizes(Size client)
{
    clientSize = client;
    PlaceControls();
    if (Resize)
        Resize();
}

void Form::UserPlaces(const Rect& outer, WindowState newState)
{
    if (newState != WindowState::Minimized)
        placement = outer;
    state = newState;
}

void Form::UserCloses()
{
    if (style != Style::Splash && (ClosesWhileHeld || !toolkit.InputHeld()))
        Close();
}

bool Form::UserPresses(const Key& key)
{
    const auto find = [&] {
        Menu* found = nullptr;
        MenuBar.ForEach([&](Menu& item) {
            if (found == nullptr && item.Shortcut == key && item.Click)
                found = &item;
        });
        return found;
    };
    Menu* hit = find();
    // Arrows and digits are pressed by the dozen: the entries are brought up to date for a key of theirs alone.
    if (hit != nullptr && MenuOpening) {
        MenuOpening();
        hit = find();
    }
    if (hit != nullptr) {
        if (hit->Enabled)
            hit->UserClicks();
        else if (KeyDown)
            KeyDown(key); // may say why it cannot be done
        return true;
    }
    return KeyDown && KeyDown(key);
}

void Form::Layout(Cell content, int width)
{
    layout = std::move(content);
    layoutWidth = width;
}

void Form::PlaceControls()
{
    if (layout)
        Place(*layout,
              {LayoutMargin, LayoutMargin, clientSize.width - 2 * LayoutMargin, clientSize.height - 2 * LayoutMargin});
}

void Form::TellFocus()
{
    // A handler that moves the focus changes what the running loop tells next.
    if (tellingFocus)
        return;
    const platform::Scoped now{tellingFocus, true};
    while (focusTold != activeControl) {
        if (const Control* before = std::exchange(focusTold, nullptr); before != nullptr && before->LostFocus)
            before->LostFocus();
        focusTold = activeControl;
        if (focusTold != nullptr && focusTold->GotFocus)
            focusTold->GotFocus();
    }
}

void Form::Update(FormPeer::Aspect aspect)
{
    const Use use{*this};
    if (peer)
        peer->Update(aspect);
}

} // namespace ui
