// What a drop on the category tree is asked with, and what it answers. The tree's form makes the one and
// shows the other.
#pragma once

#include <string>
#include <vector>

namespace quavernet {

struct DropRequest {
    std::vector<std::string> Files; ///< Paths in the order of the drop; none if the drag's lookup failed.
    std::string NodeKey;            ///< Of the node under the mouse; empty: beside all nodes.
    bool Control = false;           ///< Ctrl is held, and no other of these keys.
};

/// What the form shows when a drop is over.
struct DropOutcome {
    bool Rebuild = false;   ///< The tree has to be built again, whatever was written. The rest tells how.
    bool FileAdded = false; ///< The library has new files, which the list shows unless it loads by search.
    bool HadFileTarget =
        false;             ///< Dropped on an entry: the place in the tree is kept and SelectKey selected.
    std::string SelectKey; ///< Key of an entry in the new tree; often there is none of that key.
};

} // namespace quavernet
