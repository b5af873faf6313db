#pragma once

#include <cstdio>
#include <cstdlib>
#include <source_location>
#include <string>

namespace fuzz {

/// Ends the process, which the fuzzer notes together with the input, when something that always holds does not.
inline void Check(bool holds, const std::string& what, std::source_location where = std::source_location::current())
{
    if (holds)
        return;
    std::fprintf(stderr, "%s:%u: %s\n", where.file_name(), static_cast<unsigned>(where.line()), what.c_str());
    std::abort();
}

} // namespace fuzz
