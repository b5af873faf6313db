#include "profiles/ProfileDialogs.h"

#include "profiles/EnterSenderInformationForm.h"
#include "profiles/frmManageProfiles.h"
#include "profiles/frmOptionsImportExport.h"
#include "profiles/frmProfileInformation.h"

#include <utility>

namespace profiles {

ProfileDialogs::ProfileDialogs(app::Program& program, std::function<void(std::string_view topic)> openHelp)
    : program{program}, openHelp{std::move(openHelp)},
      manager{program.platform.registry, program.registry, program.settings, program.messages, program.strings},
      images{program.platform, program.files, program.settings, program.messages, manager},
      operations{program.platform.registry, program.files, program.platform.clock, program.messages, manager, images},
      transfer{program.platform, program.files, program.registry, program.settings, program.messages,
               program.strings,  images}
{
}

void ProfileDialogs::EditProfile(std::string_view wanted)
{
    EnterSenderInformationForm{program, manager, images, operations, openHelp, wanted}.ShowModal();
}

void ProfileDialogs::ManageProfiles()
{
    frmManageProfiles form{program, manager, operations};
    form.ShowModal();
    if (!form.ToEdit().empty())
        EditProfile(form.ToEdit());
}

void ProfileDialogs::ImportOrExport()
{
    frmOptionsImportExport{program, manager, transfer, [this] { openHelp("ImportExportHTML"); }}.ShowModal();
}

void ProfileDialogs::PromptForFirstProfile()
{
    if (!frmProfileInformation::IsDue(program))
        return;
    frmProfileInformation prompt{program};
    prompt.ShowModal();
    if (prompt.WantsToEdit())
        EditProfile();
}

} // namespace profiles
