#include "platform/memory/MemoryIniFile.h"

#include "platform/Text.h"

namespace platform::memory {

namespace {

std::string_view TrimmedLine(std::string_view line)
{
    constexpr std::string_view blanks = " \t\r";
    const std::size_t start = line.find_first_not_of(blanks);
    if (start == std::string_view::npos)
        return {};
    return line.substr(start, line.find_last_not_of(blanks) - start + 1);
}

std::string_view WithoutQuotes(std::string_view value)
{
    const bool quoted =
        value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front();
    return quoted ? value.substr(1, value.size() - 2) : value;
}

} // namespace

std::string MemoryIniFile::Read(std::string_view section, std::string_view key, std::string_view file, int buffer)
{
    if (faults.Enter("IniFile.Read", std::string{file}.append(": ").append(key)) || buffer < 1 || !files.Exists(file))
        return {};
    bool inSection = false;
    for (const std::string& text : text::Split(files.Contents(file), '\n')) {
        const std::string_view line = TrimmedLine(text);
        if (line.starts_with('[')) {
            if (inSection) // a section of the same name further down does not count
                return {};
            inSection = text::EqualIgnoringCase(TrimmedLine(line.substr(1, line.find(']') - 1)), section);
            continue;
        }
        const std::size_t equals = line.find('=');
        if (!inSection || line.starts_with(';') || equals == std::string_view::npos)
            continue;
        if (text::EqualIgnoringCase(TrimmedLine(line.substr(0, equals)), key)) {
            const std::string_view value = WithoutQuotes(TrimmedLine(line.substr(equals + 1)));
            return std::string{text::Left(value, static_cast<std::size_t>(buffer) - 1)};
        }
    }
    return {};
}

} // namespace platform::memory
