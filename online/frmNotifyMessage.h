#pragma once

#include "app/base/Program.h"
#include "online/NotifyState.h"
#include "platform/Ticket.h"
#include "ui/Button.h"
#include "ui/CheckBox.h"
#include "ui/Form.h"
#include "ui/Label.h"

namespace online {

/// The update service's message. It comes by itself, beside whatever the user does.
class frmNotifyMessage final : public ui::Form {
public:
    frmNotifyMessage(app::Program& program, NotifyState& state);

    ui::Label lblMessage{*this};
    ui::CheckBox chkDontShow{*this, ui::Tag{478}};
    ui::Button OKButton{*this, ui::Tag{265}, ui::Role::Default};
    ui::Button CancelButton{*this, ui::Tag{231}, ui::Role::Cancel};

private:
    app::Program& program;
    NotifyState& state;

    platform::Ticket opening; ///< what the service offers

    void OKButton_Click();
};

} // namespace online
