// The media engine beside bare libmpv: from a request to the track that plays, and the processor time of
// playing. main runs it.
#pragma once

#include <string>

namespace quavernet::bench {

/// Measures and prints the lines. `music` holds MP3 files among others. Sound goes nowhere, in the time that
/// music takes.
void PlayerJobs(const std::string& music, int rounds);

} // namespace quavernet::bench
