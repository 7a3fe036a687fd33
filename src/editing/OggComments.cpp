#include "editing/OggComments.h"

#include "app/TextHelpers.h"
#include "inspect/OggInfoText.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace quavernet {

namespace {

// The words are looked for anywhere in the first line, in key and text, so that "ALBUMARTIST=..." goes as
// "ARTIST=..." does. Further lines belong to the comment that they end.
bool IsKeptComment(std::string_view comment) {
    constexpr std::array<std::string_view, 6> Words{"TITLE", "ARTIST", "GENRE", "ALBUM", "DATE", "COMMENT"};
    const std::string_view line = comment.substr(0, comment.find('\n'));
    return IsPictureComment(comment) ||
           std::none_of(Words.begin(), Words.end(),
                        [line](std::string_view word) { return ContainsIgnoringCase(line, word); });
}

} // namespace

std::vector<std::string> EditedComments(const DetailsTexts& texts, const std::vector<std::string>& old) {
    std::vector<std::string> comments{"TITLE=" + texts.Title, "ARTIST=" + texts.Performer,
                                      "GENRE=" + texts.Genre, "ALBUM=" + texts.Album,
                                      "DATE=" + texts.Year,   "COMMENT=" + texts.Comment};
    std::copy_if(old.begin(), old.end(), std::back_inserter(comments), IsKeptComment);
    return comments;
}

} // namespace quavernet
