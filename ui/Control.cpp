#include "ui/Control.h"

#include "ui/Form.h"

#include <algorithm>

namespace ui {

Control::Control(Form& owner, ui::Tag tag) : form{owner}
{
    if (tag.id > 0)
        TagText = std::to_string(tag.id);
    form.controls.push_back(this);
}

Control::~Control()
{
    std::erase(form.controls, this);
    if (form.activeControl == this)
        form.activeControl = nullptr;
    if (form.focusTold == this)
        form.focusTold = nullptr;
}

void Control::SetCaption(std::string text)
{
    if (text == caption)
        return;
    caption = std::move(text);
    Changed(Aspect::Caption);
}

void Control::SetToolTip(std::string text)
{
    ToolTipText = std::move(text);
    Changed(Aspect::ToolTip);
}

void Control::SetVisible(bool value)
{
    if (value == visible)
        return;
    visible = value;
    Changed(Aspect::Visible);
}

void Control::SetEnabled(bool value)
{
    if (value == enabled)
        return;
    enabled = value;
    Changed(Aspect::Enabled);
}

void Control::SetBounds(const Rect& rect)
{
    const Rect allowed{rect.left, rect.top, std::max(rect.width, 0), std::max(rect.height, 0)};
    if (allowed == bounds)
        return;
    bounds = allowed;
    Changed(Aspect::Bounds);
}

void Control::SetFocus()
{
    form.activeControl = this;
    Changed(Aspect::Focus);
    form.TellFocus();
}

bool Control::HasFocus() const
{
    return form.activeControl == this;
}

void Control::UserFocuses()
{
    form.activeControl = this;
    form.TellFocus();
}

Size Control::PreferredSize(int width) const
{
    return peer ? peer->Preferred(width) : Size{};
}

void Control::SetPeer(std::unique_ptr<ControlPeer> value)
{
    peer = std::move(value);
}

void Control::Changed(Aspect aspect)
{
    if (!peer)
        return;
    const Form::Use use{form};
    peer->Update(aspect);
}

} // namespace ui
