// The repair step of every start: a tree node's key is made of its category's name, so doubled names must go.
#pragma once

#include <functional>
#include <string>

namespace quavernet {

/// Removes from each doubled category name the row with the highest key, and that row's entries. A name that
/// is there three times keeps two rows until the next start. `showStatus` sets the panel "Scanning".
void CheckDatabase(const std::function<void(const std::string&)>& showStatus);

} // namespace quavernet
