#include "adapters/posix/SystemClock.h"

#include <ctime>

namespace quavernet {

DateTime LocalTime(std::int64_t secondsSinceEpoch) {
    const auto time = static_cast<std::time_t>(secondsSinceEpoch);
    std::tm parts{};
    localtime_r(&time, &parts);
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec};
}

DateTime SystemClock::Now() {
    const std::time_t now = std::time(nullptr);
    if (now != m_second) { // A scan asks for each file, some thousand times a second.
        m_now = LocalTime(now);
        m_second = now;
    }
    return m_now;
}

} // namespace quavernet
