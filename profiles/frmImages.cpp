#include "profiles/frmImages.h"

#include "app/base/Captions.h"
#include "app/base/Mnemonics.h"
#include "platform/Path.h"
#include "profiles/FirstFolder.h"
#include "profiles/StringId.h"

#include <algorithm>
#include <utility>

namespace profiles {
namespace {

constexpr int Width = 7500;                ///< twips
constexpr ui::Size PictureBox{2100, 1500}; ///< twips
constexpr std::string_view PicturesSection = "Options";
constexpr std::string_view PicturesKey = "Pictures Path";

ui::Cell Place(frmImages::Picture& picture)
{
    // The Clear buttons are alike and stand below one another, whatever their neighbours' captions need.
    ui::Cell content =
        ui::Row(picture.image, ui::Fill(ui::Column(ui::Fill(ui::Cell{picture.text}),
                                                   ui::Row(ui::Fill(ui::Cell{}), picture.btnSet, picture.btnClear))));
    content.gap = 2 * ui::LayoutGap;
    return ui::Framed(picture.frame, std::move(content));
}

std::uint16_t MissingMessage(ImageKind kind)
{
    switch (kind) {
    case ImageKind::Logo:
        return str::LogoMissing;
    case ImageKind::Portrait:
        return str::PortraitMissing;
    case ImageKind::Signature:
        break;
    }
    return str::SignatureMissing;
}

} // namespace

frmImages::Picture::Picture(ui::Form& form, ImageKind kind, int frameTag, int textTag, int setTag)
    : kind{kind}, frame{form, ui::Tag{frameTag}}, image{form}, text{form, ui::Tag{textTag}},
      btnSet{form, ui::Tag{setTag}}, btnClear{form, ui::Tag{466}}
{
    image.Box = PictureBox;
    image.ToolTipText = "720";
}

frmImages::frmImages(app::Program& program, ProfileManager& profiles, ProfileImages& images,
                     std::string_view profileName, std::function<void()> openHelp)
    : Form{program.toolkit, "frmImages", Style::Dialog, ui::Tag{456}}, program{program}, profiles{profiles},
      images{images}, profile{profiles.Meant(profileName)}
{
    app::LoadCaptions(*this, program.strings);
    app::AssignMnemonics(*this);
    Layout(Column(Place(Logo), Place(Portrait), Place(Signature), ui::Buttons(OKButton, CancelButton, btnHelp)), Width);
    for (Picture* picture : Pictures()) {
        picture->image.Name = picture->frame.Caption();
        picture->btnSet.Click = [this, picture] { btnSet_Click(*picture); };
        picture->btnClear.Click = [this, picture] { btnClear_Click(*picture); };
        picture->image.Dropped = [this, picture](const std::string& file) { Take(*picture, file); };
    }
    Logo.btnSet.SetFocus();
    KeyDown = [this](const ui::Key& key) { return key == ui::Ctrl('V') && Paste(); };
    OKButton.Click = [this] { OKButton_Click(); };
    CancelButton.Click = [this] { Close(); };
    btnHelp.Click = std::move(openHelp);

    const app::PatientFiles::Operation whole{program.files};
    (void)images.MakeFolders(profile);
    profiles.LoadProfile(profile);
    LoadPictures();
}

void frmImages::LoadPictures()
{
    std::string told;
    for (Picture* picture : Pictures())
        if (const std::string text = LoadPicture(*picture); !text.empty())
            told += (told.empty() ? "" : "\r\n\r\n") + text;
    if (!told.empty())
        program.messages.Inform(told);
}

std::string frmImages::LoadPicture(Picture& picture)
{
    const std::string& stored = profiles.Current[picture.kind];
    picture.btnClear.SetEnabled(!stored.empty());
    if (stored.empty())
        return {};
    const auto there = images.IsThere(stored);
    if (there && *there) {
        picture.image.SetFile(stored);
        return {};
    }
    return program.Text(there ? MissingMessage(picture.kind) : FileMessage(there.error())) + "\r\n" + stored;
}

std::optional<std::string> frmImages::ShowOpenDialog()
{
    auto chosen =
        program.toolkit.OpenFile({program.Text(str::SelectImageTitle), program.Text(str::ImageFilter),
                                  FirstFolder(program.platform, program.settings.Text(PicturesSection, PicturesKey))});
    // Where the next dialog starts is not worth a message when it cannot be stored.
    if (chosen)
        (void)program.settings.Save(PicturesSection, PicturesKey, platform::path::Parent(*chosen));
    return chosen;
}

void frmImages::btnSet_Click(Picture& picture)
{
    if (const auto chosen = ShowOpenDialog())
        Take(picture, *chosen);
}

bool frmImages::Paste()
{
    const auto has = [](const Picture* picture) {
        return picture->image.HasFocus() || picture->btnSet.HasFocus() || picture->btnClear.HasFocus();
    };
    const auto pictureBoxes = Pictures();
    const auto picture = std::ranges::find_if(pictureBoxes, has);
    if (picture == pictureBoxes.end())
        return false;
    if (const auto file = program.toolkit.PastedFile())
        Take(**picture, *file);
    else
        program.messages.Inform(program.Text(str::NothingToPaste));
    return true;
}

platform::Result<bool> frmImages::LookAt(const std::string& file) const
{
    const app::PatientFiles::Operation whole{program.files};
    return images.IsThere(file);
}

void frmImages::Take(Picture& picture, const std::string& file)
{
    okWaits = false; // for what was chosen then
    const auto there = LookAt(file);
    if (!there || !*there) {
        Refuse(picture, file, there ? str::PictureNotFound : FileMessage(there.error()));
        return;
    }
    // A picture of many megapixels takes seconds.
    picture.check = program.platform.jobs.Start(
        [&pictures = program.pictures, file](const platform::Cancelled&) -> platform::Result<bool> {
            return pictures.CanShow(file);
        },
        [this, &picture, file](platform::Result<bool> can) { Checked(picture, file, can.value_or(false)); });
}

void frmImages::Checked(Picture& picture, const std::string& chosen, bool canBeShown)
{
    picture.check.Drop();
    const app::PatientFiles::Operation whole{program.files};
    if (!canBeShown || images.EndingOf(chosen).empty()) {
        okWaits = false;
        Refuse(picture, chosen, canBeShown ? str::PictureKind : str::NoPicture);
        return;
    }
    picture.change = chosen;
    picture.image.SetFile(chosen);
    picture.btnClear.SetEnabled(true);
    if (okWaits)
        OKButton_Click();
}

void frmImages::Refuse(Picture& picture, const std::string& file, std::uint16_t reason)
{
    program.messages.Inform(program.Text(reason) + "\r\n" + file);
    picture.btnSet.SetFocus();
}

void frmImages::btnClear_Click(Picture& picture)
{
    okWaits = false;
    picture.check.Drop();
    picture.change = "";
    picture.image.SetFile("");
    picture.btnSet.SetFocus(); // the button that has it takes no keys any more
    picture.btnClear.SetEnabled(false);
}

void frmImages::OKButton_Click()
{
    okWaits = std::ranges::any_of(Pictures(), [](const Picture* picture) { return static_cast<bool>(picture->check); });
    if (okWaits)
        return;
    ProfileImages::Changes changes;
    for (Picture* picture : Pictures())
        changes[static_cast<std::size_t>(picture->kind)] = picture->change;
    if (images.Apply(profile, changes))
        Close();
    else
        OKButton.SetFocus();
}

} // namespace profiles
