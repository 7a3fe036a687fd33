// A connection to the session bus, made without waiting for it. Used by what the program says on the bus.
#pragma once

#include <QString>

#include <functional>
#include <memory>
#include <string>

namespace quavernet {

/// Connects under a name of its own, in a thread that nobody waits for: a bus that hangs holds up nothing
/// else. Then `taken` runs in the message loop with whether there is a connection of that name; it is not
/// called, and the connection is given up, if `life` has gone by then. `busAddress` empty: the bus of the
/// session. Where the environment knows of none, none is looked for: the library would try to start one.
/// Nothing is called then, and the name is empty.
QString ConnectAside(const std::string& busAddress, const std::weak_ptr<bool>& life,
                     const std::function<void(bool isConnected)>& taken);

} // namespace quavernet
