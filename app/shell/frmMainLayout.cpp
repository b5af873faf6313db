// Where the main window stands, how its panes share it, and what they are called.
#include "app/shell/frmMain.h"

#include "app/shell/WindowPlacement.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace app {
namespace {

// All lengths in twips.
constexpr int MinimumWidth = 9700;
constexpr int LeastUsableHeight = 6600;       ///< bars, some nodes of the tree, and the preview; without the banner
constexpr int VertSplitterMargin = 300;       ///< never further left
constexpr int VertSplitterRightMargin = 3000; ///< never closer to the window's right edge
constexpr int HorzSplitterMargin = 900;       ///< least height of the tree
constexpr int LeastPreviewHeight = 2700;      ///< the facts, and a picture that shows something
constexpr int PaneMargin = 60;
constexpr int FactsLines = 4;          ///< of a template with a short name: the picture keeps its size
constexpr double FactsShare = 2.0 / 3; ///< of the preview, at most: long names in a narrow pane leave a picture
constexpr double BannerShare = 0.25;   ///< of the window, at most

} // namespace

void frmMain::LimitSizes()
{
    Smallest = {MinimumWidth, LeastUsableHeight};
    lblPreview.LeastLines = FactsLines;
}

void frmMain::RestorePlacement()
{
    values = ReadWindowValues(program.settings);
    const int width = std::max(values.width, MinimumWidth); // widened later, it would reach off the screen again
    SetPlacement(PlacementWithin({values.left, values.top, width, values.height}, program.toolkit.WorkAreas()));
    SetState(values.isMaximized ? WindowState::Maximized : WindowState::Normal);
}

void frmMain::OnResize()
{
    // A frame that the user drags must not run messages.
    if (!IsVisible())
        program.progress.Increment();
    if (const int least = LeastWidth(); State() == WindowState::Normal && Placement().width < least) {
        ui::Rect wider = Placement();
        wider.width = least;
        SetPlacement(wider); // which is heard of here only where it is another size in pixels, too
    }
    SizeControls();
}

Pane frmMain::Panes()
{
    const auto folderList = [this] { return values.folderListOn; };
    const auto previewPane = [this] { return values.previewPaneOn; };
    // clang-format off
    return Below(
        Pane{tbToolBar}.Preferred(),
        Pane{findControls.Layout()}.Within(PaneMargin).When([this] { return find.IsOpen(); }),
        Beside(
            Below(
                Pane{tvTreeView}.When(folderList)
                    .UpTo(imgHorzSplitter, values.horzSplitterTop, HorzSplitterMargin, LeastPreviewHeight),
                Below(imgPreview, Pane{lblPreview}.PreferredUpTo(FactsShare).After(PaneMargin))
                    .When(previewPane).Within(PaneMargin))
                .UpTo(imgVertSplitter, values.vertSplitterLeft, VertSplitterMargin, VertSplitterRightMargin,
                      [this] { return WindowWidth(); }),
            Below(Pane{fileTypeTabStrip}.Preferred(), lvListView))
            .After(PaneMargin),
        Pane{imgBanner}.PreferredUpTo(BannerShare).After(PaneMargin).When([this] { return banner.HasPicture(); }),
        Pane{sbStatusBar}.Preferred());
    // clang-format on
}

int frmMain::LeastWidth()
{
    if (!find.IsOpen() || State() != WindowState::Normal)
        return MinimumWidth;
    const int frame = Placement().width - ClientSize().width;
    return std::max(MinimumWidth, ui::Measure(findControls.Layout(), 0).width + 2 * PaneMargin + frame);
}

int frmMain::WindowWidth() const
{
    return State() == WindowState::Maximized ? ClientSize().width : Placement().width;
}

void frmMain::SizeControls()
{
    Smallest.width = LeastWidth();
    Smallest.height = LeastUsableHeight + (banner.HasPicture() ? imgBanner.Box.height + PaneMargin : 0);
    panes.Place(ClientSize());
}

void frmMain::NameControls()
{
    const std::pair<ui::Control&, std::uint16_t> names[] = {{tbToolBar, 708},        {tvTreeView, 147},
                                                            {fileTypeTabStrip, 709}, {lvListView, 710},
                                                            {imgPreview, 148},       {imgBanner, 711}};
    for (const auto& [control, name] : names)
        control.Name = program.Text(name);
}

} // namespace app
