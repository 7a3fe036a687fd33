#include "app/Version.h"

namespace quavernet {

std::string VersionNumbers() {
    return QUAVERNET_VERSION;
}

std::string SplashVersionText() {
    return "v" + VersionNumbers();
}

} // namespace quavernet
