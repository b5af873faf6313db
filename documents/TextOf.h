#pragma once

#include "documents/Read.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace documents {

inline constexpr std::uint32_t Utf8CodePage = 65001, Utf16CodePage = 1200, WesternCodePage = 1252;

/// A text as the window shows it: well-formed UTF-8 without blanks around, without control characters but line breaks
/// and tabs, cut at Facts::MostText bytes where no character is cut in two.
std::string Clean(std::string_view text);

/// UTF-16 with the low byte first, up to its end or the first zero.
std::string FromUtf16(std::string_view bytes, bool highByteFirst = false);

/// The text up to its end or the first zero byte, in a code page that the decoder or this program knows; bytes of
/// another one are taken for characters of their own number.
std::string Decoded(std::string_view bytes, std::uint32_t codePage, const TextDecoder& decode);

/// Adds to a list of texts that is shown in one line.
void AddToList(std::string& list, std::string_view text);

} // namespace documents
