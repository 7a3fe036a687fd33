#include "platform/DateTime.h"

#include <chrono>

namespace quavernet {

namespace {

std::chrono::year_month_day CivilDay(const DateTime& date) {
    return std::chrono::year(date.year) / std::chrono::month(static_cast<unsigned>(date.month)) /
           std::chrono::day(static_cast<unsigned>(date.day));
}

DateTime OnDay(const std::chrono::year_month_day& day, DateTime time) {
    time.year = static_cast<int>(day.year());
    time.month = static_cast<int>(static_cast<unsigned>(day.month()));
    time.day = static_cast<int>(static_cast<unsigned>(day.day()));
    return time;
}

} // namespace

bool IsValidDate(const DateTime& date) {
    // Month and day are checked before they become calendar values, which keep only eight bits of them.
    return date.year >= 100 && date.year <= 9999 && date.month > 0 && date.month <= 12 && date.day > 0 &&
           date.day <= 31 && CivilDay(date).ok() && date.hour >= 0 && date.hour < 24 && date.minute >= 0 &&
           date.minute < 60 && date.second >= 0 && date.second < 60;
}

std::int64_t CivilSeconds(const DateTime& date) {
    const std::int64_t days = std::chrono::sys_days(CivilDay(date)).time_since_epoch().count();
    return ((days * 24 + date.hour) * 60 + date.minute) * 60 + date.second;
}

std::int64_t SecondsBetween(const DateTime& from, const DateTime& to) {
    return CivilSeconds(to) - CivilSeconds(from);
}

DateTime AddDays(const DateTime& date, int days) {
    return OnDay(std::chrono::sys_days(CivilDay(date)) + std::chrono::days(days), date);
}

DateTime AddMonths(const DateTime& date, int months) {
    const std::chrono::year_month_day day = CivilDay(date) + std::chrono::months(months);
    return OnDay(day.ok() ? day : day.year() / day.month() / std::chrono::last, date);
}

} // namespace quavernet
