#pragma once

#include "app/base/Program.h"
#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/Label.h"

#include <functional>
#include <memory>
#include <string>

namespace app {

/// Says what something that the user began is waiting for, and lets him go.
class frmWaiting final : public ui::Form {
public:
    /// `close` ends the program, or what is seen of it.
    frmWaiting(Program& program, const std::string& about, std::function<void()> close);
    ~frmWaiting() override;
    static std::unique_ptr<ui::Form> Shown(Program& program, const std::string& about, std::function<void()> close);

    ui::Label lblReason{*this, ui::Tag{715}};
    ui::Label lblAbout{*this};
    ui::Button cmdClose{*this, ui::Tag{716}};
};

} // namespace app
