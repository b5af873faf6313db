#pragma once

#include "ui/Form.h"

#include <string>

namespace app {

/// Gives every button, check box and label of a box that has no mnemonic a letter or digit of its caption that no other
/// has: the first one of a word where it can be had. For forms whose captions are loaded.
void AssignMnemonics(ui::Form& form);

/// The caption where it is no control's: without the mark of its mnemonic, and without the letter in brackets that
/// stands for one in captions that have no Latin letters.
std::string WithoutMnemonic(std::string caption);

} // namespace app
