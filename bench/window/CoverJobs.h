// The covers' window: its list of albums, and a large picture on the screen. quavernet_window_bench runs it.
#pragma once

#include <string>

namespace quavernet::bench {

/// Runs after the start; another library is open afterwards. `work` is a folder for pictures and for that
/// one.
void CoverJobs(const std::string& work, int rounds);

} // namespace quavernet::bench
