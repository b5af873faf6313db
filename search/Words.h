#pragma once

#include "platform/Locale.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace search {

/// The text as everything here compares it: the locale's form for searching, and the letters that it leaves as they are
/// though nobody looks for them by themselves ("ß" is "ss", "ø" is "o").
std::string Folded(const platform::Locale& locale, std::string_view text);

/// The words of a folded text: what stands between signs and blanks.
std::vector<std::string> WordsOf(std::string_view folded);

/// How well a word fits a text; the better comes first.
enum class Fit { Beginning, Inside, OneWrong, None };

/// A word that is looked for.
class Word {
public:
    /// Not empty.
    explicit Word(std::string folded);

    /// Beginning: a word of the text (folded) begins so. In writing that has no blanks between words, each sign begins
    /// one. Inside: it stands elsewhere in a word. OneWrong: a word begins so (of four letters: is so) but for one
    /// letter that is wrong, missing, too much, or in its neighbour's place; not for shorter words and for digits.
    Fit In(std::string_view folded) const;
    bool Begins(std::string_view folded) const { return folded.starts_with(text); }

private:
    std::string text;
    std::u32string characters; ///< empty for a word that may not be misspelt
};

/// Whether a word of the text begins at this byte, and whether one ends before it.
bool StartsWord(std::string_view text, std::size_t position);
bool EndsWord(std::string_view text, std::size_t position);

} // namespace search
