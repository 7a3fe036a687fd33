// Feeds any text to the reader of the system's table of mounts, whose points carry any names that users give.
// The input: a path on a line of its own, then the table.
#include "adapters/posix/MountTable.h"

#include "FuzzInput.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace quavernet;
using fuzz::Require;

// The path itself or a folder above it, by whole names.
bool LiesUnder(std::string_view path, std::string_view folder) {
    return folder == "/" || path == folder || path.starts_with(std::string(folder) + "/");
}

void RequirePoint(const std::vector<posix::Mount>& mounts, const posix::Mount& device,
                  std::string_view path) {
    const std::string point = posix::PointByDevice(mounts, device.major, device.minor, path);
    const auto isHere = [&](const posix::Mount& mount) {
        return mount.major == device.major && mount.minor == device.minor && LiesUnder(path, mount.point);
    };
    std::size_t longest = 0;
    for (const posix::Mount& mount : mounts) {
        longest = isHere(mount) ? std::max(longest, mount.point.size()) : longest;
    }
    Require(longest == 0 ? point == "/" : point.size() == longest && LiesUnder(path, point));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view table = fuzz::TextOf(data, size);
    const std::string path(fuzz::TakeLine(table));
    const auto mounts = posix::ParseMountInfo(table);
    Require(mounts.size() <= 1 + static_cast<std::size_t>(std::count(table.begin(), table.end(), '\n')));
    for (const posix::Mount& mount : mounts) {
        Require(mount.type.find(' ') == std::string::npos && table.find(mount.type) != std::string::npos);
        Require(mount.point == "/" || !posix::IsKernelInterface(mount.type) || !posix::HoldsUserData(mount));
        RequirePoint(mounts, mount, path);
        RequirePoint(mounts, mount, mount.point + "/x");
    }
    return 0;
}
