// Takes any bytes as the name of a file: through the clean-ups, beside a slow second reading of each, and
// through the field in which names are edited.
#include "adapters/qt/NameText.h"
#include "editing/FileNameTools.h"
#include "platform/Utf8.h"

#include "FuzzInput.h"

#include <string>
#include <string_view>

namespace {

using namespace quavernet;
using fuzz::Require;

bool IsDigit(char c) {
    return std::string_view("0123456789").find(c) != std::string_view::npos;
}

// Characters of a name, one after the other, as a piece of the name; an invalid byte is one.
template <typename Action> void ForEachCharacter(std::string_view name, Action action) {
    for (std::size_t length = 0; !name.empty(); name.remove_prefix(length)) {
        length = CharacterLength(name);
        action(name.substr(0, length));
    }
}

std::string UmlautsByCharacter(std::string_view name) {
    std::string result;
    ForEachCharacter(name, [&](std::string_view character) {
        const std::string_view umlauts = "\u00e4\u00c4\u00fc\u00dc\u00f6\u00d6";
        const auto at = character.size() == 2 ? umlauts.find(character) : std::string_view::npos;
        result += at == std::string_view::npos ? character : std::string_view("aeAeueUeoeOe").substr(at, 2);
    });
    return result;
}

std::string BracketsByPiece(std::string_view name) {
    std::string result;
    for (;;) {
        const auto open = name.find('(');
        result += name.substr(0, open);
        const auto close = open == std::string_view::npos ? open : name.find(')', open);
        if (close == std::string_view::npos) {
            return result;
        }
        name.remove_prefix(close + 1);
    }
}

std::string NumbersByCharacter(std::string_view name) {
    std::string result;
    ForEachCharacter(name,
                     [&](std::string_view c) { result += IsDigit(c.front()) ? std::string_view() : c; });
    for (const char* end : {"mp", "Mp", "mP", "MP"}) {
        if (result.ends_with(end)) {
            return result + "3";
        }
    }
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string name(fuzz::TextOf(data, size));
    Require(ChangeUmlauts(name) == UmlautsByCharacter(name));
    Require(RemoveNumbers(name) == NumbersByCharacter(name));
    Require(RemoveBrackets(name) == BracketsByPiece(name));
    const std::string blanks = ReplaceUnderscores(name);
    Require(blanks.size() == name.size() && blanks.find('_') == std::string::npos);

    const std::string extension = FileExtension(name);
    Require(name.ends_with(extension) && CharacterCount(extension) <= 4);
    Require(WithExtension(name, extension) == name);
    Require(WithExtension("x", extension).ends_with(extension));

    Require(FromNameText(ToNameText(name)) == name);
    return 0;
}
