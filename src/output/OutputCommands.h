// The commands that bring the library elsewhere: encoding of WAV files and printing, in the menus and on the
// toolbar. Made once by the main window, before its menus.
#pragma once

class QWidget;

namespace quavernet {

class CommandRegistry;
class Controls;
class GridView;
class LongWork;

/// What the commands of this room work on.
struct OutputParts {
    LongWork& Work;
    GridView& Grid;     ///< What is printed.
    Controls& Switches; ///< Of the toolbar's "cancel", which ends the printing.
};

/// `owner` is the window that the dialogs stand over.
void RegisterOutputCommands(CommandRegistry& commands, const OutputParts& parts, QWidget& owner);

} // namespace quavernet
