#pragma once

#include "app/base/StringTable.h"
#include "ui/Form.h"

namespace app {

/// Localises a form: the string numbers that its controls carry become captions, tool tips and headings. What carries
/// no number keeps its design-time text.
void LoadCaptions(ui::Form& form, const StringTable& strings);

} // namespace app
