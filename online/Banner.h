#pragma once

#include "app/base/Program.h"
#include "online/HiddenPage.h"
#include "ui/Image.h"

#include <functional>
#include <string>

namespace online {

/// The banner pane: the local banner page of the templates folder, or the web's when that is live. What it shows of a
/// page is its first picture with its link. Owned by the main window, which lays the pane out.
class Banner {
public:
    Banner(app::Program& program, ui::Image& pane);

    /// Shows the local banner, and asks for the web's. Everything comes later, off the window's thread.
    void LoadBrowserBanner();
    /// Ends what is under way.
    void Stop();
    /// The same, and shows nothing.
    void SwitchOff();
    /// Judges the hidden page, once it is there: a page that says it is live is shown, one that says it is missing puts
    /// the local banner back.
    void GetBannerConnectionState();
    /// Wraps a banner picture of this disk in a page of our own and shows that.
    void ShowHttpBanner(const std::string& imagePath);

    /// While there is none, the pane takes no room.
    bool HasPicture() const { return !pane.File().empty(); }
    /// Where a click leads: a web address.
    const std::string& Link() const { return link; }
    /// What is shown is another picture, or none.
    std::function<void()> Changed;

    HiddenPage wbHiddenBanner;

private:
    /// What a banner page comes down to.
    struct Shown {
        std::string picture, link, text;
    };

    app::Program& program;
    ui::Image& pane;
    platform::Ticket navigating, fetching;
    std::string link;

    std::string LocalPage() const;
    /// A link that may be opened; else the makers' own address.
    std::string LinkOr(const std::string& wanted) const;
    /// `name`: of the link, where the page gives it none.
    void Navigate(std::string page, std::string name = {});
    /// Gives the pane the size of a banner's picture, whatever the picture's own: it is scaled into it. No size without
    /// a picture.
    void ResizeHTTPimage();
    void Show(Shown shown);
    void FetchWebPicture();
};

} // namespace online
