#include "online/Banner.h"

#include "online/BannerPage.h"
#include "online/Files.h"
#include "online/StringId.h"
#include "platform/FileName.h"
#include "platform/Path.h"
#include "platform/Text.h"
#include "platform/WebAddress.h"

#include <algorithm>
#include <array>
#include <utility>

namespace online {
namespace {

using platform::Result;

/// What the element "BannerStatus" of a live banner page says.
constexpr std::string_view LiveStatus = "OK";
constexpr std::size_t LongestStatus = 16;
constexpr ui::Size PaneSize{7560, 960};                          ///< a picture of 500 x 60 pixels, and its edge; twips
constexpr std::size_t LongestName = 80;                          ///< of the link, characters
constexpr std::size_t LargestPicture = std::size_t{1024} * 1024; ///< bytes
constexpr std::string_view Makers = "http://www.tessaly.example/"; ///< unless the settings name others
constexpr std::array<std::string_view, 5> PictureEndings{".gif", ".jpg", ".jpeg", ".png", ".bmp"};

/// The picture's ending, which must be one that is only ever a picture.
std::string EndingOf(std::string_view address)
{
    const std::string_view name = address.substr(0, address.find('?'));
    const auto dot = name.rfind('.');
    const std::string ending = dot == std::string_view::npos ? std::string{} : platform::text::Folded(name.substr(dot));
    return std::ranges::find(PictureEndings, ending) == PictureEndings.end() ? std::string{} : ending;
}

/// The file that a page of this disk means by a picture's source: one below the page's own folder, or, in a page of
/// ours, by its full path. "" for any other: nothing of a page makes this program look at another place.
std::string PictureFile(const std::string& page, const std::string& source)
{
    if (EndingOf(source).empty())
        return {};
    const std::string folder = platform::path::Parent(page);
    std::string file = platform::path::IsAbsolute(source) ? source : platform::path::Join(folder, source);
    file = platform::path::Normalized(file);
    const std::string start = platform::path::Normalized(folder) + "\\";
    if (!platform::text::EqualIgnoringCase(std::string_view{file}.substr(0, start.size()), start))
        return {};
    for (const std::string& name : platform::text::Split(std::string_view{file}.substr(start.size()), '\\'))
        if (platform::file_name::HasForbiddenCharacter(name) || platform::file_name::HasControlCharacter(name) ||
            platform::file_name::IsReserved(name))
            return {};
    return file;
}

} // namespace

Banner::Banner(app::Program& program, ui::Image& pane) : wbHiddenBanner{program.platform}, program{program}, pane{pane}
{
    wbHiddenBanner.DocumentComplete = [this] { GetBannerConnectionState(); };
}

std::string Banner::LocalPage() const
{
    return program.state.TemplatesPath + "Banner1.htm";
}

std::string Banner::LinkOr(const std::string& wanted) const
{
    return platform::web_address::IsWebAddress(wanted) ? wanted
                                                       : program.settings.Text("Options", "BannerLink", Makers);
}

void Banner::LoadBrowserBanner()
{
    Stop(); // what the web had before is not asked for any more
    Navigate(LocalPage());
    const std::string address = program.settings.Text("Options", "BannerURLPath");
    if (platform::web_address::IsWebAddress(address))
        wbHiddenBanner.Navigate(address);
}

void Banner::Stop()
{
    wbHiddenBanner.Stop();
    fetching.Drop();
    navigating.Drop();
}

void Banner::SwitchOff()
{
    Stop();
    Navigate(std::string{HiddenPage::Blank});
}

void Banner::GetBannerConnectionState()
{
    if (wbHiddenBanner.LocationURL().empty())
        return;
    const PageText& page = wbHiddenBanner.Document();
    const std::string status = platform::text::Trimmed(page.Value("BannerStatus", LongestStatus));
    if (platform::text::EqualIgnoringCase(status, LiveStatus)) {
        FetchWebPicture();
        return;
    }
    const std::string title = platform::text::Folded(page.Title());
    if (title.contains("not found") || title.contains("cannot")) {
        fetching.Drop();
        Navigate(std::string{HiddenPage::Blank});
        Navigate(LocalPage());
    }
}

void Banner::FetchWebPicture()
{
    const auto address =
        platform::web_address::Resolved(wbHiddenBanner.LocationURL(), wbHiddenBanner.Document().FirstPicture().source);
    if (!address || EndingOf(*address).empty())
        return;
    const platform::Platform& system = program.platform;
    fetching = program.platform.jobs.Start(
        [&web = system.web, &shell = system.shell, &files = system.files,
         address = *address](const platform::Cancelled& cancelled) -> Result<std::string> {
            const auto picture = platform::Fetch(web, address, {HiddenPage::Patience, LargestPicture}, cancelled);
            // One that fills the room has been cut.
            if (!picture || picture->status != platform::WebReply::Good || picture->body.size() >= LargestPicture)
                return std::unexpected{picture ? platform::error::FileNotFound : picture.error()};
            auto folder = GetTempFolderPath(shell, files);
            if (!folder)
                return folder;
            std::string file = platform::path::Join(*folder, "banner" + EndingOf(address));
            if (const auto saved = SaveFile(files, file, picture->body); !saved)
                return std::unexpected{saved.error()};
            return file;
        },
        [this](const Result<std::string>& file) {
            const platform::Ticket over = std::move(fetching);
            if (file)
                ShowHttpBanner(*file);
        });
}

void Banner::ShowHttpBanner(const std::string& imagePath)
{
    platform::FileSystem& files = program.platform.files;
    const auto folder = GetTempFolderPath(program.platform.shell, files);
    if (!folder)
        return;
    const std::string page = platform::path::Join(*folder, "mpct_bannerpreview.htm");
    const PageText::Picture& picture = wbHiddenBanner.Document().FirstPicture();
    std::string wanted = picture.link;
    if (!wanted.empty())
        wanted = platform::web_address::Resolved(wbHiddenBanner.LocationURL(), wanted).value_or(std::string{});
    if (SaveFile(files, page, BannerPage(imagePath, LinkOr(wanted))))
        Navigate(page, picture.text);
}

void Banner::Navigate(std::string page, std::string name)
{
    navigating.Drop();
    if (page == HiddenPage::Blank) {
        Show({});
        return;
    }
    navigating = program.platform.jobs.Start(
        [&files = program.platform.files, &locale = program.platform.locale,
         page = std::move(page)](const platform::Cancelled&) -> Result<Shown> {
            const PageText read{PageFromBytes(ReadHTML(files, page), locale)};
            std::string picture = PictureFile(page, read.FirstPicture().source);
            const auto entry = files.Stat(picture);
            if (picture.empty() || !entry || entry->IsFolder())
                return Shown{};
            return Shown{std::move(picture), read.FirstPicture().link, read.FirstPicture().text};
        },
        [this, name = std::move(name)](Result<Shown> shown) {
            const platform::Ticket over = std::move(navigating);
            if (shown && shown->text.empty())
                shown->text = name;
            Show(std::move(shown).value_or(Shown{}));
        });
}

void Banner::ResizeHTTPimage()
{
    pane.Box = HasPicture() ? PaneSize : ui::Size{};
    if (Changed)
        Changed();
}

void Banner::Show(Shown shown)
{
    const bool changes = HasPicture() || !shown.picture.empty();
    link = shown.picture.empty() ? std::string{} : LinkOr(shown.link);
    const std::string name{platform::text::Left(shown.text, LongestName)};
    pane.SetCaption(name.empty() ? program.Text(str::BannerName) : name);
    pane.SetToolTip(link);
    pane.SetFile(std::move(shown.picture));
    if (changes)
        ResizeHTTPimage();
}

} // namespace online
