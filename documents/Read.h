#pragma once

#include "documents/Facts.h"
#include "platform/ByteSource.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace documents {

/// UTF-8 of a text in a code page by its number; nothing for one that is not known.
using TextDecoder = std::function<std::optional<std::string>(std::uint32_t codePage, std::string_view bytes)>;

/// What a document says of itself, whatever its name: the first bytes tell the format. Text documents (RTF), office
/// documents (zip archives of XML, and compound files), PDF and e-books are known; any other bytes give empty facts.
/// So do broken and hostile ones, as far as they are broken: nothing is thrown, and beside what `file` needs for
/// itself less than 1 MiB of memory is in use at any time.
Facts Read(platform::ByteSource& file, const TextDecoder& decode);

} // namespace documents
