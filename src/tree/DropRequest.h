// What a drop on the category tree is asked with, and what it answers. The tree's form makes the one and
// shows the other.
#pragma once

#include <string>
#include <vector>

namespace quavernet {

struct DropRequest {
    std::vector<std::string>
        Files;           ///< Paths in the order of the drop; empty if the dragged entry's file was not found.
    std::string NodeKey; ///< Of the node under the mouse; empty: there is none.
    bool Control = false; ///< Ctrl is held, and no other of these keys.
};

/// What the form shows when a drop is over.
struct DropOutcome {
    bool Rebuild = false;   ///< The tree must be built again. The other members count only then.
    bool FileAdded = false; ///< The library has new files, which the list shows unless it loads by search.
    bool HadFileTarget =
        false; ///< Dropped on an entry: the place in the tree is kept and SelectKey selected.
    std::string
        Word; ///< How a drop of files or rows has ended, for the user; empty after a move in the tree.
    std::string SelectKey; ///< Key of an entry; the new tree often has no such key.
};

} // namespace quavernet
