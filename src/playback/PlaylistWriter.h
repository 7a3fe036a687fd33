// The form of a playlist as the program writes it, for itself and for other players. Every command that
// writes one goes through here: the list's selection, a category, the player's queue, random play.
#pragma once

#include "platform/ADODB.h"
#include "platform/UserFiles.h"

#include <memory>
#include <string>

namespace quavernet {

/// One playlist. Names and paths are written as the library keeps them, byte for byte: a file's name is in
/// the code set of the locale already. Line breaks in them alone are not: a title gets blanks, a path is
/// written as LineOfFile says. Lines end in CR LF. Gives up without a trace if it goes before Close.
class PlaylistWriter {
public:
    enum class Place {
        Chosen,    ///< A file that the user has named. A link leads to the file that is written.
        Temporary, ///< One in GetTempDir, where others write too: for the user alone, no link followed.
    };

    /// Begins the file with "#EXTM3U". What was there before stays until Close. Throws RuntimeError if it
    /// can't be written there.
    explicit PlaylistWriter(const std::string& path, Place place = Place::Chosen);

    /// Writes one entry: its length in seconds as the library keeps it, "0" for a null, and as title the
    /// name without its last four characters, whatever they are. Throws RuntimeError 5 for a shorter name
    /// (the entry is then left out as a whole), and if the file can't be written.
    void Add(const ADODB::Field& name, const ADODB::Field& length, const std::string& path);

    /// Puts the file into its place. Throws RuntimeError if that fails; the old one is then still there.
    /// Called last.
    void Close() { m_file->Keep(); }

private:
    std::unique_ptr<NewFile> m_file;
};

} // namespace quavernet
