#include "browser/frmOptionsHistory.h"

#include "app/base/Captions.h"
#include "app/base/StringId.h"
#include "platform/Text.h"

namespace browser {
namespace {

constexpr int Width = 6000; ///< twips
constexpr int TooMany = RecentDocuments::MostMonths + 1;

} // namespace

frmOptionsHistory::frmOptionsHistory(app::Program& program, RecentDocuments& documents, std::function<void()> showHelp)
    : Form{program.toolkit, "frmOptionsHistory", Style::Dialog, ui::Tag{479}}, program{program}, documents{documents}
{
    LoadCaptions(*this, program.strings);
    ShowPeriodLabel();
    txtNoOfMonthsForHistoryList.SetMaxLength(5);
    txtNoOfMonthsForHistoryList.SetText(std::to_string(documents.TimePeriod()));
    txtNoOfMonthsForHistoryList.SelectAll(); // what is typed first takes its place
    Layout(Column(lblExplanation, Row(lblBefore, Joined(txtNoOfMonthsForHistoryList, UpDownMonths), lblAfter),
                  Buttons(cmdOK, cmdCancel, cmdHelp)),
           Width);
    cmdOK.Click = [this] { cmdOK_Click(); };
    cmdCancel.Click = [this] { Close(); };
    cmdHelp.Click = std::move(showHelp);
}

void frmOptionsHistory::ShowPeriodLabel()
{
    // One text, with a gap of blanks in which the number stands.
    const std::string text = program.Text(app::str::HistoryPeriod);
    const auto gap = text.find("  ");
    lblBefore.SetCaption(text.substr(0, gap));
    lblAfter.SetCaption(gap == std::string::npos ? std::string{} : platform::text::Trimmed(text.substr(gap)));
}

void frmOptionsHistory::cmdOK_Click()
{
    const std::string typed = platform::text::Trimmed(txtNoOfMonthsForHistoryList.Text());
    const bool isWhole = !typed.empty() && typed.find_first_not_of("0123456789") == std::string::npos;
    const int number = isWhole ? platform::text::ToInt(typed, 0, 0, TooMany) : 0;
    // Taken as no months at all, a slip of the finger would forget every document.
    if (number < RecentDocuments::LeastMonths || number > RecentDocuments::MostMonths) {
        program.messages.Inform(app::str::InvalidNumber);
        txtNoOfMonthsForHistoryList.SetFocus();
        txtNoOfMonthsForHistoryList.SelectAll();
        return;
    }
    if (documents.SaveTimePeriod(number))
        Close();
}

} // namespace browser
