// The commands of the list: what it shows and when it is loaded. Made once by the main window, before its
// menus.
#pragma once

namespace quavernet {

class CommandRegistry;
class Controls;
class GridView;
class ListController;

void RegisterListCommands(CommandRegistry& commands, ListController& list, GridView& grid,
                          Controls& controls);

} // namespace quavernet
