#pragma once

#include "app/base/StringTable.h"
#include "ui/Form.h"

namespace app {

/// A key as menus and tool tips show it, in the user's language; "" for no key.
std::string KeyText(const ui::Key& key, const StringTable& strings);

/// Localises a form: the string numbers that its controls carry become captions, tool tips and headings. What carries
/// no number keeps its design-time text.
void LoadCaptions(ui::Form& form, const StringTable& strings);

} // namespace app
