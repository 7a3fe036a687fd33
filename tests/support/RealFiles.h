// The user's files as the program opens them, for whatever a test hands them to.
#pragma once

#include "adapters/posix/PosixFiles.h"

namespace quavernet::test {

inline UserFiles& RealFiles() {
    static PosixFiles files;
    return files;
}

} // namespace quavernet::test
