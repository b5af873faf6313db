#pragma once

#include "app/base/StartUpState.h"
#include "app/base/StringTable.h"
#include "ui/Toolkit.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <string>

namespace app {

/// Message boxes, titled with the product's caption.
class Messages {
public:
    Messages(ui::Toolkit& toolkit, const StringTable& strings, const StartUpState& state)
        : toolkit{toolkit}, strings{strings}, state{state}
    {
    }

    void Inform(std::string text) { Show(std::move(text), ui::Icon::Information, 0); }
    void Inform(std::uint16_t id) { Show(strings.LoadString(id), ui::Icon::Information, id); }
    void Stop(std::string text) { Show(std::move(text), ui::Icon::Critical, 0); }
    void Stop(std::uint16_t id) { Show(strings.LoadString(id), ui::Icon::Critical, id); }
    /// With the file or folder that it is about below the text.
    void Stop(std::uint16_t id, const std::string& about);
    void Plain(std::string text) { Show(std::move(text), ui::Icon::None, 0); }
    void Plain(std::uint16_t id) { Show(strings.LoadString(id), ui::Icon::None, id); }
    /// A question with the buttons Yes and No; true for Yes. Enter gives what is proposed: No where a Yes cannot be
    /// taken back.
    bool Ask(std::string text, ui::Answer proposed = ui::Answer::Yes);
    /// A failure with the buttons Retry and Cancel; true for Retry.
    bool AskToRetry(std::string text);
    bool Ask(std::uint16_t id) { return Ask(strings.LoadString(id)); }
    /// The same with Cancel beside them, for what can also be left undone.
    ui::Answer AskOrCancel(std::string text);

    /// Nobody is there to read them: nothing is shown, and a question is answered as if its box were closed.
    bool Silent{};

    /// Called before one is shown.
    std::function<void()> Showing;

    /// The numbers of the last messages, the newest last: what a bug report can say of them without the names that they
    /// may hold. 0 for one that was put together.
    const std::deque<std::uint16_t>& Told() const { return told; }

private:
    ui::Toolkit& toolkit;
    const StringTable& strings;
    const StartUpState& state;

    std::deque<std::uint16_t> told;

    void Show(std::string text, ui::Icon icon, std::uint16_t id);
    ui::Answer Put(const ui::MessageBox& message);
};

} // namespace app
