// The two halves of the inspection on a file that is already open, so that InspectFile opens it once.
#pragma once

#include "app/CurrentFile.h"
#include "inspect/FileBytes.h"

#include <string>

namespace quavernet {

/// Lets events run, as the one that opens the file does.
void ReadAudioInfo(const std::string& path, const FileBytes& bytes, CurrentFile& file);
void ReadTags(const std::string& path, const FileBytes& bytes, CurrentFile& file);

} // namespace quavernet
