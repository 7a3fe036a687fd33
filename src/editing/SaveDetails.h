// What a save of the details dialog does: the tag or the comments go into the file, the library's row to its
// new performer, title, album and genre, and the list is loaded again at its place. frmDetails calls it.
#pragma once

#include "app/CurrentFile.h"
#include "editing/FileDetails.h"
#include "platform/RuntimeError.h"

#include <cstdint>
#include <optional>
#include <string>

namespace quavernet {

class GridSelection;
class LibraryViews;

/// What the dialog holds when it is saved.
struct EditedDetails {
    DetailsTexts Texts;
    bool ToId3v1 = false;         ///< Else to version 2. Says nothing for an Ogg file.
    std::int64_t Genre = NoGenre; ///< Number of the selected entry of the genre list, also of a hidden one.
};

/// Writes the file, then the library; an Ogg file's row stays as it is. A version 1 tag that can't be written
/// is told in a box, and the library is written all the same. Gives the failure if anything else can't be
/// written, or if another program holds the library: file and library are then as they were. Throws
/// RuntimeError if a statement fails; what was written stays.
std::optional<RuntimeError> SaveDetails(DetailsFile& file, const EditedDetails& edited);

/// Tells in a box that a save was given up, and why.
void ShowSaveFailure(const std::string& path, const RuntimeError& failure);

/// Loads the list, unless it is loaded at a search alone, and brings row and top row back as far as they
/// still exist. Lets events run. Throws RuntimeError if the load fails.
void ReloadAfterSave(GridSelection& grid, LibraryViews& views);

/// The key of the covers of a performer's album: "AlbumID:" and "InterID:" with their numbers. Nothing if the
/// library does not know one of the two. Throws RuntimeError if a statement fails.
std::optional<std::string> CoverKey(const std::string& performer, const std::string& album);

} // namespace quavernet
