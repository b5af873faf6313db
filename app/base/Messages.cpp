#include "app/base/Messages.h"

namespace app {

void Messages::Show(std::string text, ui::Icon icon)
{
    toolkit.ShowMessage({std::move(text), state.ProductCaption, icon, ui::MessageButtons::Ok});
}

} // namespace app
