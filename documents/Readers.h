#pragma once

#include "documents/Read.h"

/// One reader for each format. Each takes any bytes; `Read` chooses among them by the first ones.
namespace documents {

Facts ReadRtf(platform::ByteSource& bytes, const TextDecoder& decode);

} // namespace documents
