#include "packs/frmContentPackManager.h"

#include "app/base/Captions.h"
#include "app/base/SupportFiles.h"
#include "packs/StringId.h"
#include "platform/Scoped.h"

#include <algorithm>

namespace packs {
namespace {

// All lengths in twips.
constexpr ui::Size ListSize{8100, 2700};
constexpr ui::Size OneLine{0, 240}; // an install that begins under the dialog must have its place
constexpr int DialogWidth = 11700;  // the list keeps its width beside the longest captions
enum ShownColumn { NameColumn, VersionColumn, DescriptionColumn };

} // namespace

frmContentPackManager::frmContentPackManager(app::Program& program, SolutionPacks& packs)
    : Form{program.toolkit, "frmContentPackManager", Style::Dialog, ui::Tag{449}}, program{program}, packs{packs}
{
    lvPacks.SetColumns({{"218", {}, 2100}, {"640", {}, 1500}, {"641", {}, 4300}});
    lvPacks.SetView(ui::ListView::View::Details);
    lvPacks.SmallImages.SetNamed(0, "packs");
    lvPacks.SetEmptyText(program.Text(str::NoPacks));
    LoadCaptions(*this, program.strings);
    SetIconFile(SupportFile(program, "Icon_16x16"));
    lvPacks.SetModel(this);
    Layout(Column(lblIntroduction, lblInstalled,
                  Row(Fill(Least(lvPacks, ListSize)), Column(btnInstall, btnDelete, btnDeleteAll)),
                  Least(lblInstalling, OneLine), lblDownload, Buttons(btnGetMore, btnHelp, btnClose)),
           DialogWidth);
    lvPacks.Click = [this] { EnableButtons(); };
    lvPacks.KeyDown = [this](const ui::Key& key) {
        if (key != ui::Plain(ui::KeyCode::Delete))
            return false;
        btnDelete_Click();
        return true;
    };
    btnInstall.Click = [this] { this->packs.Install(); };
    btnDelete.Click = [this] { btnDelete_Click(); };
    btnDeleteAll.Click = [this] { btnDeleteAll_Click(); };
    btnGetMore.Click = [this] { this->packs.GetMore(); };
    btnHelp.Click = [this] { this->packs.Help(); };
    btnClose.Click = [this] { Close(); };
    ShowInstalling();
    EnableButtons();
}

void frmContentPackManager::GetTemplatPacks()
{
    const int fill = ++fills;
    auto found = packs.Manager().GetTemplatePacks();
    if (fill != fills) // filled anew in one of the yields
        return;
    const auto selected = static_cast<std::size_t>(std::max(lvPacks.Selected(), 0));
    const std::string name = selected < listed.size() ? listed[selected].name : std::string{};
    listed = std::move(found);
    const auto again = std::ranges::find(listed, name, &SolutionPack::name);
    lvPacks.Refill();
    lvPacks.Select(again != listed.end() ? static_cast<int>(again - listed.begin())
                                         : std::min(static_cast<int>(selected), Rows() - 1));
    EnableButtons();
}

void frmContentPackManager::ShowInstalling()
{
    lblInstalling.SetCaption(packs.IsInstalling() ? program.Text(str::InstallRuns) : "");
}

std::string frmContentPackManager::Text(int row, int column) const
{
    const auto index = static_cast<std::size_t>(row);
    if (index >= listed.size())
        return {};
    const SolutionPack& pack = listed[index];
    return column == NameColumn ? pack.name : column == VersionColumn ? pack.version : pack.description;
}

void frmContentPackManager::EnableButtons()
{
    btnDelete.SetEnabled(lvPacks.Selected() >= 0);
    btnDeleteAll.SetEnabled(Rows() > 0);
    // A button that is disabled under the user's hands would leave the keyboard nowhere.
    if (const ui::Control* active = ActiveControl(); active != nullptr && !active->Enabled())
        lvPacks.SetFocus();
}

void frmContentPackManager::btnDelete_Click()
{
    const int row = lvPacks.Selected();
    if (row < 0)
        return;
    const std::string name = listed[static_cast<std::size_t>(row)].name;
    if (program.messages.Ask(program.Text(str::DeleteQuestion) + name + program.Text(str::DeleteQuestionEnd)))
        Delete({name});
}

void frmContentPackManager::btnDeleteAll_Click()
{
    std::vector<std::string> names;
    names.reserve(listed.size());
    for (const SolutionPack& pack : listed)
        names.push_back(pack.name);
    if (program.messages.Ask(str::DeleteAllQuestion))
        Delete(names);
}

void frmContentPackManager::Delete(const std::vector<std::string>& names)
{
    if (deleting) // pressed in a yield of the first
        return;
    const platform::Scoped now{deleting, true};
    packs.Delete(names);
    GetTemplatPacks();
}

} // namespace packs
