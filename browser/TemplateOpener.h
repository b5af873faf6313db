#pragma once

#include "app/base/Messages.h"
#include "app/base/StringTable.h"
#include "browser/Launcher.h"
#include "browser/SpreadsheetFolder.h"

#include <functional>
#include <string>

namespace browser {

/// Opens templates for the user: the template itself, or a new document from it.
class TemplateOpener {
public:
    TemplateOpener(Launcher& launcher, SpreadsheetFolder& spreadsheets, app::PatientFiles& files,
                   app::Messages& messages, const app::StringTable& strings)
        : launcher{launcher}, spreadsheets{spreadsheets}, files{files}, messages{messages}, strings{strings}
    {
    }

    /// Called with the path of every template that was opened without a failure message.
    std::function<void(const std::string& path)> Opened;

    /// Called with the path of every new document that was made and opened.
    std::function<void(const std::string& path)> Created;

    /// Called with the path of every template that was opened itself where a new document was asked for: saved, it
    /// would be another one.
    std::function<void(const std::string& path)> OpenedItself;

    void Open(const std::string& path);
    /// The same for a template or document that is recorded as opened before, on whatever share it lies; nobody is
    /// told. False when a failure was shown.
    bool OpenRecorded(const std::string& path);
    /// A spreadsheet is copied into the working directory first, so that the user works on the copy, which is taken
    /// back when it does not open; other templates make a new document by themselves.
    void CreateDocument(const std::string& path);

private:
    Launcher& launcher;
    SpreadsheetFolder& spreadsheets;
    app::PatientFiles& files;
    app::Messages& messages;
    const app::StringTable& strings;

    /// Tells the user when the spreadsheet could not be started.
    Launcher::Outcome Launch(const Launcher::Target& target);
    static bool Succeeded(const Launcher::Outcome& outcome) { return outcome.result == 0 && !outcome.raised; }
};

} // namespace browser
