// The machine's clock in local time.
#pragma once

#include "platform/Services.h"

namespace quavernet {

class SystemClock : public Clock {
public:
    DateTime Now() override;
};

/// Local civil time of a point in seconds since the epoch.
DateTime LocalTime(std::int64_t secondsSinceEpoch);

} // namespace quavernet
