// Reads any text as a date, a number and a text of the code page under the regional settings of several
// countries, and writes what was read in every form that is read back. The input: a byte that chooses the
// settings, then the text.
#include "adapters/sqlite/DateColumns.h"
#include "app/TextHelpers.h"
#include "platform/CodePage.h"
#include "platform/DateTime.h"
#include "platform/RegionalSettings.h"
#include "platform/RuntimeError.h"

#include "FuzzInput.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <string>

namespace {

using namespace quavernet;
using fuzz::Require;

// As the reader of the system's settings makes them: four digits of the year, nothing quoted.
const std::array<RegionalSettings, 8> Countries = {
    {{",", ".", ".", "dd.MM.yyyy", false},
     {".", ",", "/", "M/d/yyyy", true},
     {".", ",", "/", "dd/MM/yyyy", false},
     {",", "\u202F", "/", "dd/MM/yyyy", false},
     {".", "", "-", "yyyy-MM-dd", false},
     {".", "'", ".", "d. M. yyyy", false},
     {"\u066B", "\u066C", "\u200F/", "d\u200F/M\u200F/yyyy", true},
     {",", "\u00A0", ". ", "yyyy. MM. dd.", false}}};

DateTime DayOf(DateTime date) {
    date.hour = date.minute = date.second = 0;
    return date;
}

void RequireDate(const DateTime& date, const RegionalSettings& regional) {
    Require(IsValidDate(date));
    Require(ParseDate(IsoDateText(date), regional) == date);
    Require(ParseDate(GeneralDateText(date, regional), regional) == date);
    Require(ParseDate(ShortDateText(date, regional), regional) == DayOf(date));
    Require(sqlite::StoredDate(sqlite::ShownDate(IsoDateText(date), regional), regional) ==
            IsoDateText(date));
    Require(DayMonthYearText(date, regional).size() == 8 + 2 * regional.dateSeparator.size());
    if (date.year > 100 && date.year < 9999) {
        Require(AddDays(AddDays(date, 40), -40) == date);
        Require(SecondsBetween(date, AddDays(date, 40)) == std::int64_t{40} * 86400);
        const DateTime later = AddMonths(date, 7);
        Require(IsValidDate(later) && later.day <= date.day && later.day >= std::min(date.day, 28));
        Require((later.year * 12 + later.month) - (date.year * 12 + date.month) == 7);
    }
}

void ReadDate(std::string_view text, const RegionalSettings& regional) {
    const auto date = ParseDate(text, regional);
    if (date) {
        RequireDate(*date, regional);
    }
    try {
        const std::string stored = sqlite::StoredDate(text, regional);
        Require(text.empty() ? stored.empty() : date && stored == IsoDateText(*date));
    } catch (const RuntimeError&) {
        Require(!date && !text.empty());
    }
    // A stored text that is no date is shown as it is.
    const std::string shown = sqlite::ShownDate(text, regional);
    Require(shown == text || ParseDate(shown, regional).has_value());
}

void RequireNumber(double value, const RegionalSettings& regional) {
    if (std::fabs(value) > 1.79e308) {
        return; // Rounded up to fifteen digits, the greatest numbers leave the range of a double.
    }
    for (const int decimals : {0, 2, 6}) {
        const std::string plain = FormatFixed(value, 1, decimals, regional);
        const std::string grouped = FormatNumber(value, decimals, regional);
        const auto read = ParseNumber(plain, regional);
        Require(read.has_value() && ParseNumber(grouped, regional) == read);
        // Half a unit of the last place shown, and what fifteen digits can't hold.
        const double error = 0.5 * std::pow(10.0, -decimals) + std::fabs(value) * 1e-14;
        Require(std::fabs(*read - value) <= error * 1.000001);
        Require(FormatFixed(*read, 1, decimals, regional) == plain || std::fabs(value) > 1e8);
    }
}

void ReadNumber(std::string_view text, const RegionalSettings& regional) {
    const double value = Val(text);
    Require(std::isfinite(value));
    RequireNumber(value, regional);
    if (const auto number = ParseNumber(text, regional)) {
        Require(std::isfinite(*number));
        RequireNumber(*number, regional);
    }
    double bits = 0;
    std::memcpy(&bits, text.data(), std::min(text.size(), sizeof bits));
    if (std::isfinite(bits)) {
        RequireNumber(bits, regional);
    }
    Require(!FormatFixedSingle(static_cast<float>(value), 2, 2, regional).empty());
}

void ReadCharacters(std::string_view text) {
    const std::string decoded = FromWindows1252(text);
    Require(IsValidUtf8(decoded) && CharacterCount(decoded) == text.size());
    Require(ToWindows1252(decoded) == text);
    Require(ToWindows1252(text).size() == CharacterCount(text));
    std::size_t count = 0;
    bool valid = true;
    for (std::string_view rest = text; !rest.empty(); ++count) {
        const std::size_t length = CharacterLength(rest);
        Require(length >= 1 && length <= 4 && length <= rest.size());
        const std::string character = EncodeUtf8(CodePoint(rest));
        const bool matches = character == rest.substr(0, length);
        Require(matches || (length == 1 && CodePoint(rest) == static_cast<unsigned char>(rest.front())));
        valid = valid && matches;
        const int code = Windows1252Code(rest.substr(0, length));
        Require(code >= -1 && code <= 255);
        rest.remove_prefix(length);
    }
    Require(count == CharacterCount(text) && valid == IsValidUtf8(text));
    for (const std::size_t cut : {std::size_t{0}, std::size_t{1}, std::size_t{30}, count}) {
        const std::size_t kept = std::min(cut, count);
        Require(CharacterCount(LeftCharacters(text, cut)) == kept);
        Require(text.starts_with(LeftCharacters(text, cut)) && text.ends_with(RightCharacters(text, cut)));
        if (cut <= count) {
            Require(DropRightCharacters(text, cut) == LeftCharacters(text, count - cut));
        }
    }
    Require(StripNulls(text).find('\0') == std::string::npos);
    Require(Trim(text) == TrimLeft(TrimRight(text)));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view text = fuzz::TextOf(data, size);
    const RegionalSettings& regional = Countries[fuzz::TakeByte(text) % Countries.size()];
    ReadDate(text, regional);
    ReadNumber(text, regional);
    ReadCharacters(text);
    return 0;
}
