#pragma once

#include "app/base/Program.h"
#include "browser/PreviewPane.h"
#include "browser/TemplateRow.h"
#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/Image.h"
#include "ui/Label.h"

#include <functional>
#include <string>

namespace browser {

/// The templates of the list one after the other, each with its picture as large as there is room, or nearer.
class FrmPreview final : public ui::Form {
public:
    /// What the window's user can do with a template, by its full path.
    struct Actions {
        std::function<void(const std::string& path)> createDocument, createTemplate, copy;
    };

    /// Outer size in twips: room for the buttons and a little picture.
    static constexpr ui::Size LeastSize{9600, 6000};

    /// Begins with one of the rows, of which there is at least one.
    FrmPreview(app::Program& program, TemplateRows templates, const PreviewPane& pictures, int row, Actions actions);

    /// Of the template that is shown.
    std::string Path() const { return FullPath(At(row)); }

    ui::Image imgPicture{*this};
    ui::Label lblCount{*this};
    ui::Button cmdZoomOut{*this, ui::Tag{701}};
    ui::Button cmdZoomIn{*this, ui::Tag{702}};
    ui::Button cmdFit{*this, ui::Tag{703}};
    ui::Button cmdActual{*this, ui::Tag{704}};
    ui::Button cmdPrevious{*this, ui::Tag{250}};
    ui::Button cmdNext{*this, ui::Tag{251}};
    ui::Label lblCreateNew{*this, ui::Tag{247}};
    ui::Button cmdDocument{*this, ui::Tag{248}};
    ui::Button cmdTemplate{*this, ui::Tag{249}};
    ui::Button cmdClose{*this, ui::Tag{499}, ui::Role::Cancel};

private:
    app::Program& program;
    TemplateRows templates;
    const PreviewPane& pictures;
    int row;
    Actions actions;
    platform::Ticket lookUp; ///< of the picture that is to be shown
    platform::Ticket nextLookUp;

    int Last() const { return static_cast<int>(templates.size()) - 1; }
    const TemplateRow& At(int index) const { return templates.at(static_cast<std::size_t>(index)); }
    void ShowRow(int wanted);
    /// Nearer by these steps of a quarter, or farther.
    void Zoom(int steps);
    void SetZoom(int percent);
    bool OnKey(const ui::Key& key);
};

} // namespace browser
