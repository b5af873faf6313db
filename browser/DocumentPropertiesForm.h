#pragma once

#include "app/base/Program.h"
#include "library/DocumentFacts.h"
#include "platform/Ticket.h"
#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/Frame.h"
#include "ui/Label.h"
#include "ui/TextBox.h"

#include <optional>
#include <string>

namespace browser {

/// What a template says of itself, and what the disk says of it: to be read and copied. The window is there at once;
/// the answers come when the file has been looked at.
class DocumentPropertiesForm final : public ui::Form {
public:
    DocumentPropertiesForm(app::Program& program, library::DocumentFacts& documents, const std::string& path);

    /// What the user closed the window for.
    enum class Wish { Nothing, NewDocument, OpenTemplate };
    Wish Wished() const { return wish; }

    ui::Frame fraSummary{*this, ui::Tag{267}};
    ui::Label lblTitle{*this, ui::Tag{245}};
    ui::TextBox txtTitle{*this};
    ui::Label lblAttribution{*this, ui::Tag{196}};
    ui::TextBox txtAttribution{*this};
    ui::Label lblAuthor{*this, ui::Tag{197}};
    ui::TextBox txtAuthor{*this};
    ui::Label lblKeywords{*this, ui::Tag{200}};
    ui::TextBox txtKeywords{*this};
    ui::Label lblComments{*this, ui::Tag{246}};
    ui::TextBox txtComments{*this, ui::TextBox::Lines::Many};
    ui::Label lblManager{*this, ui::Tag{203}};
    ui::TextBox txtManager{*this};
    ui::Label lblCompany{*this, ui::Tag{198}};
    ui::TextBox txtCompany{*this};
    ui::Label lblCategory{*this, ui::Tag{199}};
    ui::TextBox txtCategory{*this};
    ui::Label lblPages{*this, ui::Tag{681}};
    ui::TextBox txtPages{*this};
    ui::Label lblCreationDate{*this, ui::Tag{202}};
    ui::TextBox txtCreationDate{*this};
    ui::Label lblLastSaved{*this, ui::Tag{680}};
    ui::TextBox txtLastSaved{*this};
    ui::Frame fraFile{*this, ui::Tag{682}};
    ui::Label lblName{*this, ui::Tag{697}};
    ui::TextBox txtName{*this};
    ui::Label lblFolder{*this, ui::Tag{232}};
    ui::TextBox txtFolder{*this};
    ui::Label lblSize{*this, ui::Tag{683}};
    ui::TextBox txtSize{*this};
    ui::Label lblAttributes{*this, ui::Tag{686}};
    ui::TextBox txtAttributes{*this};
    ui::Label lblCreated{*this, ui::Tag{684}};
    ui::TextBox txtCreated{*this};
    ui::Label lblModified{*this, ui::Tag{685}};
    ui::TextBox txtModified{*this};
    ui::Label lblCreateNew{*this, ui::Tag{247}};
    ui::Button cmdDocument{*this, ui::Tag{248}};
    ui::Button cmdTemplate{*this, ui::Tag{249}};
    ui::Button cmdCopy{*this, ui::Tag{692}};
    ui::Button cmdClose{*this, ui::Tag{499}, ui::Role::Cancel};

private:
    app::Program& program;
    platform::Ticket reading;
    Wish wish{};

    void ShowAnswer(const platform::Result<library::DescribedFile>& described);
    void ShowFacts(const documents::Facts& facts);
    void ShowFile(const platform::FileEntry& entry);
    std::string DateText(const std::optional<documents::Date>& date) const;
    std::string AttributesText(std::uint32_t attributes) const;
    void cmdCopy_Click();
};

} // namespace browser
