// A variable with another value for the length of a scope. Used for modes and marks, which handlers set while
// others run inside them.
#pragma once

#include <utility>

namespace quavernet {

/// Puts the old value back at the end of its scope, also after a failure.
template <typename T> class ScopedValue {
public:
    ScopedValue(T& variable, T value)
        : m_variable(variable), m_before(std::exchange(variable, std::move(value))) {}
    ~ScopedValue() { m_variable = std::move(m_before); }
    ScopedValue(const ScopedValue&) = delete;
    ScopedValue& operator=(const ScopedValue&) = delete;

private:
    T& m_variable;
    T m_before;
};

} // namespace quavernet
