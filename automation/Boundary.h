#pragma once

#include "automation/WindowsHeader.h"

#include <new>

namespace automation {

/// Runs the body of a function that a host calls: an exception ends here, as an error code.
template <class Body>
HRESULT Guarded(Body body) noexcept
{
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_FAIL;
    }
}

} // namespace automation
