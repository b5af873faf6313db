#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace profiles {

/// Gives typed telephone numbers their shape. One formatter serves all the phone fields of a dialog: after it has
/// formatted one field it leaves the others as typed, until one of them is emptied or about to be overtyped.
class PhoneFormatter {
public:
    /// `decimalSeparator` is the user's: a number with one is still a number.
    explicit PhoneFormatter(char decimalSeparator) : decimalSeparator{decimalSeparator} {}

    /// The field's text became this.
    void TextChanged(std::string_view text);
    /// A key goes down or the mouse button up in a field with this selection.
    void BeforeOvertyping(std::string_view selected, std::string_view text);

    struct Outcome {
        bool refused{};                  ///< no telephone number: the field is emptied and keeps the focus
        std::optional<std::string> text; ///< what the field's text becomes
    };
    /// The field is left with this text.
    Outcome Leave(std::string_view text);

    /// The number in its shape; nothing for a text that has none. Length, head and tail are those of the text as typed;
    /// whether it is numeric goes by the text without the blanks around it. A text is numeric by
    /// platform::text::IsNumeric: digits, blanks around, one sign and one decimal separator; no digit grouping, no
    /// exponents.
    std::optional<std::string> Format(std::string_view typed) const;

private:
    char decimalSeparator;
    bool formatNext{true};
};

} // namespace profiles
