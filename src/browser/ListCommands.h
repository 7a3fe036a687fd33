// The commands of the list: what it shows, when it is loaded, and what is done with the selected rows. Made
// once by the main window, before its menus.
#pragma once

namespace quavernet {

class CommandRegistry;
class Controls;
class GridView;
class LibraryViews;
class ListController;
class LongWork;

void RegisterListCommands(CommandRegistry& commands, ListController& list, GridView& grid, Controls& controls,
                          LongWork& work, LibraryViews& views);

} // namespace quavernet
