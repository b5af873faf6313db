#pragma once

#include "app/base/Program.h"
#include "browser/TemplateList.h"
#include "ui/Image.h"
#include "ui/Label.h"

#include <string>

namespace browser {

/// The pane that shows the selected template's picture and the facts about it.
class PreviewPane {
public:
    PreviewPane(app::Program& program, ui::Image& picture, ui::Label& facts)
        : program{program}, picture{picture}, facts{facts}
    {
    }

    /// Shows this row; null empties the pane.
    void LoadThePreviewPane(const TemplateList::Row* row);

    /// The template's picture: "Previews\<name>.jpg" in its folder, else the library's "NF.jpg".
    std::string PictureOf(const TemplateList::Row& row) const;

private:
    app::Program& program;
    ui::Image& picture;
    ui::Label& facts;
};

} // namespace browser
