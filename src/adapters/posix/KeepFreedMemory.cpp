#include "adapters/posix/KeepFreedMemory.h"

#include <malloc.h>

namespace quavernet {

void KeepFreedMemory() {
    constexpr int Megabyte = 1024 * 1024;
    // Larger pieces come from the system one by one and go back to it. To set one value alone would stop the
    // library from finding the other by itself.
    ::mallopt(M_MMAP_THRESHOLD, 4 * Megabyte);
    ::mallopt(M_TRIM_THRESHOLD, 64 * Megabyte);
}

} // namespace quavernet
