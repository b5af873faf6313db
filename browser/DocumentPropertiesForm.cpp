#include "browser/DocumentPropertiesForm.h"

#include "app/base/Captions.h"
#include "app/base/StringId.h"
#include "browser/TemplateRow.h"
#include "documents/Dates.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <utility>

namespace browser {
namespace {

constexpr ui::Size BoxSize{5700, 0}; ///< twips; as high as its text

constexpr std::pair<std::uint32_t, std::uint16_t> attributeTexts[] = {
    {platform::attribute::ReadOnly, 687},
    {platform::attribute::Hidden, 688},
    {platform::attribute::System, 689},
    {platform::attribute::Archive, 690},
};

} // namespace

DocumentPropertiesForm::DocumentPropertiesForm(app::Program& program, library::DocumentFacts& documents,
                                               const std::string& path)
    : Form{program.toolkit, "DocumentPropertiesForm", Style::Dialog, ui::Tag{244}}, program{program}
{
    LoadCaptions(*this, program.strings);
    for (ui::Control* control : Controls())
        if (auto* box = dynamic_cast<ui::TextBox*>(control))
            box->SetReadOnly(true);
    txtName.SetText(std::string{platform::path::Name(path)});
    txtFolder.SetText(platform::path::Parent(path));

    const auto box = [](ui::TextBox& text) { return Fill(Least(text, BoxSize)); };
    Layout(Column(Framed(fraSummary, Grid(Row(lblTitle, box(txtTitle)), Row(lblAttribution, box(txtAttribution)),
                                          Row(lblAuthor, box(txtAuthor)), Row(lblManager, box(txtManager)),
                                          Row(lblCompany, box(txtCompany)), Row(lblCategory, box(txtCategory)),
                                          Row(lblKeywords, box(txtKeywords)), Row(lblComments, box(txtComments)),
                                          Row(lblCreationDate, box(txtCreationDate)),
                                          Row(lblLastSaved, box(txtLastSaved)), Row(lblPages, box(txtPages)))),
                  Framed(fraFile, Grid(Row(lblName, box(txtName)), Row(lblFolder, box(txtFolder)),
                                       Row(lblSize, box(txtSize)), Row(lblCreated, box(txtCreated)),
                                       Row(lblModified, box(txtModified)), Row(lblAttributes, box(txtAttributes)))),
                  Row(lblCreateNew, cmdDocument, cmdTemplate, Fill(Buttons(cmdCopy, cmdClose)))));

    const auto closeFor = [this](Wish wished) {
        return [this, wished] {
            wish = wished;
            Close();
        };
    };
    cmdDocument.Click = closeFor(Wish::NewDocument);
    cmdTemplate.Click = closeFor(Wish::OpenTemplate);
    cmdCopy.Click = [this] { cmdCopy_Click(); };
    cmdClose.Click = [this] { Close(); };
    reading = documents.Ask(path, [this](const auto& described) { ShowAnswer(described); });
}

void DocumentPropertiesForm::ShowAnswer(const platform::Result<library::DescribedFile>& described)
{
    if (!described) {
        program.messages.Inform(program.Text(app::str::NoProperties) + "\r\n" +
                                program.Text(app::str::ConfirmTemplateExists));
        Close();
        return;
    }
    ShowFacts(described->facts);
    ShowFile(described->entry);
}

void DocumentPropertiesForm::ShowFacts(const documents::Facts& facts)
{
    txtTitle.SetText(facts.title);
    txtAttribution.SetText(facts.subject);
    txtAuthor.SetText(facts.author);
    txtManager.SetText(facts.manager);
    txtCompany.SetText(facts.company);
    txtCategory.SetText(facts.category);
    txtKeywords.SetText(facts.keywords);
    txtComments.SetText(platform::text::Replaced(facts.comments, "\n", "\r\n"));
    txtCreationDate.SetText(DateText(facts.created));
    txtLastSaved.SetText(DateText(facts.saved));
    txtPages.SetText(facts.pages > 0 ? std::to_string(facts.pages) : std::string{});
}

void DocumentPropertiesForm::ShowFile(const platform::FileEntry& entry)
{
    const auto moment = [this](platform::FileTime time) {
        return ModifiedText(program.platform.clock, program.platform.locale, time);
    };
    txtSize.SetText(SizeText(entry.size) + " (" + std::to_string(entry.size) + program.Text(app::str::Bytes) + ")");
    txtCreated.SetText(moment(entry.created));
    txtModified.SetText(moment(entry.modified));
    txtAttributes.SetText(AttributesText(entry.attributes));
}

std::string DocumentPropertiesForm::DateText(const std::optional<documents::Date>& date) const
{
    if (!date)
        return {};
    platform::Locale& locale = program.platform.locale;
    const platform::LocalTime time =
        date->isLocal ? documents::OnCalendar(date->time) : program.platform.clock.ToLocal(date->time);
    return locale.ShortDate(time) + " " + locale.MediumTime(time);
}

std::string DocumentPropertiesForm::AttributesText(std::uint32_t attributes) const
{
    std::string text;
    for (const auto& [bit, id] : attributeTexts)
        if ((attributes & bit) != 0)
            text += (text.empty() ? "" : ", ") + program.Text(id);
    return text;
}

/// Each line a caption and what stands beside it.
void DocumentPropertiesForm::cmdCopy_Click()
{
    std::string lines;
    const ui::Control* before = nullptr;
    for (const ui::Control* control : Controls()) {
        if (const auto* box = dynamic_cast<const ui::TextBox*>(control); box != nullptr && !box->Text().empty())
            lines += platform::text::Replaced(before->Caption(), "&", "") + "\t" + box->Text() + "\r\n";
        before = control;
    }
    program.toolkit.CopyText(lines);
}

} // namespace browser
