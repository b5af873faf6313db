#include "app/shell/frmAbout.h"

#include "app/base/Captions.h"
#include "app/base/StringId.h"
#include "platform/Path.h"

#include <utility>

namespace app {
namespace {

// All lengths in twips.
constexpr ui::Size ListSize{7200, 1500};
constexpr ui::Size LinksSize{5400, 900};
constexpr int NameWidth = 3300, VersionWidth = 3450;

constexpr std::string_view ConverterClass = "HKEY_CLASSES_ROOT\\CDIntf.CDIntf\\CLSID";
constexpr std::string_view Classes = "HKEY_CLASSES_ROOT\\CLSID\\";

} // namespace

frmAbout::frmAbout(Program& program, HelpDocuments& help, const VersionReader& versionOf)
    : Form{program.toolkit, "frmAbout", Style::Dialog, ui::Tag{443}}, program{program}, help{help},
      links{help.WebLinks()}
{
    lblProduct.Heading = true;
    lblEdition.PlainText = true;
    lblEdition.SetCaption(Edition());
    lblEdition.SetVisible(!lblEdition.Caption().empty());
    lvComponents.SetColumns({{"693", {}, NameWidth}, {"694", {}, VersionWidth}});
    lvComponents.SetView(ui::ListView::View::Details);
    lstLinks.SetItems(links);
    if (!links.empty())
        lstLinks.Select(0);
    for (ui::Control* control : std::initializer_list<ui::Control*>{&lblLinks, &lstLinks, &cmdVisit})
        control->SetVisible(!links.empty());
    LoadCaptions(*this, program.strings);
    lvComponents.SetModel(this);
    lvComponents.Name = fraDetails.Caption();
    Layout(Column(lblProduct, lblVersion, lblEdition, Framed(fraDetails, Column(Least(lvComponents, ListSize))),
                  lblLinks, Row(Fill(Least(lstLinks, LinksSize)), cmdVisit), Buttons(cmdOK, cmdCopy, cmdHelp)));
    lstLinks.DblClick = [this] { cmdVisit_Click(); };
    cmdVisit.Click = [this] { cmdVisit_Click(); };
    cmdOK.Click = [this] { Close(); };
    cmdCopy.Click = [this] { cmdCopy_Click(); };
    cmdHelp.Click = [this] { this->help.Open("About HTML"); };
    LookAt(Candidates(), versionOf);
}

/// What the setup has put down: edition, build, product identifier.
std::string frmAbout::Edition() const
{
    std::string line;
    for (const char* key : {"Edition", "Build", "ProductID"})
        if (const std::string value = program.settings.Text("Edition", key); !value.empty())
            line += (line.empty() ? "" : ", ") + value;
    return line;
}

std::vector<frmAbout::Component> frmAbout::Candidates() const
{
    std::vector<Component> found;
    const auto add = [&](std::string name, std::string file) {
        if (platform::path::IsAbsolute(file))
            found.push_back({std::move(name), std::move(file), {}});
    };
    const auto in = [&](platform::KnownFolder folder, std::string_view name) {
        const auto path = program.platform.shell.FolderPath(folder);
        return path ? platform::path::Join(*path, name) : std::string{};
    };
    for (const char* own : {"TSBrowser.exe", "TS_RES.dll"})
        add(own, in(platform::KnownFolder::ProgramFolder, own));
    add("comctl32.dll", in(platform::KnownFolder::Windows, "System32\\comctl32.dll"));
    const auto registered = [&](std::string_view key) {
        return browser::ProgramOf(program.platform.shell.Expanded(program.registry.QueryTextByPath(key, "")));
    };
    add(program.Text(str::Spreadsheet), registered(browser::Launcher::SpreadsheetAppPath));
    if (const std::string id = program.registry.QueryTextByPath(ConverterClass, ""); !id.empty())
        add(program.Text(str::PdfConverter), registered(std::string{Classes} + id + "\\InprocServer32"));
    return found;
}

/// The files may lie on a drive that takes its time.
void frmAbout::LookAt(std::vector<Component> candidates, const VersionReader& versionOf)
{
    looking = program.platform.jobs.Start(
        [candidates = std::move(candidates), versionOf,
         &files = program.platform.files](const platform::Cancelled&) -> platform::Result<std::vector<Component>> {
            std::vector<Component> there;
            for (Component component : candidates) {
                if (!files.Stat(component.file))
                    continue;
                component.version = versionOf(files, component.file);
                there.push_back(std::move(component));
            }
            return there;
        },
        [this](platform::Result<std::vector<Component>> there) {
            if (there)
                components = *std::move(there);
            lvComponents.Refill();
        });
}

std::string frmAbout::Text(int row, int column) const
{
    const Component& component = components.at(static_cast<std::size_t>(row));
    if (column == 0)
        return component.name;
    return component.version.empty() ? program.Text(str::NoVersionInfo) : component.version;
}

void frmAbout::cmdVisit_Click()
{
    if (const int selected = lstLinks.Selected(); selected >= 0)
        help.OpenLink(links.at(static_cast<std::size_t>(selected)));
}

void frmAbout::cmdCopy_Click()
{
    std::string lines = lblProduct.Caption() + "\r\n" + lblVersion.Caption() + "\r\n";
    if (!lblEdition.Caption().empty())
        lines += lblEdition.Caption() + "\r\n";
    for (int row = 0; row < Rows(); ++row)
        lines += Text(row, 0) + "\t" + Text(row, 1) + "\r\n";
    if (!program.toolkit.CopyText(lines))
        program.messages.Inform(str::TextCopyFailed);
}

} // namespace app
