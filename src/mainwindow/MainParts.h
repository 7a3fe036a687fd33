// The parts of the main window in order of dependency: each is given what it uses when it is made. frmMain
// owns them; the start, tests and benchmarks reach them through it.
#pragma once

#include "app/CommandRegistry.h"
#include "app/DragState.h"
#include "browser/ListController.h"
#include "extras/CoversHost.h"
#include "mainwindow/MainControls.h"
#include "mainwindow/MainMenu.h"
#include "mainwindow/MainPanes.h"
#include "mainwindow/MainViews.h"
#include "mainwindow/MainWork.h"
#include "scanner/ScanController.h"
#include "tree/TreeDragDrop.h"
#include "tree/TreePane.h"

#include <functional>

class QMainWindow;

namespace quavernet {

class PlayerWindow;

class MainParts {
public:
    /// `switchControls` and `loadStrings` are the window's own. Throws RuntimeError if a command is
    /// registered under a name that no menu and no toolbar knows, or twice.
    MainParts(QMainWindow& window, PlayerWindow& player, const SwitchControls& switchControls,
              const std::function<void()>& loadStrings);

    DragState Drag; ///< Written and read by list and tree.
    CommandRegistry Commands;
    MainMenu& Menu; ///< Owned by the window, like the panes.
    MainPanes& Panes;
    MainControls Named;
    MainWork Work;
    ListController List;
    TreePane Tree;
    MainViews Views;
    ScanController Scan;
    TreeDragDrop TreeDrags;
    CoversHost Covers;
};

} // namespace quavernet
