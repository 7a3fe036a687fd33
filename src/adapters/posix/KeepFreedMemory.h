// How much of the memory that the program gives up stays with it. Called once, at the start.
#pragma once

namespace quavernet {

/// Memory that is freed stays with the process, up to 64 MB of it: a list that is loaded again needs as much
/// as the one before, and the system takes longer to take the pages and to give others than a search takes.
void KeepFreedMemory();

} // namespace quavernet
