// How the time to read an import grows with its size, for texts that are made to hurt: ten times the text must take
// some ten times as long, not a hundred times.
#include "bench/Measure.h"

#include "platform/memory/MemoryLocale.h"
#include "profiles/RegistryText.h"

#include <string>

namespace {

constexpr int Rounds = 3;
constexpr double Growth = 30; ///< 10 is linear, 100 is square
constexpr std::size_t Pieces = 20'000;

std::string Repeated(const std::string& head, const std::string& piece, std::size_t times)
{
    std::string text = head;
    for (; times > 0; --times)
        text += piece;
    return text;
}

} // namespace

int main()
{
    const std::string head = "REGEDIT4\r\n\r\n[" + profiles::FullProfilesKey() + "\\Eve]\r\n";
    const struct {
        const char* name;
        std::string head;
        std::string piece;
    } shapes[] = {
        {"keys of others", head, "[x]\r\n"},
        {"keys of ours", head, "[" + profiles::FullProfilesKey() + "\\Eve]\r\n"},
        {"values of one key", head, "\"City\"=\"Bern\"\r\n"},
        {"one text without an end", head + "\"City\"=\"", "xxxx"},
        {"one name", head + "\"", "\\\\\\\\"},
        {"one value of bytes", head + "\"City\"=hex:", "00,\\\r\n"},
    };
    platform::memory::MemoryLocale locale;
    const auto readBoth = [&](const std::string& text) {
        const auto read = profiles::ReadRegistryText(text, locale);
        (void)profiles::IsPlainRegistryText(text, read.keys, locale);
    };
    bool kept = true;
    for (const auto& shape : shapes) {
        const std::string small = Repeated(shape.head, shape.piece, Pieces);
        const std::string large = Repeated(shape.head, shape.piece, 10 * Pieces);
        const auto least = bench::LeastTimes(Rounds, {[&] { readBoth(small); }, [&] { readBoth(large); }});
        kept = bench::Print(shape.name, least[1], least[0], Growth) && kept;
    }
    return kept ? 0 : 1;
}
