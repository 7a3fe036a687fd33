#include "platform/RegionalSettings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <iterator>

namespace quavernet {

namespace {

constexpr int DoubleDigits = 15; // Significant decimal digits that a double carries for sure.
constexpr int SingleDigits = 7;

// Digits of |value| rounded half away from zero to `decimals`; the last `decimals` digits are the fraction.
// The rounding works on the decimal form, so that 1.005 becomes 1.01 as its reader expects.
std::string RoundedDigits(double value, int decimals, int significant) {
    char buffer[40];
    *std::to_chars(buffer, buffer + sizeof buffer - 1, std::fabs(value), std::chars_format::scientific,
                   significant - 1)
         .ptr = '\0';
    std::string digits;
    const char* p = buffer;
    for (; *p != 'e'; ++p) {
        if (*p >= '0' && *p <= '9') {
            digits += *p;
        }
    }
    const int exponent =
        static_cast<int>(std::strtol(p + 1, nullptr, 10)); // Position of the point: after digit `exponent`.
    const int wanted = exponent + 1 + decimals;
    if (wanted < 0) {
        return std::string(static_cast<std::size_t>(decimals) + 1, '0');
    }
    const auto kept = static_cast<std::size_t>(wanted);
    if (kept >= digits.size()) {
        digits.append(kept - digits.size(), '0');
    } else {
        const bool up = digits[kept] >= '5';
        digits.resize(kept);
        if (up) {
            std::size_t i = kept;
            while (i > 0 && digits[i - 1] == '9') {
                digits[--i] = '0';
            }
            if (i > 0) {
                ++digits[i - 1];
            } else {
                digits.insert(digits.begin(), '1');
            }
        }
    }
    const auto least = static_cast<std::size_t>(decimals) + 1;
    if (digits.size() < least) {
        digits.insert(0, least - digits.size(), '0');
    }
    return digits;
}

std::string Assemble(double value, int minimumDigits, int decimals, int significant, std::string_view group,
                     const RegionalSettings& regional) {
    if (!std::isfinite(value)) {
        return "0";
    }
    const std::string digits = RoundedDigits(value, decimals, significant);
    const auto fraction = static_cast<std::size_t>(decimals);
    std::string whole = digits.substr(0, digits.size() - fraction);
    while (whole.size() > 1 && whole.front() == '0') {
        whole.erase(whole.begin());
    }
    while (whole.size() < static_cast<std::size_t>(minimumDigits)) {
        whole.insert(whole.begin(), '0');
    }
    if (!group.empty()) {
        for (std::size_t i = whole.size(); i > 3; i -= 3) {
            whole.insert(i - 3, group);
        }
    }
    std::string text = whole;
    if (decimals > 0) {
        text += regional.decimalSeparator + digits.substr(digits.size() - fraction);
    }
    const bool isZero = digits.find_first_not_of('0') == std::string::npos;
    return std::signbit(value) && !isZero ? "-" + text : text;
}

bool StartsWith(std::string_view text, std::string_view prefix) {
    return !prefix.empty() && text.substr(0, prefix.size()) == prefix;
}

// A plus sign comes before a digit or a point only; the conversion itself knows none.
const char* SkipPlus(const char* begin, const char* end) {
    const bool plus =
        end - begin > 1 && begin[0] == '+' && ((begin[1] >= '0' && begin[1] <= '9') || begin[1] == '.');
    return plus ? begin + 1 : begin;
}

// At least so many digits, with zeros in front. Dates are made for each file of a scan.
std::string Digits(int value, std::size_t least) {
    char digits[16];
    const auto size = static_cast<std::size_t>(std::to_chars(digits, std::end(digits), value).ptr - digits);
    return std::string(least - std::min(least, size), '0').append(digits, size);
}

std::string TwoDigits(int value) {
    return Digits(value, 2);
}

std::string FourDigits(int value) {
    return Digits(value, 4);
}

bool HasTime(const DateTime& date) {
    return date.hour != 0 || date.minute != 0 || date.second != 0;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// The runs of digits in the text, and whether a mark of the day's half follows a time.
struct DateParts {
    static constexpr std::size_t maximumCount = 6; ///< More numbers make no date.

    std::array<int, maximumCount> numbers{};
    std::array<std::size_t, maximumCount> widths{};
    std::size_t count = 0; ///< Of all that were found.
    bool afternoon = false;
    bool forenoon = false;
    bool valid = true;
};

bool IsDateSeparator(char c) {
    return std::string_view(" ./-:,").find(c) != std::string_view::npos ||
           static_cast<unsigned char>(c) >= 0x80;
}

DateParts SplitDate(std::string_view text) {
    DateParts parts;
    for (std::size_t i = 0; i < text.size();) {
        if (IsDigit(text[i])) {
            std::size_t end = i;
            int number = 0;
            while (end < text.size() && IsDigit(text[end]) && end - i < 5) {
                number = number * 10 + (text[end++] - '0');
            }
            if (parts.count < DateParts::maximumCount) {
                parts.numbers[parts.count] = number;
                parts.widths[parts.count] = end - i;
            }
            ++parts.count;
            i = end;
            continue;
        }
        const char c = text[i];
        const bool behindTime = parts.count > 3;
        if ((c == 'P' || c == 'p') && behindTime) {
            parts.afternoon = true;
        } else if ((c == 'A' || c == 'a') && behindTime) {
            parts.forenoon = true;
        } else if (!IsDateSeparator(c) && !((c == 'M' || c == 'm') && behindTime)) {
            parts.valid = false;
        }
        ++i;
    }
    return parts;
}

int FullYear(int year, std::size_t width) {
    if (width > 2) {
        return year;
    }
    return year < 30 ? 2000 + year : 1900 + year;
}

struct DateOrder {
    int day, month, year; // Index of each part in the short date.
};

DateOrder OrderOf(std::string_view pattern) {
    const auto day = pattern.find('d');
    const auto month = pattern.find('M');
    const auto year = pattern.find('y');
    const auto before = [](std::size_t a, std::size_t b) { return a < b ? 1 : 0; };
    return {before(month, day) + before(year, day), before(day, month) + before(year, month),
            before(day, year) + before(month, year)};
}

std::optional<DateTime> DateFrom(const DateParts& parts, DateOrder order) {
    const auto at = [&](int index) { return parts.numbers[static_cast<std::size_t>(index)]; };
    DateTime date;
    date.day = at(order.day);
    date.month = at(order.month);
    date.year = FullYear(at(order.year), parts.widths[static_cast<std::size_t>(order.year)]);
    const std::size_t count = parts.count;
    date.hour = count > 3 ? at(3) : 0;
    date.minute = count > 4 ? at(4) : 0;
    date.second = count > 5 ? at(5) : 0;
    if (parts.afternoon && date.hour < 12) {
        date.hour += 12;
    } else if (parts.forenoon && date.hour == 12) {
        date.hour = 0;
    }
    return IsValidDate(date) ? std::optional(date) : std::nullopt;
}

} // namespace

std::string FormatNumber(double value, int decimals, const RegionalSettings& regional) {
    return Assemble(value, 1, decimals, DoubleDigits, regional.groupSeparator, regional);
}

std::string FormatFixed(double value, int digits, int decimals, const RegionalSettings& regional) {
    return Assemble(value, digits, decimals, DoubleDigits, {}, regional);
}

std::string FormatFixedSingle(float value, int digits, int decimals, const RegionalSettings& regional) {
    return Assemble(double{value}, digits, decimals, SingleDigits, {}, regional);
}

std::optional<double> ParseNumber(std::string_view text, const RegionalSettings& regional) {
    std::string plain;
    while (!text.empty() && text.front() == ' ') {
        text.remove_prefix(1);
    }
    while (!text.empty() && text.back() == ' ') {
        text.remove_suffix(1);
    }
    bool seenPoint = false;
    while (!text.empty()) {
        if (!seenPoint && StartsWith(text, regional.decimalSeparator)) {
            plain += '.';
            seenPoint = true;
            text.remove_prefix(regional.decimalSeparator.size());
        } else if (!seenPoint && !plain.empty() && StartsWith(text, regional.groupSeparator)) {
            text.remove_prefix(regional.groupSeparator.size());
        } else if (text.front() == '.') {
            return std::nullopt; // A point that is neither of this system's two signs.
        } else {
            plain += text.front();
            text.remove_prefix(1);
        }
    }
    double value = 0;
    const char* begin = SkipPlus(plain.data(), plain.data() + plain.size());
    const char* end = plain.data() + plain.size();
    const auto result = std::from_chars(begin, end, value);
    if (result.ec != std::errc() || result.ptr != end || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

double Val(std::string_view text) {
    std::string plain;
    for (const char c : text) {
        if (c != ' ') {
            plain += c;
        }
    }
    double value = 0;
    const char* end = plain.data() + plain.size();
    std::from_chars(SkipPlus(plain.data(), end), end, value);
    return std::isfinite(value) ? value : 0;
}

std::string ShortDateText(const DateTime& date, const RegionalSettings& regional) {
    const std::string_view pattern = regional.shortDatePattern;
    std::string text;
    for (std::size_t i = 0; i < pattern.size();) {
        const char c = pattern[i];
        if (c == '\'') { // A quoted literal, as some systems have it after the year.
            const std::size_t close = std::min(pattern.find('\'', i + 1), pattern.size());
            text += pattern.substr(i + 1, close - i - 1);
            i = close + 1;
            continue;
        }
        std::size_t run = 1;
        while (i + run < pattern.size() && pattern[i + run] == c) {
            ++run;
        }
        if (c == 'd') {
            text += run > 1 ? TwoDigits(date.day) : std::to_string(date.day);
        } else if (c == 'M') {
            text += run > 1 ? TwoDigits(date.month) : std::to_string(date.month);
        } else if (c == 'y') {
            text += run > 2 ? FourDigits(date.year) : TwoDigits(date.year % 100);
        } else {
            text += pattern.substr(i, run);
        }
        i += run;
    }
    return text;
}

std::string GeneralDateText(const DateTime& date, const RegionalSettings& regional) {
    std::string text = ShortDateText(date, regional);
    if (!HasTime(date)) {
        return text;
    }
    const std::string minutes = ":" + TwoDigits(date.minute) + ":" + TwoDigits(date.second);
    if (!regional.twelveHours) {
        return text + " " + TwoDigits(date.hour) + minutes;
    }
    const int hour = date.hour % 12 == 0 ? 12 : date.hour % 12;
    return text + " " + std::to_string(hour) + minutes + (date.hour < 12 ? " AM" : " PM");
}

std::string DayMonthYearText(const DateTime& date, const RegionalSettings& regional) {
    return TwoDigits(date.day) + regional.dateSeparator + TwoDigits(date.month) + regional.dateSeparator +
           FourDigits(date.year);
}

std::optional<DateTime> ParseDate(std::string_view text, const RegionalSettings& regional) {
    const DateParts parts = SplitDate(text);
    const bool hourAlone = parts.count == 4 && !parts.forenoon && !parts.afternoon;
    if (!parts.valid || parts.count < 3 || parts.count > DateParts::maximumCount || hourAlone) {
        return std::nullopt;
    }
    if (parts.widths[0] == 4) {
        return DateFrom(parts, {2, 1, 0});
    }
    const DateOrder order = OrderOf(regional.shortDatePattern);
    if (order.year == 0 && parts.widths[2] == 4) {
        return DateFrom(parts, {0, 1, 2});
    }
    if (const auto date = DateFrom(parts, order)) {
        return date;
    }
    return DateFrom(parts, {order.month, order.day, order.year});
}

std::string IsoDateText(const DateTime& date) {
    std::string text = FourDigits(date.year) + "-" + TwoDigits(date.month) + "-" + TwoDigits(date.day);
    if (HasTime(date)) {
        text += " " + TwoDigits(date.hour) + ":" + TwoDigits(date.minute) + ":" + TwoDigits(date.second);
    }
    return text;
}

} // namespace quavernet
