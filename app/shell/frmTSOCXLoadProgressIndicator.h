#pragma once

#include "app/base/Program.h"
#include "ui/Form.h"
#include "ui/Image.h"
#include "ui/Label.h"
#include "ui/ProgressBar.h"

namespace app {

/// The window that shows how far the browser's loading is.
class frmTSOCXLoadProgressIndicator final : public ui::Form {
public:
    explicit frmTSOCXLoadProgressIndicator(Program& program);
    ~frmTSOCXLoadProgressIndicator() override;

    ui::Image imgSplash{*this};
    ui::Label lblProgress{*this};
    ui::ProgressBar prgLoad{*this};

private:
    Program& program;

    void ShowCount(int percent);
};

} // namespace app
