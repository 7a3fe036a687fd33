// Writes one Ogg file's record into the library, in the Ogg pass's own way: other statements than
// StoreFileRecord has, another date, and drives with their final "/". Called by ReadOggBatches.
#pragma once

#include "scanner/SavedLog.h"

#include <string>

namespace quavernet {

/// The eleven texts of the store. Date and drive come in empty and are set inside; empty names are filled.
struct OggRecord {
    std::string title;
    std::string performer;
    std::string quality; ///< Kilobits per second.
    std::string length;  ///< Seconds.
    std::string name;
    std::string path;
    std::string size; ///< Bytes of the audio data.
    std::string date;
    std::string genre;
    std::string drive;
    std::string album;
};

/// Finds or creates the lookup rows, then inserts the file or updates the rows with its path; true is
/// returned for a new row. A failing statement or a missing file throws RuntimeError; the rows written before
/// stay. Lets events run once all is written.
bool StoreOggRecord(OggRecord& record, SavedLog& log);

/// Title and performer from the name of a path; both are text 347 if it is too short to be split.
struct OggNames {
    std::string title;
    std::string performer; ///< Empty where the name holds no "-".
};
OggNames OggTagsFromFileName(const std::string& path);

} // namespace quavernet
