// What the user is told about a library that can't be used: the reason in a sentence, and the way back to a
// copy. Called by the start and by the event boundary, for the second text of their failure boxes.
#pragma once

#include "platform/LibraryError.h"

#include <string>

namespace quavernet {

/// The reason, the library's path, the copies beside it with the dates at which they were made, and where its
/// content is in doubt also how to put one back.
std::string LibraryFailureText(const LibraryError& error);

/// For a failure that says no more of itself than its description.
std::string FailureReasonText(const std::string& description);

} // namespace quavernet
