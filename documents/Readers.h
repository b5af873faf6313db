#pragma once

#include "documents/Read.h"

/// One reader for each format. Each takes any bytes; `Read` chooses among them by the first ones.
namespace documents {

Facts ReadRtf(platform::ByteSource& bytes, const TextDecoder& decode);
Facts ReadArchive(platform::ByteSource& bytes, const TextDecoder& decode);
/// Open documents that are one text.
Facts ReadOpenXml(platform::ByteSource& bytes, const TextDecoder& decode);
Facts ReadCompound(platform::ByteSource& bytes, const TextDecoder& decode);
Facts ReadPdf(platform::ByteSource& bytes, const TextDecoder& decode);

} // namespace documents
