// The names of many files changed at once, without a window. quavernet_bench runs it.
#pragma once

#include <string>

namespace quavernet::bench {

/// `emptyLibrary` is the template; `work` a folder for the files and for two libraries.
void RenameJobs(const std::string& emptyLibrary, const std::string& work, int rounds);

} // namespace quavernet::bench
