// The commands that edit tags and names of files, in the main menu and in the list's context menu. Made once
// by the main window, before its menus.
#pragma once

#include <functional>
#include <string>

class QWidget;

namespace quavernet {

class CommandRegistry;
class GridView;
class LibraryViews;
class LongWork;
class PlayerWindow;

/// What the commands of this room work on.
struct EditingParts {
    GridView& Grid;
    LibraryViews& Views;
    PlayerWindow& Player;
    LongWork& Work; ///< Its first panel shows the path of a file that got another name.
    /// Shows the covers of an album's key; empty: there are none.
    std::function<void(const std::string& key)> ShowCovers = {};
};

/// `owner` is the window that the dialogs stand over.
void RegisterEditingCommands(CommandRegistry& commands, const EditingParts& parts, QWidget& owner);

} // namespace quavernet
