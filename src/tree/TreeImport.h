// Makes categories and entries from an exchange file that TreeExport has written, here or on another machine.
// Run by the commands of the file menu and of the tree's menu.
#pragma once

namespace quavernet {

class LibraryViews;
class LongWork;
class ScanDriver;

/// Asks for the file and adds what is in it to the tree; audio files that the library doesn't know join it.
/// What is there stays: a category whose name is taken gets a number after it. Ends with a box if lines had
/// to be left out, because their file is missing or they are no entries. The tree is built again in any case,
/// also after the dialog was cancelled. Throws RuntimeError if a statement or the reading of the file fails;
/// what was written stays. Lets events run while files are added, in the dialog and in the box.
void ImportTree(LongWork& work, LibraryViews& views, ScanDriver& driver);

} // namespace quavernet
