// What the commands and dialogs that edit files work on. Made by the main window.
#pragma once

#include <functional>
#include <string>

namespace quavernet {

class GridView;
class LibraryViews;
class LongWork;
class PlayerWindow;

struct EditingParts {
    GridView& Grid;
    LibraryViews& Views;
    PlayerWindow& Player;
    LongWork& Work; ///< Told of files that got other names.
    /// Shows the covers of a key as CoverKey makes it. Empty: there are none, and no label leads to them.
    std::function<void(const std::string& key)> ShowCovers = {};
};

} // namespace quavernet
