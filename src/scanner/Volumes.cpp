#include "scanner/Volumes.h"

#include "app/MainModule.h"
#include "app/TextHelpers.h"

#include <string_view>

namespace quavernet {

namespace {

// The mount point as the system names it: without the final "/", but "/" itself stays.
std::string WithoutSlash(const std::string& path) {
    return path.size() > 1 && path.back() == '/' ? path.substr(0, path.size() - 1) : path;
}

[[noreturn]] void RaiseNoSuchRoot() {
    throw RuntimeError(ErrorNumber::InvalidProcedureCall, "Invalid procedure call or argument");
}

} // namespace

std::vector<std::string> LogicalDrives() {
    return services.fileSystem->LogicalDrives();
}

std::string UNCPath(const std::string& drive, bool tolerant) {
    std::string volume = WithFinalSlash(drive);
    if (const auto root = services.fileSystem->NetworkRoot(WithoutSlash(volume))) {
        return StripAtNull(*root) + "/";
    }
    if (!tolerant) {
        RaiseNoSuchRoot();
    }
    return volume;
}

std::string DrivePath(const std::string& path, bool tolerant) {
    for (const std::string& drive : LogicalDrives()) {
        const std::string volume = WithFinalSlash(drive);
        const std::string root = UNCPath(drive, true);
        if (root == volume) {
            // A local drive gives itself back, and a path on it is local already. "/" holds every path but
            // those of a network.
            if (path.starts_with(volume) && !path.starts_with("//")) {
                return path;
            }
            continue;
        }
        if (UpperAscii(std::string_view(path).substr(0, root.size())) == UpperAscii(root)) {
            return volume + path.substr(root.size());
        }
    }
    if (!tolerant) {
        RaiseNoSuchRoot();
    }
    return path;
}

} // namespace quavernet
