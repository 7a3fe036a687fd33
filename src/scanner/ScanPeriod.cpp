#include "scanner/ScanPeriod.h"

#include "app/MainModule.h"

namespace quavernet {

namespace {
constexpr int DaysOfAWeek = 7;
constexpr int MonthsOfAYear = 12;
} // namespace

std::string NextReminderDate(std::string_view period, const DateTime& today) {
    DateTime next;
    if (period == ScanPeriod::Daily) {
        next = AddDays(today, 1);
    } else if (period == ScanPeriod::Weekly) {
        next = AddDays(today, DaysOfAWeek);
    } else if (period == ScanPeriod::Monthly) {
        next = AddMonths(today, 1);
    } else if (period == ScanPeriod::Yearly) {
        next = AddMonths(today, MonthsOfAYear);
    }
    return next.IsSet() ? ShortDateText(next, services.regional) : std::string();
}

} // namespace quavernet
