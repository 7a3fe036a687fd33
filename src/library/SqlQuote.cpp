#include "library/SqlQuote.h"

#include "app/TextHelpers.h"
#include "platform/RuntimeError.h"

#include <algorithm>

namespace quavernet {

namespace {

constexpr int SyntaxError = 1; // The engine's own number.

} // namespace

std::string SqlQuote(std::string_view text) {
    return ReplaceAll(text, "'", "''");
}

std::string SqlUnquote(std::string_view text) {
    return ReplaceAll(text, "''", "'");
}

std::string_view SqlPlain(std::string_view text) {
    if (text.find('\'') != std::string_view::npos) {
        throw RuntimeError(SyntaxError,
                           "Syntax error: an apostrophe in an unquoted text: " + std::string(text));
    }
    return text;
}

std::string_view SqlNumber(std::string_view text) {
    const std::string_view digits = text.substr(text.starts_with('-') ? 1 : 0);
    const bool plain = digits.find_first_not_of("0123456789.") == std::string_view::npos &&
                       std::count(digits.begin(), digits.end(), '.') <= 1;
    const bool hasDigit = digits.find_first_not_of('.') != std::string_view::npos;
    if (!text.empty() && (!plain || !hasDigit)) {
        throw RuntimeError(ErrorNumber::TypeMismatch, "Type mismatch");
    }
    return text;
}

} // namespace quavernet
