// The commands of the scan: start and cancel, its options, scan path and reminder. Made once by the main
// window, before its menus.
#pragma once

class QWidget;

namespace quavernet {

class CommandRegistry;
class Controls;
class ScanController;

/// `owner` is the window above which the dialogs open.
void RegisterScanCommands(CommandRegistry& commands, ScanController& scan, Controls& controls,
                          QWidget& owner);

} // namespace quavernet
