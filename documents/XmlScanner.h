#pragma once

#include <string>
#include <string_view>

namespace documents {

/// Goes through an XML text (UTF-8) piece by piece. It judges nothing: what is not well-formed ends the text or comes
/// as it stands. Entities that a document declares itself are left out, so that none can grow.
class XmlScanner {
public:
    explicit XmlScanner(std::string_view xml) : rest{xml} {}

    enum class Piece { Open, Close, Text, End };
    /// An element that is empty comes as Open and Close.
    Piece Next();

    /// Of the element that was opened or closed, with its prefix.
    std::string_view Name() const { return name; }
    /// The same without its prefix.
    std::string_view LocalName() const { return name.substr(name.find(':') + 1); }
    /// Of the element that was opened, by its name with or without prefix; "" when there is none.
    std::string Attribute(std::string_view wanted) const;
    /// What stands between elements.
    const std::string& Text() const { return text; }

private:
    std::string_view rest;
    std::string_view name;
    std::string_view attributes;
    std::string text;
    bool closeNext{};

    /// What stands before `end`, which is passed over too; all of the rest when it is not there.
    std::string_view TakeUntil(std::string_view end);
    void SkipDeclaration();
    std::string_view TakeTag();
};

/// The text of an XML file: UTF-8 whatever of the Unicode encodings it was in.
std::string XmlText(std::string bytes);

/// Whether an element or attribute of this name is the wanted one, which is given with or without prefix.
bool IsNamed(std::string_view name, std::string_view wanted);

} // namespace documents
