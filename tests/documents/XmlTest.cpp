#include "documents/XmlScanner.h"
#include "tests/documents/ReadText.h"

namespace documents {
namespace {

/// The pieces in one line: "<name", ">name", and texts.
std::string Pieces(std::string_view xml)
{
    std::string line;
    XmlScanner scanner{xml};
    for (auto piece = scanner.Next(); piece != XmlScanner::Piece::End; piece = scanner.Next()) {
        if (piece == XmlScanner::Piece::Text)
            line += scanner.Text();
        else
            line.append(piece == XmlScanner::Piece::Open ? "<" : ">").append(scanner.Name());
        line += '|';
    }
    return line;
}

TEST(XmlTest, GoesThroughATextPieceByPiece)
{
    const std::pair<const char*, const char*> cases[] = {
        {"<?xml version='1.0'?><!-- <x> --><a><b c='>'/>t</a >", "<a|<b|>b|t|>a|"},
        {"<!DOCTYPE a [<!ENTITY e \"grow\"> ]><a>&e;x&e;</a>", "<a|x|>a|"},
        {"a&lt;&#65;&#x65e5;&quot;&amp;&unknown;&#0;&#x110000;& b", "a<A日\"&& b|"},
        {"<a><![CDATA[<b>&amp;]]></a>", "<a|<b>&amp;|>a|"},
        {"<a b=\"", "<a|"},
        {"<a><!-- never ends", "<a|"},
        {"<a><![CDATA[never ends", "<a|never ends|"},
        {"<", "<|"},
    };
    for (const auto& [xml, expected] : cases)
        EXPECT_EQ(Pieces(xml), expected) << xml;
}

TEST(XmlTest, FindsAttributesByNameWithOrWithoutPrefix)
{
    XmlScanner scanner{"<a x:b = 'one' c=\"&lt;'\" d e=broken f='never ends>"};
    ASSERT_EQ(scanner.Next(), XmlScanner::Piece::Open);
    for (const auto& [name, value] : {std::pair{"b", "one"}, {"x:b", "one"}, {"c", "<'"}, {"y:b", ""}, {"z", ""}})
        EXPECT_EQ(scanner.Attribute(name), value) << name;
}

} // namespace
} // namespace documents
