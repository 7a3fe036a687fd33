// Faults of the library that were there when the program started. They must not keep it from coming up, or
// nobody could change them with it: what they concern is left out, for the whole run. One that arises later
// is a failure. The loads of list and tree note them and ask; MainModule holds them.
#pragma once

#include "platform/RuntimeError.h"

#include <cstddef>
#include <map>
#include <string>

namespace quavernet {

class StartFaults {
public:
    /// The key tells what is at fault, whatever its name is later. The name is for the user.
    void Note(const std::string& key, const std::string& name, const RuntimeError& failure);

    /// Whether the same failure of the same thing was there at the start.
    bool Knows(const std::string& key, const RuntimeError& failure) const;

    std::size_t Count() const { return m_told.size(); }

    /// The heading and the first faults in one line; empty if there are none.
    std::string Text(const std::string& heading) const;

    bool operator==(const StartFaults&) const = default;

private:
    std::map<std::string, std::string> m_told; ///< By key and failure.
};

} // namespace quavernet
