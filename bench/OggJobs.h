// The reader of Ogg files, ten files a call as in a scan, beside bare reads and beside ogginfo itself. main
// runs it.
#pragma once

#include <string>

namespace quavernet::bench {

/// Measures and prints both lines. `music` holds nothing but intact Ogg files.
void OggJobs(const std::string& music, int rounds);

} // namespace quavernet::bench
