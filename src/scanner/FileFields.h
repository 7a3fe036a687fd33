// Fills the values of a record that come from the file system. Called for each file before the store: by the
// search and by the drop handlers.
#pragma once

#include "app/CurrentFile.h"
#include "platform/FileSystemObject.h"

namespace quavernet {

/// CurrentPath, CurrentFileName, FileDate, FileName, FileSize, FileDrive and FilePath, in this order.
void FillFileFields(const FileFacts& facts, CurrentFile& file);

} // namespace quavernet
