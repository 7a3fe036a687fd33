#include "app/GetTempDir.h"

#include "platform/Paths.h"

#include <cstdlib>
#include <string_view>

namespace quavernet {

std::string GetTempDir() {
    const char* const named = std::getenv("TMPDIR");
    const std::string_view folder = named == nullptr ? std::string_view() : named;
    return WithFinalSlash(folder.starts_with('/') ? std::string(folder) : "/tmp");
}

} // namespace quavernet
