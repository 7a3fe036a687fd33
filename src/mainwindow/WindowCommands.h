// The commands of the window itself: language, help, about, the player's options and the end. Made once by
// the main window, before its menus.
#pragma once

#include <functional>

class QWidget;

namespace quavernet {

class CommandRegistry;
class Controls;

/// `window` is the main window; `loadStrings` brings its texts into the current language.
void RegisterWindowCommands(CommandRegistry& commands, Controls& controls, QWidget& window,
                            const std::function<void()>& loadStrings);

} // namespace quavernet
