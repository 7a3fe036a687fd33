#include "app/OpenInBrowser.h"

#include "app/MainModule.h"
#include "platform/Ascii.h"

namespace quavernet {

bool OpenInBrowser(const std::string& url) {
    constexpr int LastFailure = 32; // The system's results up to here are failures.
    const bool isWeb = LowerAscii(url).starts_with("http");
    return services.shell->OpenAddress(isWeb ? url : "http://" + url) > LastFailure;
}

} // namespace quavernet
