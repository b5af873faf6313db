// Prints what documents say of themselves, a field a line: file, field, value, with tabs between them.
// bench/documents.py compares it with what another reader says.
#include "documents/Dates.h"
#include "documents/Read.h"
#include "platform/Text.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

namespace {

std::string DateText(const std::optional<documents::Date>& date)
{
    if (!date)
        return {};
    const platform::LocalTime time = documents::OnCalendar(date->time);
    char text[40];
    std::snprintf(text, sizeof text, "%04d:%02d:%02d %02d:%02d:%02d%s", time.year, time.month, time.day, time.hour,
                  time.minute, time.second, date->isLocal ? "" : "Z");
    return text;
}

void Print(const std::string& path)
{
    std::ifstream file{path, std::ios::binary};
    const std::string bytes{std::istreambuf_iterator<char>{file}, {}};
    platform::TextSource source{bytes};
    const documents::Facts facts =
        documents::Read(source, [](std::uint32_t, std::string_view) { return std::optional<std::string>{}; });
    const std::pair<const char*, std::string> fields[] = {
        {"title", facts.title},
        {"subject", facts.subject},
        {"author", facts.author},
        {"keywords", facts.keywords},
        {"comments", facts.comments},
        {"company", facts.company},
        {"manager", facts.manager},
        {"category", facts.category},
        {"created", DateText(facts.created)},
        {"saved", DateText(facts.saved)},
        {"pages", facts.pages > 0 ? std::to_string(facts.pages) : ""},
    };
    for (const auto& [name, value] : fields)
        std::printf("%s\t%s\t%s\n", path.c_str(), name, platform::text::Replaced(value, "\n", " ").c_str());
}

} // namespace

int main(int count, char** arguments)
{
    for (int i = 1; i < count; ++i)
        Print(arguments[i]);
}
