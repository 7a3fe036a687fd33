#include "scanner/ClockText.h"

#include <charconv>
#include <cstdlib>
#include <iterator>

namespace quavernet {

namespace {

// At least two digits, a sign before them: made six times a file, so without the general number formats.
void AppendTwoDigits(std::string& text, std::int32_t value) {
    char digits[16];
    const char* const end = std::to_chars(digits, std::end(digits), std::abs(value)).ptr;
    const auto size = static_cast<std::size_t>(end - digits);
    text.append(value < 0 ? "-" : "").append(size < 2 ? "0" : "").append(digits, size);
}

} // namespace

std::string ClockText(std::int32_t seconds) {
    const std::int32_t rest = seconds % 60;
    std::string text;
    AppendTwoDigits(text, seconds / 60 / 60);
    AppendTwoDigits(text += ':', seconds / 60 % 60);
    AppendTwoDigits(text += ':', rest == -1 ? 0 : rest);
    return text;
}

} // namespace quavernet
