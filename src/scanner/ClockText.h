// Times as a scan shows them. The progress of a scan and its log ask here.
#pragma once

#include <cstdint>
#include <string>

namespace quavernet {

/// Hours, minutes and seconds of a number of seconds, two digits each.
std::string ClockText(std::int32_t seconds);

} // namespace quavernet
