// Export files of any bytes, and profiles of any names: what is read, what is written, and what an editor that is far
// less careful than we are would make of it.
#include "fuzz/Check.h"
#include "platform/Text.h"
#include "platform/memory/MemoryLocale.h"
#include "profiles/RegistryText.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>

using fuzz::Check;
using platform::RegistryValue;
using profiles::ExportedKey;
using profiles::ExportedKeys;
namespace text = platform::text;

namespace {

const std::string top = profiles::FullProfilesKey();
const std::string pieces[] = {
    // clang-format off
    "REGEDIT4\r\n", "Windows Registry Editor Version 5.00\r\n", "; UTF-8\r\n", "\xEF\xBB\xBF", "[" + top + "]\r\n",
    "[" + top + "\\Ann]\r\n", "[" + top + "\\", "[" + top, "[HKEY_CURRENT_USER\\Software\\Evil]\r\n", "[-", "]", "\r",
    "\n", "\r\n", "\"n\"=", "@=", "\"x\"", "\"", "\\", "hex:", "hex(1):", "hex(2):", "hex(7):", "01,", "00", ",\\\r\n  ",
    "dword:0000000a", " ", "\t", ";", "\x81", "\x81\\", "\x81[", "é", "=", std::string(1, '\0')
    // clang-format on
};

std::string TakeText(FuzzedDataProvider& input)
{
    std::string taken;
    for (int left = input.ConsumeIntegralInRange(0, 40); left > 0; --left)
        taken += input.ConsumeIntegralInRange(0, 3) != 0 ? input.PickValueInArray(pieces)
                                                         : input.ConsumeRandomLengthString(6);
    return taken;
}

ExportedKeys TakeKeys(FuzzedDataProvider& input)
{
    ExportedKeys keys;
    for (int left = input.ConsumeIntegralInRange(0, 3); left > 0; --left) {
        ExportedKey& key = keys.emplace_back(input.ConsumeRandomLengthString(12));
        for (int values = input.ConsumeIntegralInRange(0, 3); values > 0; --values)
            key.values.emplace_back(
                input.ConsumeRandomLengthString(12),
                RegistryValue{static_cast<platform::ValueType>(input.ConsumeIntegralInRange(0, 8)), TakeText(input)});
    }
    return keys;
}

/// Any of the usual ends ends a line, blanks and letter case do not count, a key ends where it likes.
void CheckWithALaxReader(std::string_view file)
{
    while (!file.empty()) {
        const auto end = std::min(file.find_first_of(std::string_view{"\r\n\0\v\f\x1a", 6}), file.size());
        std::string_view line = file.substr(0, end);
        file.remove_prefix(std::min(end + 1, file.size()));
        line.remove_prefix(std::min(line.find_first_not_of(" \t\xEF\xBB\xBF\xA0"), line.size()));
        if (!line.starts_with('['))
            continue;
        line.remove_prefix(1);
        line.remove_prefix(std::min(line.find_first_not_of(" \t-"), line.size()));
        const std::string_view behind = line.substr(std::min(top.size(), line.size()));
        Check(text::EqualIgnoringCase(line.substr(0, top.size()), top) &&
                  (behind.starts_with('\\') || behind.starts_with(']')),
              "a key that is not ours: " + std::string{line});
        // Its first and its last bracket may both be taken for the end.
        Check(!behind.contains("\\..\\"), "a way up: " + std::string{line});
    }
}

/// What can be written comes back, and nothing written leads elsewhere.
void CheckWritten(ExportedKeys keys, platform::Locale& locale)
{
    std::erase_if(keys, [](const ExportedKey& key) { return key.name.find('\\') != std::string::npos; });
    CheckWithALaxReader(profiles::WriteRegistryText(keys, locale));
    std::erase_if(keys, [&](const ExportedKey& key) { return !profiles::CanBeWritten(key.name, locale); });
    for (ExportedKey& key : keys)
        std::erase_if(key.values,
                      [&](const auto& value) { return !profiles::CanBeWritten(value.first, value.second, locale); });
    const std::string file = profiles::WriteRegistryText(keys, locale);
    const auto again = profiles::ReadRegistryText(file, locale);
    Check(again.keys == keys && again.leftOut.IsEmpty(), "not read as it was written:\n" + file);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    FuzzedDataProvider input{bytes, size};
    platform::memory::MemoryLocale locale;
    if (input.ConsumeBool())
        locale.SetDoubleByte();
    const ExportedKeys made = TakeKeys(input);
    CheckWritten(made, locale);
    const std::string file = input.ConsumeBool() ? TakeText(input) : input.ConsumeRemainingBytesAsString();
    const auto read = profiles::ReadRegistryText(file, locale);
    for (const ExportedKey& key : read.keys)
        Check(key.name.find('\\') == std::string::npos, "deeper than a profile: " + key.name);
    CheckWritten(read.keys, locale);
    if (profiles::IsPlainRegistryText(file, read.keys, locale))
        CheckWithALaxReader(file);
    const std::string again = profiles::WriteRegistryText(read.keys, locale);
    Check(again.contains("; UTF-8\r\n") || profiles::ReadRegistryText(again, locale).keys == read.keys,
          "an import that is exported differs:\n" + again);
    return 0;
}
