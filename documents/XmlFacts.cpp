#include "documents/XmlFacts.h"

#include "documents/Dates.h"
#include "documents/TextOf.h"
#include "documents/XmlScanner.h"
#include "platform/Text.h"

#include <limits>
#include <vector>

namespace documents {
namespace {

class Collector {
public:
    Collector(Facts& found, std::span<const XmlField> wanted) : facts{found}, fields{wanted}, texts(wanted.size()) {}

    void Add(std::size_t index, std::string_view raw)
    {
        const std::string text = Clean(raw);
        if (fields[index].isList)
            AddToList(texts[index], text);
        else if (texts[index].empty())
            texts[index] = text;
    }
    void Finish()
    {
        for (std::size_t i = 0; i < fields.size(); ++i)
            std::visit([&](auto fact) { Fill(facts.*fact, texts[i]); }, fields[i].fact);
    }

private:
    Facts& facts;
    std::span<const XmlField> fields;
    std::vector<std::string> texts; ///< of each field

    static void Fill(std::string& fact, const std::string& text)
    {
        if (fact.empty())
            fact = text;
    }
    static void Fill(std::optional<Date>& fact, const std::string& text)
    {
        if (!fact)
            fact = ParseIsoDate(text);
    }
    static void Fill(int& fact, const std::string& text)
    {
        if (fact == 0)
            fact = platform::text::ToInt(text, 0, 0, std::numeric_limits<int>::max());
    }
};

} // namespace

void AddXmlFacts(Facts& facts, std::string_view xml, std::span<const XmlField> fields)
{
    Collector collector{facts, fields};
    const std::size_t none = fields.size();
    std::size_t current = none; // the field whose element is open
    int depth = 0;              // of elements in that one
    std::string text;           // of the element, or of the item in it
    const auto take = [&] {
        collector.Add(current, text);
        text.clear();
    };
    XmlScanner scanner{xml};
    for (auto piece = scanner.Next(); piece != XmlScanner::Piece::End; piece = scanner.Next()) {
        if (piece == XmlScanner::Piece::Text) {
            if (current != none && text.size() <= Facts::MostText)
                text += scanner.Text();
        } else if (piece == XmlScanner::Piece::Open) {
            if (current != none) {
                ++depth;
                continue;
            }
            for (std::size_t i = 0; i < none; ++i) {
                if (IsNamed(scanner.Name(), fields[i].element))
                    current = i;
                else if (scanner.Name() == "rdf:Description")
                    collector.Add(i, scanner.Attribute(fields[i].element));
            }
            depth = 0;
            text.clear();
        } else if (current != none) {
            if (depth == 0 || scanner.Name() == "rdf:li")
                take();
            if (depth-- == 0)
                current = none;
        }
    }
    collector.Finish();
}

} // namespace documents
