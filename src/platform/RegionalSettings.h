// The system's number and date forms, and the conversions that follow them. The values are read once at
// start (adapters/qt); the language of the program does not change them. Called wherever a number or a date
// is shown, read or stored. Ours and not std::locale's, which throws for each locale that the machine has not
// generated (a bare Debian has C and POSIX alone), rounds 1.005 to 1.00 and reads no date in two orders.
#pragma once

#include "platform/DateTime.h"

#include <optional>
#include <string>
#include <string_view>

namespace quavernet {

/// Defaults are the German ones.
struct RegionalSettings {
    std::string decimalSeparator = ",";
    std::string groupSeparator = ".";            ///< Thousands separator; may be empty.
    std::string dateSeparator = ".";             ///< Between day, month and year.
    std::string shortDatePattern = "dd.MM.yyyy"; ///< d, dd, M, MM, yy and yyyy; literals may be quoted.
    bool twelveHours = false;                    ///< Times read "2:03:22 PM" instead of "14:03:22".
};

/// A number with thousands separators and `decimals` decimals (two is the system's default), rounded half
/// away from zero.
std::string FormatNumber(double value, int decimals, const RegionalSettings& regional);

/// A number with `decimals` decimals, at least `digits` digits before them and no thousands separators,
/// rounded half away from zero: (7, 2, 0) is "07".
std::string FormatFixed(double value, int digits, int decimals, const RegionalSettings& regional);

/// As FormatFixed, for a 32-bit float: only its seven significant digits count.
std::string FormatFixedSingle(float value, int digits, int decimals, const RegionalSettings& regional);

/// The number that a regional text spells, thousands separators allowed; nothing if it spells none.
std::optional<double> ParseNumber(std::string_view text, const RegionalSettings& regional);

/// Numeric value of the text's beginning: blanks passed over, a point as decimal sign, 0 if there is none.
double Val(std::string_view text);

/// Date in the system's short form.
std::string ShortDateText(const DateTime& date, const RegionalSettings& regional);

/// Short date, followed by the time unless that is midnight.
std::string GeneralDateText(const DateTime& date, const RegionalSettings& regional);

/// Day, month and year in two, two and four digits with the system's date separator.
std::string DayMonthYearText(const DateTime& date, const RegionalSettings& regional);

/// Reads a date, with or without a time, in the order of the system's short date; where day and month can't
/// be what that order says, the other order is taken. "2026-11-20" is read too. Nothing if it is no date.
std::optional<DateTime> ParseDate(std::string_view text, const RegionalSettings& regional);

/// The form dates are stored in: "2026-11-20", followed by " 14:03:22" unless the time is midnight.
std::string IsoDateText(const DateTime& date);

} // namespace quavernet
