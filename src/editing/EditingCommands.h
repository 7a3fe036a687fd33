// The commands that edit tags and names of files, in the main menu and in the list's context menu. Made once
// by the main window, before its menus.
#pragma once

class QWidget;

namespace quavernet {

class CommandRegistry;
class LongWork;

/// What the commands of this room work on.
struct EditingParts {
    LongWork& Work; ///< Its first panel shows the path of a file that got another name.
};

/// `owner` is the window that the dialogs stand over.
void RegisterEditingCommands(CommandRegistry& commands, const EditingParts& parts, QWidget& owner);

} // namespace quavernet
