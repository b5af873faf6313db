#include "packs/SolutionPacks.h"

#include "packs/StringId.h"
#include "packs/frmContentPackManager.h"
#include "platform/Scoped.h"
#include "platform/Text.h"

#include <utility>

namespace packs {
namespace {

/// The packs' page of the service, below the address at which the program finds it.
constexpr std::string_view Page = "SolutionPacks.asp";

} // namespace

SolutionPacks::SolutionPacks(app::Program& program, Services packServices)
    : program{program}, services{std::move(packServices)},
      manager{program.platform.registry, program.files, program.settings, program.messages,
              program.strings,           program.state, program.toolkit},
      installer{program}
{
    installer.Changed = [this] {
        if (shown != nullptr)
            shown->ShowInstalling();
    };
    installer.Ended = [this] {
        services.libraryChanged();
        if (shown != nullptr)
            shown->GetTemplatPacks();
    };
}

void SolutionPacks::ShowManager()
{
    if (shown != nullptr) // opened in a yield of its own opening
        return;
    frmContentPackManager form{program, *this};
    const platform::Scoped<frmContentPackManager*> open{shown, &form};
    form.GetTemplatPacks();
    form.ShowModal();
}

void SolutionPacks::GetMore()
{
    std::string address = platform::text::Trimmed(program.settings.Text("Content", program.Text(str::ContentUrl)));
    if (address.empty()) {
        address = platform::text::Trimmed(program.settings.Text("Options", "WebHostPath"));
        if (!address.empty())
            address.append(address.ends_with('/') ? "" : "/").append(Page);
    }
    services.openAddress(address);
}

void SolutionPacks::Delete(const std::vector<std::string>& names)
{
    manager.Delete(names, services.releaseLibrary, services.libraryChanged);
}

} // namespace packs
