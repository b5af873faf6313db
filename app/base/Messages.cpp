#include "app/base/Messages.h"

namespace app {

bool Messages::Ask(std::string text, ui::Answer proposed)
{
    return toolkit.ShowMessage({std::move(text), state.ProductCaption, ui::Icon::Question, ui::MessageButtons::YesNo,
                                proposed}) == ui::Answer::Yes;
}

void Messages::Stop(std::uint16_t id, const std::string& about)
{
    Stop(strings.LoadString(id) + (about.empty() ? "" : "\r\n" + about));
}

ui::Answer Messages::AskOrCancel(std::string text)
{
    return toolkit.ShowMessage(
        {std::move(text), state.ProductCaption, ui::Icon::Question, ui::MessageButtons::YesNoCancel});
}

void Messages::Show(std::string text, ui::Icon icon)
{
    toolkit.ShowMessage({std::move(text), state.ProductCaption, icon, ui::MessageButtons::Ok});
}

} // namespace app
