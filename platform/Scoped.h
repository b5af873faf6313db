#pragma once

#include <utility>

namespace platform {

/// Gives a variable another value until the scope is left, by an exception as well: a flag set by hand would stand for
/// good after one.
template <class Value>
class Scoped {
public:
    Scoped(Value& scopedVariable, Value value)
        : variable{scopedVariable}, before{std::exchange(scopedVariable, std::move(value))}
    {
    }
    Scoped(const Scoped&) = delete;
    Scoped& operator=(const Scoped&) = delete;
    ~Scoped() { variable = std::move(before); }

private:
    Value& variable;
    Value before;
};

} // namespace platform
