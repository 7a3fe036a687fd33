// Audio files dropped from other programs join the library without a scan. Called by the drop event of the
// list; the single-file step also by the drop on the tree and by the import of a tree.
#pragma once

#include <string>
#include <vector>

namespace quavernet {

struct CurrentFile;
struct FileFacts;
class LongWork;
class NewFilesAhead;
class ScanDriver;
class ScanView;

/// Whether a drop of these files would store any: a folder, a playlist or a file that the library knows adds
/// nothing. Of a long list only the first files are looked up, and the rest counts as unknown.
bool WouldAddFiles(const std::vector<std::string>& paths);

/// Stores each dropped file that is an MP3, WAV or Ogg file and not known yet, and loads the list if one was
/// stored. A failure ends the drop silently; files stored so far stay. So does a list of more than 32767
/// paths, after that number. The panel Scanning tells how many joined. While a scan runs nothing is taken.
/// Lets events run, in which another drop may join the library.
void AddDroppedFiles(const std::vector<std::string>& paths, ScanDriver& driver, ScanView& view,
                     LongWork& work);

/// Inspects one file and stores it. `file` is the caller's own record, of the file before this one, and its
/// DetailsPath must hold this path. Throws RuntimeError if the file is missing or a statement fails. Lets
/// events run: no handler inside them may touch `file`.
void AddDroppedFileToLibrary(const std::string& path, CurrentFile& file, NewFilesAhead& ahead,
                             ScanDriver& driver);

/// The two halves of AddDroppedFileToLibrary, for a caller whose error mode changes between them.
FileFacts InspectDroppedFile(const std::string& path, CurrentFile& file, NewFilesAhead& ahead);
void StoreDroppedFile(const FileFacts& facts, CurrentFile& file, ScanDriver& driver);

} // namespace quavernet
