// Writes the whole tree to an exchange file, from which TreeImport makes it again. Run by the commands of the
// file menu and of the tree's menu.
#pragma once

namespace quavernet {

class LongWork;
class TreeModel;

/// Asks for the file and writes the categories and entries of the library. Nothing happens for a tree without
/// categories. Throws RuntimeError if a statement or the file fails, or a table has more than 32767 rows; an
/// old file then stays as it was. Lets events run while the dialog is open.
void ExportTree(const TreeModel& tree, LongWork& work);

} // namespace quavernet
