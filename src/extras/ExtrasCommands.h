// The commands of covers and charts in the menus and on the toolbar. Made once by the main window, before its
// menus.
#pragma once

class QWidget;

namespace quavernet {

class CommandRegistry;
class CoversHost;
class LibraryViews;
class PlayerWindow;

/// What the commands of this room work on.
struct ExtrasParts {
    CoversHost& Covers;
    LibraryViews& Views;
    PlayerWindow& Player;
};

/// `owner` is the window that the dialogs stand over.
void RegisterExtrasCommands(CommandRegistry& commands, const ExtrasParts& parts, QWidget& owner);

} // namespace quavernet
