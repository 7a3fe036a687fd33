// The clean-ups of file names, made for the names that downloads and rips bring along. They act on the whole
// name with its extension; called by the dialogs that rename files. Names are bytes, UTF-8 or not.
#pragma once

#include <string>
#include <string_view>

namespace quavernet {

/// The six umlauts as two plain letters each ("ä" is "ae", "Ä" is "Ae"). Compared byte by byte: a letter that
/// is followed by a combining mark of its own is another text and stays, and so does the sharp s.
std::string ChangeUmlauts(std::string name);

/// Without the digits 0 to 9. The extension ".mp3" loses its own, so a "3" is put after a name that then ends
/// in "mp", in any case of letters, also after one that really ends so. Blanks beside a number stay.
std::string RemoveNumbers(std::string name);

/// Without round brackets and what is between them. They are not counted: the first ")" ends what the first
/// "(" began. A "(" without a ")" takes the rest of the name, the extension too; a ")" without a "(" stays.
std::string RemoveBrackets(std::string_view name);

/// A blank in place of each underscore. Nothing is trimmed.
std::string ReplaceUnderscores(std::string name);

/// The last four characters of a name: the dot and three letters for most, the whole of a shorter name.
std::string FileExtension(std::string_view name);

/// The text with the extension at its end, which is put there unless it is there already, letter for letter:
/// ".mp3" is no ".MP3".
std::string WithExtension(std::string text, std::string_view extension);

} // namespace quavernet
