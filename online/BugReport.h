#pragma once

#include "app/base/Program.h"
#include "platform/Mail.h"

#include <string>
#include <utility>
#include <vector>

namespace online {

/// One line of the report: what is told, and its value.
using Fact = std::pair<std::string, std::string>;

/// The page that goes with a bug report; its lines end with CR LF.
std::string BugReportPage(const std::vector<Fact>& facts);

/// Composes a mail to the makers in the user's own mail client, with a page of facts attached. The user sees it before
/// it goes. Owned by the main window.
class BugReport {
public:
    explicit BugReport(app::Program& program) : program{program} {}
    BugReport(const BugReport&) = delete;
    BugReport& operator=(const BugReport&) = delete;
    ~BugReport();

    /// `counts`: what the main window knows of the library and of the user's lists.
    void ReportABugViaOutlook(const std::vector<Fact>& counts);
    /// Until the client's window is closed; there is no second report meanwhile.
    bool UnderWay() const { return static_cast<bool>(composing); }
    /// Sets the client's editor back to what it was before a report, also one that another process began and did not
    /// live to end.
    void RestoreEditorPreference();

private:
    struct MailClient {
        std::string name, version;
    };

    app::Program& program;
    platform::Ticket composing;

    MailClient DefaultClient() const;
    std::vector<Fact> Facts(const MailClient& client) const;
    /// The page's path: in the installation folder, or, where that cannot be written, the temporary one.
    platform::Result<std::string> SavePage(const std::string& page) const;
    void NewMail(const MailClient& client, const std::string& page);
    void SetEditorPreference();
    void Composed(platform::MailOutcome outcome, const std::string& page);
};

} // namespace online
