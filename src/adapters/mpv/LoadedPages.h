// Gives back the memory that loading the engine's library took for the moment. Used where it is loaded.
#pragma once

#include <cstdint>
#include <set>

namespace quavernet::mpv {

/// Where each shared library of this process begins.
using LoadedObjects = std::set<std::uintptr_t>;

LoadedObjects ObjectsInMemory();

/// Takes the code and the constants of all libraries but these out of the process's memory. The system brings
/// back what is used, page by page, from its own. Binding the two hundred libraries of the engine to each
/// other reads 20 MB of them, which playing never looks at again.
void GiveBackPages(const LoadedObjects& except);

} // namespace quavernet::mpv
