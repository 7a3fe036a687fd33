#include "browser/ListQuery.h"

#include "app/TextHelpers.h"

namespace quavernet {

namespace {

bool IsPlainLetter(int code) {
    return (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z');
}

// Code of the umlaut that shows under a letter as well, or 0. The labels give capitals alone, so that a
// lower-case umlaut is listed under "other" only.
int UmlautUnder(const std::string& letter) {
    constexpr struct {
        char letter;
        int umlaut;
    } umlauts[] = {{'A', 196}, {'O', 214}, {'U', 220}, {'a', 228}, {'o', 246}, {'u', 252}};
    for (const auto& entry : umlauts) {
        if (letter.size() == 1 && letter.front() == entry.letter) {
            return entry.umlaut;
        }
    }
    return 0;
}

} // namespace

bool LetterMatch(std::string_view text, const std::string& letter) {
    // A letter goes over every row, and nearly all texts begin with plain ASCII: no umlaut can match there.
    if (!text.empty() && static_cast<unsigned char>(text.front()) < 0x80) {
        const char first = text.front();
        return letter == "other" ? !IsPlainLetter(first)
                                 : letter.size() == 1 && LowerAscii(first) == LowerAscii(letter.front());
    }
    if (letter == "other") {
        return !IsPlainLetter(FirstCharacterCode(text));
    }
    if (UpperAscii(LeftCharacters(text, 1)) == UpperAscii(letter)) {
        return true;
    }
    const int umlaut = UmlautUnder(letter);
    return umlaut != 0 && FirstCharacterCode(text) == umlaut;
}

} // namespace quavernet
