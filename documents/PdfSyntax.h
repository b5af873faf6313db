#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The notation of PDF's objects, read as text: nothing is built of them, so nothing can grow or nest.
namespace documents::pdf {

struct Token {
    enum class Kind { End, Word, Name, Text, DictionaryOpen, DictionaryClose, ArrayOpen, ArrayClose };
    Kind kind{Kind::End};
    std::string_view text; ///< as it stands, with its delimiters
};

/// Splits a text into its tokens. Numbers are words.
class Lexer {
public:
    explicit Lexer(std::string_view source, std::size_t from = 0) : text{source}, next{from} {}
    Token Next();
    std::size_t Position() const { return next; }
    /// Passes over what follows: one token, or all of a dictionary or array; of a reference all three words.
    std::string_view Value();

private:
    std::string_view text;
    std::size_t next;

    void SkipBlanks();
    std::size_t EndOfText() const;
};

/// The value of a key in a dictionary that stands at the start of a text; "" when it has none.
std::string_view Lookup(std::string_view dictionary, std::string_view key);

/// A whole number that is not negative.
std::optional<std::uint64_t> Number(std::string_view value);

/// The number of the object that "12 0 R" refers to.
std::optional<std::uint64_t> Reference(std::string_view value);

/// The bytes that "(text)" or "<68657821>" stands for.
std::string StringBytes(std::string_view value);

/// The same as the text that those bytes are: UTF-16, UTF-8, or PDF's own encoding.
std::string StringText(std::string_view value);

} // namespace documents::pdf
