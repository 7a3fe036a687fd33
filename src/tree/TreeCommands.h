// The commands of the category tree: its menu, and what the main menu has of it. Made once by the main
// window, before its menus.
#pragma once

class QWidget;

namespace quavernet {

class CommandRegistry;
class LibraryViews;
class TreeModel;

/// `owner` is the parent window of the dialogs. `tree` is the one that is shown: each load replaces its
/// content.
void RegisterTreeCommands(CommandRegistry& commands, TreeModel& tree, LibraryViews& views, QWidget& owner);

} // namespace quavernet
