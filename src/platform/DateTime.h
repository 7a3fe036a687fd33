// A point in local civil time, to the second: what files, statements and the clock speak in. Used everywhere.
#pragma once

#include <compare>
#include <cstdint>

namespace quavernet {

/// year 0 means "no date".
struct DateTime {
    int year = 0;
    int month = 0; ///< 1 to 12
    int day = 0;   ///< 1 to 31
    int hour = 0;  ///< 0 to 23
    int minute = 0;
    int second = 0;

    auto operator<=>(const DateTime&) const = default;
    /// Whether it is a date at all.
    bool IsSet() const { return year != 0; }
};

/// Whether the calendar has that day (years 100 to 9999) and the day that time.
bool IsValidDate(const DateTime& date);

/// Seconds since 1970-01-01 00:00:00 on the same civil clock; no time zone enters.
std::int64_t CivilSeconds(const DateTime& date);

/// Whole seconds from `from` to `to`.
std::int64_t SecondsBetween(const DateTime& from, const DateTime& to);

/// The same time of day, some days later; `days` may be negative. `date` must be set.
DateTime AddDays(const DateTime& date, int days);

/// The same day of a later month, or that month's last day if it is shorter: January 31 and one month give
/// the last day of February. `months` may be negative. `date` must be set.
DateTime AddMonths(const DateTime& date, int months);

} // namespace quavernet
