#include "app/base/Messages.h"

namespace app {

bool Messages::Ask(std::string text, ui::Answer proposed)
{
    return Put({std::move(text), state.ProductCaption, ui::Icon::Question, ui::MessageButtons::YesNo, proposed}) ==
           ui::Answer::Yes;
}

void Messages::Stop(std::uint16_t id, const std::string& about)
{
    Show(strings.LoadString(id) + (about.empty() ? "" : "\r\n" + about), ui::Icon::Critical, id);
}

ui::Answer Messages::AskOrCancel(std::string text)
{
    return Put({std::move(text), state.ProductCaption, ui::Icon::Question, ui::MessageButtons::YesNoCancel});
}

bool Messages::AskToRetry(std::string text)
{
    return Put({std::move(text), state.ProductCaption, ui::Icon::Critical, ui::MessageButtons::RetryCancel}) ==
           ui::Answer::Retry;
}

void Messages::Show(std::string text, ui::Icon icon, std::uint16_t id)
{
    if (Silent)
        return;
    constexpr std::size_t remembered = 10;
    told.push_back(id);
    if (told.size() > remembered)
        told.pop_front();
    Put({std::move(text), state.ProductCaption, icon, ui::MessageButtons::Ok});
}

ui::Answer Messages::Put(const ui::MessageBox& message)
{
    if (Silent)
        return ui::Otherwise(message.buttons);
    if (Showing)
        Showing();
    return toolkit.ShowMessage(message);
}

} // namespace app
