// The commands of covers and charts in the menus and on the toolbar. Made once by the main window, before its
// menus.
#pragma once

class QWidget;

namespace quavernet {

class CommandRegistry;

/// `owner` is the window that the dialogs stand over.
void RegisterExtrasCommands(CommandRegistry& commands, QWidget& owner);

} // namespace quavernet
