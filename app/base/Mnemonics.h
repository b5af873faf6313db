#pragma once

#include "ui/Form.h"

namespace app {

/// Gives every button, check box and label of a box that has no mnemonic a letter or digit of its caption that no other
/// has: the first one of a word where it can be had. For forms whose captions are loaded.
void AssignMnemonics(ui::Form& form);

} // namespace app
