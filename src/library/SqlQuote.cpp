#include "library/SqlQuote.h"

#include "app/TextHelpers.h"

namespace quavernet {

std::string SqlQuote(std::string_view text) {
    return ReplaceAll(text, "'", "''");
}

std::string SqlUnquote(std::string_view text) {
    return ReplaceAll(text, "''", "'");
}

} // namespace quavernet
