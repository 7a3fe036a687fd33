// The commands that write the tree to a file and read one, each in the file menu and in the tree's menu. Made
// once by the main window, before its menus.
#pragma once

namespace quavernet {

class CommandRegistry;
class LibraryViews;
class LongWork;
class ScanDriver;
class TreeModel;

/// `tree` is the one that is shown: each load replaces its content.
void RegisterExchangeCommands(CommandRegistry& commands, const TreeModel& tree, LongWork& work,
                              LibraryViews& views, ScanDriver& driver);

} // namespace quavernet
