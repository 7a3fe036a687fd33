// The four periods of the scan reminder and the date that follows one of them. Shared by the question at the
// start of the program and by frmRemind.
#pragma once

#include "platform/DateTime.h"

#include <string>
#include <string_view>

namespace quavernet {

/// Letters of Reminder.ScanPeriode.
namespace ScanPeriod {
inline constexpr std::string_view Daily = "d";
inline constexpr std::string_view Weekly = "w";
inline constexpr std::string_view Monthly = "m";
inline constexpr std::string_view Yearly = "y";
} // namespace ScanPeriod

/// One period after `today`, in the system's short form; empty for any other letter.
std::string NextReminderDate(std::string_view period, const DateTime& today);

} // namespace quavernet
