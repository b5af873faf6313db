#pragma once

#include "documents/Facts.h"

#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace documents {

/// Which element of an XML text tells which fact.
struct XmlField {
    std::string_view element; ///< with or without its prefix
    std::variant<std::string Facts::*, std::optional<Date> Facts::*, int Facts::*> fact;
    bool isList{}; ///< of several such elements, or several items in it, all count; else the first that is not empty
};

/// Takes from an XML text what the facts do not say yet. Attributes of "rdf:Description" count as elements in it.
void AddXmlFacts(Facts& facts, std::string_view xml, std::span<const XmlField> fields);

} // namespace documents
