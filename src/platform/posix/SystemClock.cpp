#include "platform/posix/SystemClock.h"

#include <ctime>

namespace quavernet {

DateTime LocalTime(std::int64_t secondsSinceEpoch) {
    const auto time = static_cast<std::time_t>(secondsSinceEpoch);
    std::tm parts{};
    localtime_r(&time, &parts);
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec};
}

DateTime SystemClock::Now() {
    return LocalTime(std::time(nullptr));
}

} // namespace quavernet
