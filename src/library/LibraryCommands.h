// The commands on the library as a whole. Made once by the main window, before its menus.
#pragma once

namespace quavernet {

class CommandRegistry;
class LibraryViews;
class LongWork;

void RegisterLibraryCommands(CommandRegistry& commands, LongWork& work, LibraryViews& views);

} // namespace quavernet
