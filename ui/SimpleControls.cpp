// The few lines that the smallest controls need.
#include "ui/Button.h"
#include "ui/Image.h"
#include "ui/ProgressBar.h"
#include "ui/Splitter.h"
#include "ui/StatusBar.h"

#include <algorithm>

namespace ui {

void Button::UserClicks()
{
    if (Enabled() && Visible() && Click)
        Click();
}

void ProgressBar::SetValue(int percent)
{
    value = std::clamp(percent, 0, 100);
    Changed(Aspect::Value);
}

void Image::SetFile(std::string path)
{
    file = std::move(path);
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
