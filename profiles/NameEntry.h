#pragma once

#include "app/base/Program.h"
#include "profiles/ProfileManager.h"
#include "ui/TextBox.h"

namespace profiles {

/// Whether a profile can have the name in the box. If not, the user is told why, and is back in the box.
bool AcceptsName(app::Program& program, ProfileManager& profiles, ui::TextBox& box);

} // namespace profiles
