#include "extras/TopListOptions.h"

#include "app/MainModule.h"
#include "app/Registry.h"

#include <algorithm>
#include <limits>

namespace quavernet {

namespace {
constexpr const char* FileCount = "FileCountTopList";
}

std::string FileCountTopList() {
    return Setting(FileCount, "10");
}

std::int32_t ChartLimitSetting() {
    using Limits = std::numeric_limits<std::int32_t>;
    // A stored number must not take the charts away: a list can't be longer than the library anyway.
    const double number = std::clamp(Val(FileCountTopList()), static_cast<double>(Limits::min()),
                                     static_cast<double>(Limits::max()));
    return Narrow32(number);
}

bool SaveTopListOptions(const std::string& fileCount, bool resetStatistics) {
    if (fileCount.empty()) {
        return false;
    }
    SaveSetting(FileCount, fileCount);
    if (resetStatistics) {
        mainModule.Connection->Execute("Update Files Set Hits = 0");
    }
    return true;
}

} // namespace quavernet
