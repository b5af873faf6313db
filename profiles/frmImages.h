#pragma once

#include "app/base/Program.h"
#include "platform/Ticket.h"
#include "profiles/ProfileImages.h"
#include "profiles/ProfileManager.h"
#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/Frame.h"
#include "ui/Image.h"
#include "ui/Label.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace profiles {

/// Lets the user attach a logo, a portrait and a signature to a profile. Nothing is copied or stored before OK.
class frmImages final : public ui::Form {
public:
    /// Loads `profile` into profiles.Current and tells of pictures that are gone.
    frmImages(app::Program& program, ProfileManager& profiles, ProfileImages& images, std::string_view profile,
              std::function<void()> openHelp);

    /// What the dialog shows of one picture, and what is to become of it.
    struct Picture {
        Picture(ui::Form& form, ImageKind kind, int frameTag, int textTag, int setTag);

        ImageKind kind;
        ui::Frame frame;
        ui::Image image;
        ui::Label text;
        ui::Button btnSet;
        ui::Button btnClear;
        std::optional<std::string> change; ///< the chosen file, "" once cleared; nothing while unchanged
        platform::Ticket check;            ///< holds while the chosen file is looked at
    };
    Picture Logo{*this, ImageKind::Logo, 457, 460, 463};
    Picture Portrait{*this, ImageKind::Portrait, 458, 461, 464};
    Picture Signature{*this, ImageKind::Signature, 459, 462, 465};
    ui::Button OKButton{*this, ui::Tag{265}, ui::Role::Default};
    ui::Button CancelButton{*this, ui::Tag{231}, ui::Role::Cancel};
    ui::Button btnHelp{*this, ui::Tag{442}};

private:
    app::Program& program;
    ProfileManager& profiles;
    ProfileImages& images;
    std::string profile;
    bool okWaits{}; ///< OK was pressed while a file was looked at

    std::array<Picture*, ImageCount> Pictures() { return {&Logo, &Portrait, &Signature}; }
    void LoadPictures();
    /// Shows the stored picture; a text for the user when that cannot be done.
    std::string LoadPicture(Picture& picture);
    void btnSet_Click(Picture& picture);
    /// Takes the file on the clipboard for the picture that has the focus; false where none has.
    bool Paste();
    platform::Result<bool> LookAt(const std::string& file) const;
    /// Takes a picture that the user has chosen, once it has been looked at.
    void Take(Picture& picture, const std::string& file);
    /// The chosen file has been looked at.
    void Checked(Picture& picture, const std::string& chosen, bool canBeShown);
    void Refuse(Picture& picture, const std::string& file, std::uint16_t reason);
    void btnClear_Click(Picture& picture);
    void OKButton_Click();
    /// A picture's full path; nothing when the user cancelled.
    std::optional<std::string> ShowOpenDialog();
};

} // namespace profiles
