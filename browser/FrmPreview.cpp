#include "browser/FrmPreview.h"

#include "app/base/Captions.h"
#include "app/base/StringId.h"
#include "library/CategoryPath.h"
#include "library/TemplateFiles.h"

#include <algorithm>
#include <utility>

namespace browser {
namespace {

using ui::KeyCode;

constexpr ui::Size LeastPicture{9000, 6000}; ///< twips

/// Percent of the picture's own size, from step to step.
constexpr int ZoomSteps[] = {10, 25, 33, 50, 67, 75, 100, 125, 150, 200, 300, 400, 600, 800};

} // namespace

FrmPreview::FrmPreview(app::Program& program, TemplateRows templates, const PreviewPane& pictures, int row,
                       Actions actions)
    : Form{program.toolkit, "FrmPreview", Style::Sizable}, program{program}, templates{std::move(templates)},
      pictures{pictures}, row{row}, actions{std::move(actions)}
{
    Smallest = LeastSize;
    imgPicture.Zoomable = true;
    LoadCaptions(*this, program.strings);
    imgPicture.Name = program.Text(app::str::Preview);
    lblCount.PlainText = true;
    imgPicture.SetFallback(library::DiskPath(program.state.TemplatesPath, library::NoPictureFile),
                           program.strings.LoadString(app::str::NoPreview));
    using ui::Fill;
    Layout(ui::Column(
        Fill(ui::Least(imgPicture, LeastPicture)), ui::Row(Fill(lblCount), cmdZoomOut, cmdZoomIn, cmdFit, cmdActual),
        ui::Row(cmdPrevious, cmdNext, Fill(ui::Cell{}), lblCreateNew, cmdDocument, cmdTemplate, cmdClose)));
    cmdPrevious.Click = [this] { ShowRow(this->row - 1); };
    cmdNext.Click = [this] { ShowRow(this->row + 1); };
    cmdZoomOut.Click = [this] { Zoom(-1); };
    cmdZoomIn.Click = [this] { Zoom(1); };
    cmdFit.Click = [this] { SetZoom(ui::Image::FitZoom); };
    cmdActual.Click = [this] { SetZoom(100); };
    cmdDocument.Click = [this] {
        this->actions.createDocument(Path());
        Close();
    };
    cmdTemplate.Click = [this] {
        this->actions.createTemplate(Path());
        Close();
    };
    cmdClose.Click = [this] { Close(); };
    imgPicture.DragFile = [this] { return Path(); };
    KeyDown = [this](const ui::Key& key) { return OnKey(key); };
    MouseWheel = [this](int steps) { Zoom(steps); };
    ShowRow(row);
    (row < Last() ? cmdNext : cmdClose).SetFocus();
}

void FrmPreview::ShowRow(int wanted)
{
    const int last = Last();
    row = std::clamp(wanted, 0, last);
    const TemplateRow& shown = At(row);
    SetCaption(shown.text + program.Text(app::str::PreviewCaption));
    lblCount.SetCaption(std::to_string(row + 1) + program.Text(app::str::PreviewOf) + std::to_string(Last() + 1) +
                        program.Text(app::str::PreviewTemplates));
    imgPicture.SetZoom(ui::Image::FitZoom);
    imgPicture.SetNextFile({});
    lookUp = pictures.FindPicture(shown, [this](const std::string& file) { imgPicture.SetFile(file); });
    if (lookUp)
        imgPicture.SetFile({});
    nextLookUp = row < last ? pictures.FindPicture(
                                  At(row + 1), [this](const std::string& file) { imgPicture.SetNextFile(file); })
                            : platform::Ticket{};
    // A button that goes grey must not keep the focus.
    if (row == last && cmdNext.HasFocus())
        (row > 0 ? cmdPrevious : cmdClose).SetFocus();
    if (row == 0 && cmdPrevious.HasFocus())
        (row < last ? cmdNext : cmdClose).SetFocus();
    cmdPrevious.SetEnabled(row > 0);
    cmdNext.SetEnabled(row < last);
}

void FrmPreview::Zoom(int steps)
{
    int percent = imgPicture.ShownZoom();
    for (; steps > 0; --steps)
        if (const auto* next = std::ranges::upper_bound(ZoomSteps, percent); next != std::end(ZoomSteps))
            percent = *next;
    for (; steps < 0; ++steps)
        if (const auto* next = std::ranges::lower_bound(ZoomSteps, percent); next != std::begin(ZoomSteps))
            percent = *std::prev(next);
    SetZoom(percent);
}

void FrmPreview::SetZoom(int percent)
{
    imgPicture.SetZoom(percent);
}

bool FrmPreview::OnKey(const ui::Key& key)
{
    if (key == ui::Ctrl('C')) {
        actions.copy(Path());
        return true;
    }
    const bool isNear = imgPicture.Zoom() != ui::Image::FitZoom;
    constexpr int pan = 900; // twips
    switch (key.code) {
    case KeyCode::Left:
        isNear ? imgPicture.Pan({pan, 0}) : ShowRow(row - 1);
        return true;
    case KeyCode::Right:
        isNear ? imgPicture.Pan({-pan, 0}) : ShowRow(row + 1);
        return true;
    case KeyCode::Up:
        imgPicture.Pan({0, pan});
        return true;
    case KeyCode::Down:
        imgPicture.Pan({0, -pan});
        return true;
    case KeyCode::PageUp:
        ShowRow(row - 1);
        return true;
    case KeyCode::PageDown:
        ShowRow(row + 1);
        return true;
    case KeyCode::Home:
        ShowRow(0);
        return true;
    case KeyCode::End:
        ShowRow(Last());
        return true;
    case KeyCode::Plus:
        Zoom(1);
        return true;
    case KeyCode::Minus:
        Zoom(-1);
        return true;
    default:
        return false;
    }
}

} // namespace browser
