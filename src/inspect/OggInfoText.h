// Reads the lines that the Ogg tool prints. Called by the Ogg pass for a batch of files, and by the details
// dialog for one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quavernet {

/// What the output tells of one file. All values are texts, empty if nothing told them.
struct OggFileInfo {
    std::string path;
    std::string name;    ///< The part of the path after the last "/".
    std::string bitRate; ///< Nominal, whole kilobits per second.
    std::string title;
    std::string performer;
    std::string album;
    std::string genre;
    std::string size;   ///< Data length in bytes.
    std::string length; ///< Play length in whole seconds.

    std::string comment; ///< The last four are for the details dialog.
    std::string year;
    std::string frequency; ///< Hz.
    std::string channels;

    std::string failure; ///< Why a line of this file could not be read; such a record must not be stored.

    bool operator==(const OggFileInfo&) const = default;
};

/// The files of the output, in its order: a file is complete when the next "Processing file" line comes while
/// a path is held, or at the end. Without any path the result is empty.
///
/// The keys are looked for anywhere in a line, whatever the line is about, and without regard to case
/// ("Nominal bitrate:" alone is compared in binary); a later line wins. So a folder called "Album" gives its
/// files an album, until a comment gives another, and a comment that speaks of a title becomes the title.
std::vector<OggFileInfo> ReadOggInfo(std::string_view output);

/// The same for an output about one file, in which nothing is ever cleared. A line that can't be read leaves
/// its value as it was: a file too long for the length has none, and all else is shown. Pictures are passed
/// over: the texts go back into the file, and a cover must not leave it without its year.
OggFileInfo ReadOggDetails(std::string_view output);

/// Whether a comment is a picture, whose encoded bytes can hold any short word by chance. A tab before the
/// key is passed over.
bool IsPictureComment(std::string_view comment);

} // namespace quavernet
