// The machine's clock in local time.
#pragma once

#include "platform/Services.h"

namespace quavernet {

class SystemClock : public Clock {
public:
    DateTime Now() override;

private:
    std::int64_t m_second = -1; ///< Since the epoch: the one of m_now.
    DateTime m_now;
};

/// Local civil time of a point in seconds since the epoch.
DateTime LocalTime(std::int64_t secondsSinceEpoch);

} // namespace quavernet
