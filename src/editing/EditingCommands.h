// The commands that edit tags and names of files, in the main menu and in the list's context menu. Made once
// by the main window, before its menus.
#pragma once

#include "editing/EditingParts.h"

class QWidget;

namespace quavernet {

class CommandRegistry;

/// `owner` is the window above which the dialogs open.
void RegisterEditingCommands(CommandRegistry& commands, const EditingParts& parts, QWidget& owner);

} // namespace quavernet
