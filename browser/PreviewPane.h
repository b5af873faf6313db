#pragma once

#include "app/base/PatientFiles.h"
#include "app/base/StartUpState.h"
#include "app/base/StringTable.h"
#include "browser/TemplateRow.h"
#include "ui/Image.h"
#include "ui/Label.h"

#include <string>

namespace browser {

/// The pane that shows the selected template's picture and the facts about it.
class PreviewPane {
public:
    PreviewPane(ui::Image& picture, ui::Label& facts, app::PatientFiles& files, const app::StartUpState& state,
                const app::StringTable& strings, platform::Clock& clock, platform::Locale& locale)
        : picture{picture}, facts{facts}, files{files}, state{state}, strings{strings}, clock{clock}, locale{locale}
    {
    }

    /// Shows this row; null empties the pane.
    void LoadThePreviewPane(const TemplateRow* row);

    /// Gives `use` the template's picture, now or later as long as the ticket is kept: "Previews\<name>.jpg" in its
    /// folder, else the library's "NF.jpg".
    platform::Ticket FindPicture(const TemplateRow& row, std::function<void(const std::string& file)> use) const;

private:
    ui::Image& picture;
    ui::Label& facts;
    app::PatientFiles& files;
    const app::StartUpState& state;
    const app::StringTable& strings;
    platform::Clock& clock;
    platform::Locale& locale;
    platform::Ticket lookUp; ///< of the picture that is to be shown
};

} // namespace browser
