// What a drag inside the program carries from the press of the mouse to the drop: where it began and which
// node was under the mouse. List and tree write it, the drop on the tree reads it. The window's parts own the
// one instance.
#pragma once

#include <string>

namespace quavernet {

struct DragState {
    /// Set by each press on the tree. Both flags false: a drag from outside.
    bool DragFromTree = false;

    /// Set by each press on the list, which clears DragFromTree and the three texts.
    bool GridDragging = false;

    std::string DragText; ///< Text of the node under the mouse.

    /// Of an entry its position; of a category its key from the third character on.
    std::string DragPosition;

    std::string DragCategory; ///< Name of the category of the node, read from its parent's key.
    std::string DragFilePath; ///< Path of the file of the entry under the last press.
};

} // namespace quavernet
