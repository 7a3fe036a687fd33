// The user's tree in bare SQLite: what the tree's jobs read and write, without anything of the program. Their
// floors.
#pragma once

#include "Floors.h"

#include <memory>
#include <string>
#include <vector>

namespace quavernet::bench {

/// Opens a library with as much memory for its pages as the program gives to its own.
std::unique_ptr<BareLibrary> OpenTree(const std::string& path);

/// Makes a library file of bare tables at `path` with the files and the tree of a library of the program's.
void CopyTree(const std::string& programLibrary, const std::string& path);

/// Reads what the tree shows, in one transaction: categories, entries, lengths, all unsorted.
void ReadTree(BareLibrary& library);

/// Deletes the files and their entries, and closes the gaps, in one transaction.
void DeleteFiles(BareLibrary& library, const std::vector<std::string>& paths);

/// Reads the lines of an exchange file, inserts its categories with a "1" after each name and its entries, in
/// one transaction.
void ImportEntries(BareLibrary& library, const std::string& exchangeFile);

} // namespace quavernet::bench
