#include "inspect/FileNameTags.h"

#include "app/LoadResString.h"
#include "app/TextHelpers.h"
#include "app/TextNumbers.h"
#include "inspect/modMp3Info.h"
#include "platform/CodePage.h"
#include "platform/RuntimeError.h"

#include <limits>
#include <vector>

namespace quavernet {

namespace {

constexpr std::size_t ExtensionLength = 4; // With its point.

// The name's pieces between the "-", trimmed; the last one loses the extension after it was trimmed and is
// not trimmed again. Throws RuntimeError if there is no extension to lose.
std::vector<std::string_view> Pieces(std::string_view name) {
    if (CharacterCount(name) > std::size_t{std::numeric_limits<std::int16_t>::max()}) {
        throw RuntimeError(ErrorNumber::Overflow, "Overflow"); // The walk counts in 16 bits.
    }
    std::vector<std::string_view> pieces;
    for (auto dash = name.find('-'); dash != std::string_view::npos; dash = name.find('-')) {
        pieces.push_back(Trim(name.substr(0, dash)));
        name.remove_prefix(dash + 1);
    }
    pieces.push_back(DropRightCharacters(Trim(name), ExtensionLength));
    return pieces;
}

// Whether `a` sorts after `b` by code points.
bool SortsGreater(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty()) {
        const char32_t left = CodePoint(a);
        const char32_t right = CodePoint(b);
        if (left != right) {
            return left > right;
        }
        a.remove_prefix(CharacterLength(a));
        b.remove_prefix(CharacterLength(b));
    }
    return !a.empty();
}

std::string Cut(std::string_view text) {
    return std::string(LeftCharacters(text, Id3v1Tag::TextWidth));
}

} // namespace

FileNameTags SplitFileName(std::string_view name) {
    const std::vector<std::string_view> pieces = Pieces(name);
    if (pieces.size() == 1) {
        return {.title = pieces[0], .performer = {}};
    }
    if (pieces.size() == 2) {
        return {.title = pieces[1], .performer = pieces[0]};
    }
    // Digits sort below letters: a track number in either place loses against the performer's name.
    return {.title = pieces[2], .performer = SortsGreater(pieces[0], pieces[1]) ? pieces[0] : pieces[1]};
}

void TagsFromFileName(CurrentFile& file) {
    Id3v1Tag& tag = file.Id3v1Tag;
    try {
        if (file.CurrentFileName.empty()) {
            file.CurrentFileName = FileNameFromPath(file.DetailsPath);
        }
        const FileNameTags tags = SplitFileName(file.CurrentFileName);
        const bool hasDash = file.CurrentFileName.find('-') != std::string::npos;
        tag.TagTitle = Cut(tags.title);
        tag.TagArtist = Cut(hasDash ? std::string(tags.performer) : LoadResString(Texts::Unknown));
        tag.TagGenre = NoGenre;
    } catch (const RuntimeError&) {
        tag.TagTitle = tag.TagArtist = Cut(LoadResString(Texts::Unknown));
    }
}

} // namespace quavernet
