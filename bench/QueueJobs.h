// The play queue at its full length: filled, loaded, shuffled, without a window and without an engine.
// quavernet_bench runs them.
#pragma once

#include <string>

namespace quavernet::bench {

/// `library` is one of MakeLibrary with as many files as the queue takes; `work` a folder for a bare library
/// and for empty files of a playlist.
void QueueJobs(const std::string& library, const std::string& work, int rounds);

} // namespace quavernet::bench
