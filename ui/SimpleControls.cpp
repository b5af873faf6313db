// The few lines that the smallest controls need.
#include "ui/Button.h"
#include "ui/CheckBox.h"
#include "ui/Image.h"
#include "ui/ListBox.h"
#include "ui/ProgressBar.h"
#include "ui/Splitter.h"
#include "ui/StatusBar.h"
#include "ui/UpDown.h"

#include "platform/Text.h"

#include <algorithm>
#include <utility>

namespace ui {

void Button::UserClicks()
{
    if (Enabled() && Visible() && Click)
        Click();
}

void CheckBox::SetChecked(bool value)
{
    if (value == checked)
        return;
    checked = value;
    Changed(Aspect::Value);
}

void CheckBox::UserClicks()
{
    if (!Enabled() || !Visible())
        return;
    SetChecked(!checked);
    if (Click)
        Click();
}

void ListBox::UserActivates(int index)
{
    UserSelects(index);
    if (Enabled() && Visible() && Selected() >= 0 && DblClick)
        DblClick();
}

int UpDown::Value() const
{
    return platform::text::ToInt(box.Text(), low, low, high);
}

void UpDown::SetValue(int value)
{
    box.SetText(std::to_string(std::clamp(value, low, high)));
}

void UpDown::UserSteps(int steps)
{
    if (!Enabled() || !Visible())
        return;
    const std::string before = box.Text();
    SetValue(std::clamp(Value() + steps, low, high));
    if (box.Text() != before && Change)
        Change();
}

void ProgressBar::SetValue(int percent)
{
    if (const int now = std::clamp(percent, 0, 100); std::exchange(value, now) != now)
        Changed(Aspect::Value);
}

void Image::SetFile(std::string path)
{
    file = std::move(path);
    Changed(Aspect::Picture);
}

void Image::UserClicks()
{
    if (Enabled() && Visible() && !file.empty() && Click)
        Click();
}

void Image::UserDrops(const std::string& dropped)
{
    if (Enabled() && Visible() && Dropped)
        Dropped(dropped);
}

void Image::SetNextFile(std::string path)
{
    nextFile = std::move(path);
    Changed(Aspect::Value);
}

void Image::SetZoom(int percent)
{
    if (percent == FitZoom)
        offset = {};
    if (percent == zoom)
        return;
    zoom = percent;
    Changed(Aspect::View);
}

void Image::Pan(Point by)
{
    if (zoom == FitZoom)
        return;
    offset = {offset.x + by.x, offset.y + by.y};
    Changed(Aspect::View);
}

void Image::Limit(Point most)
{
    offset = {std::clamp(offset.x, -most.x, most.x), std::clamp(offset.y, -most.y, most.y)};
}

void Image::SetFallback(std::string path, std::string text)
{
    if (path == fallbackFile && text == fallbackText)
        return;
    fallbackFile = std::move(path);
    fallbackText = std::move(text);
    Changed(Aspect::Picture);
}

void Splitter::UserDrags(int position)
{
    if (Moved)
        Moved(Allowed(position));
}

void StatusBar::SetPanel(std::size_t index, std::string text)
{
    if (index >= panels.size())
        panels.resize(index + 1);
    else if (panels[index] == text)
        return;
    panels[index] = std::move(text);
    Changed(Aspect::Items);
}

} // namespace ui
