// Which failure a call ends with.
#pragma once

#include "platform/RuntimeError.h"

#include <functional>

namespace quavernet::test {

/// The number of the RuntimeError that `statement` throws; 0: none.
inline int NumberOf(const std::function<void()>& statement) {
    try {
        statement();
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

} // namespace quavernet::test
