// The two halves of the inspection on a file that is already open, so that InspectFile opens it once.
#pragma once

#include "inspect/FileBytes.h"

#include <string>

namespace quavernet {

void ReadAudioInfo(const std::string& path, const FileBytes& file);
void ReadTags(const std::string& path, const FileBytes& file);

} // namespace quavernet
