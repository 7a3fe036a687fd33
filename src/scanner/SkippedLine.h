// The scan log's line about an entry that a walk passed over. Called by frmScanLog.
#pragma once

#include "platform/FileSystemObject.h"

#include <string>

namespace quavernet {

/// Path and reason in the current language; a reason that has no text of its own is told in the system's.
std::string SkippedLine(const SkippedEntry& entry);

} // namespace quavernet
