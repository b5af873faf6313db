#pragma once

namespace platform {

/// Whether a character is a mark that searching leaves out: the combining accents of Latin, Greek and Cyrillic letters,
/// the points of Hebrew and Arabic. The marks of Indian and Thai writing are vowels, those of kana make other letters.
constexpr bool IsAccent(char32_t character)
{
    const bool isHebrewSign =
        character == 0x5BE || character == 0x5C0 || character == 0x5C3 || character == 0x5C6; // among its points
    return (character >= 0x300 && character <= 0x36F) || (character >= 0x591 && character <= 0x5C7 && !isHebrewSign) ||
           (character >= 0x64B && character <= 0x65F) || character == 0x670;
}

} // namespace platform
