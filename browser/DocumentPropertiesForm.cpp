#include "browser/DocumentPropertiesForm.h"

#include "app/base/Captions.h"
#include "app/base/Mnemonics.h"
#include "app/base/StringId.h"
#include "browser/TemplateRow.h"
#include "documents/Dates.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <utility>

namespace browser {
namespace {

// Twips; each is as high as its text.
constexpr ui::Size LabelSize{1350, 0}, BoxSize{6300, 0}, HalfSize{2100, 0};

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

    // Two grids a frame: of one box a row, and of two. Their first columns are about as wide as each other.
    const auto label = [](ui::Label& text) { return Least(text, LabelSize); };
    const auto one = [&](ui::Label& text, ui::TextBox& box) { return Row(label(text), Fill(Least(box, BoxSize))); };
    const auto two = [&](ui::Label& text, ui::TextBox& box, ui::Label& text2, ui::TextBox& box2) {
        return Row(label(text), Fill(Least(box, HalfSize)), ui::Cell{text2}, Fill(Least(box2, HalfSize)));
    };
    Layout(Column(Framed(fraSummary, Column(Grid(one(lblTitle, txtTitle), one(lblAttribution, txtAttribution),
                                                 one(lblAuthor, txtAuthor), one(lblKeywords, txtKeywords),
                                                 one(lblComments, txtComments)),
                                            Grid(two(lblManager, txtManager, lblCompany, txtCompany),
                                                 two(lblCategory, txtCategory, lblPages, txtPages),
                                                 two(lblCreationDate, txtCreationDate, lblLastSaved, txtLastSaved)))),
                  Framed(fraFile, Column(Grid(one(lblName, txtName), one(lblFolder, txtFolder)),
                                         Grid(two(lblSize, txtSize, lblAttributes, txtAttributes),
                                              two(lblCreated, txtCreated, lblModified, txtModified)))),
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
            lines += app::WithoutMnemonic(before->Caption()) + "\t" + box->Text() + "\r\n";
        before = control;
    }
    if (!program.toolkit.CopyText(lines))
        program.messages.Inform(app::str::TextCopyFailed);
}

} // namespace browser
