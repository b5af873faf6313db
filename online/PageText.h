#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace online {

/// A page read as data: its title, the values of its named elements and its first picture. Nothing in it is run or
/// followed. Any text gives a result; every value is plain text, in which character references are resolved and control
/// characters are blanks.
class PageText {
public:
    /// What follows in a page is not looked at, bytes.
    static constexpr std::size_t Longest = std::size_t{256} * 1024;
    static constexpr std::size_t MostElements = 1000;

    struct Picture {
        std::string source, link, text;
    };

    PageText() = default;
    explicit PageText(std::string_view html);

    const std::string& Title() const { return title; }
    /// The value of the first element of that name or id, letter case ignored: of a text area what it holds, of any
    /// other its attribute "value". "" when there is none. At most `longest` characters.
    std::string Value(std::string_view name, std::size_t longest) const;
    bool Has(std::string_view name) const;
    /// The first picture, and the link that it stands in; "" where there is none.
    const Picture& FirstPicture() const { return picture; }

private:
    struct Element {
        std::string name, id, value;
    };

    std::string title;
    std::vector<Element> elements;
    Picture picture;

    const Element* Find(std::string_view name) const;
    friend class PageReader;
};

} // namespace online
