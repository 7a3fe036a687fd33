#include "app/TextHelpers.h"

#include "platform/CodePage.h"
#include "platform/RuntimeError.h"

#include <algorithm>

namespace quavernet {

std::string_view TrimLeft(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

std::string_view TrimRight(std::string_view text) {
    const auto last = text.find_last_not_of(' ');
    return last == std::string_view::npos ? std::string_view() : text.substr(0, last + 1);
}

std::string_view Trim(std::string_view text) {
    return TrimRight(TrimLeft(text));
}

bool ContainsIgnoringCase(std::string_view text, std::string_view part) {
    return std::search(text.begin(), text.end(), part.begin(), part.end(),
                       [](char a, char b) { return LowerAscii(a) == LowerAscii(b); }) != text.end() ||
           part.empty();
}

std::string StripAtNull(std::string_view text) {
    return std::string(text.substr(0, text.find('\0')));
}

std::string StripNulls(std::string_view text) {
    std::string result;
    std::copy_if(text.begin(), text.end(), std::back_inserter(result), [](char c) { return c != '\0'; });
    return std::string(Trim(result));
}

std::string ReplaceAll(std::string_view text, std::string_view part, std::string_view by) {
    std::string result;
    std::size_t from = 0;
    auto found = part.empty() ? std::string_view::npos : text.find(part);
    for (; found != std::string_view::npos; found = text.find(part, from)) {
        result.append(text.substr(from, found - from)).append(by);
        from = found + part.size();
    }
    return result.append(text.substr(from));
}

int FirstCharacterCode(std::string_view text) {
    if (text.empty()) {
        throw RuntimeError(ErrorNumber::InvalidProcedureCall, "Invalid procedure call or argument");
    }
    return Windows1252Code(text.substr(0, CharacterLength(text)));
}

} // namespace quavernet
