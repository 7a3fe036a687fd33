#include "mainwindow/MainParts.h"

#include "app/MainModule.h"
#include "app/PlayerWindow.h"
#include "browser/ListCommands.h"
#include "editing/EditingCommands.h"
#include "extras/ExtrasCommands.h"
#include "library/LibraryCommands.h"
#include "mainwindow/MainMenuTable.h"
#include "mainwindow/WindowCommands.h"
#include "output/OutputCommands.h"
#include "playback/PlaybackCommands.h"
#include "playback/SelectionPlaylist.h"
#include "scanner/AddDroppedFiles.h"
#include "scanner/ScanCommands.h"
#include "tree/ExchangeCommands.h"
#include "tree/TreeCommands.h"

#include <QMainWindow>

namespace quavernet {

namespace {

// All that may stand in a menu, on the toolbar or beside the search box.
std::vector<std::string_view> CommandNames() {
    std::vector<std::string_view> names = MainToolbar::Keys();
    names.insert(names.end(), {"cmdPlay", "cmdRandomize"});
    for (const MenuEntry& entry : MainMenuTable) {
        if (!entry.Is(MenuEntry::Menu) && !entry.Is(MenuEntry::Bar)) {
            names.push_back(entry.Name);
        }
    }
    return names;
}

} // namespace

MainParts::MainParts(QMainWindow& window, PlayerWindow& player, const SwitchControls& switchControls,
                     const std::function<void()>& loadStrings)
    : Commands(CommandNames()), Menu(*new MainMenu(window.menuBar())), Panes(*new MainPanes(&window, Drag)),
      Named(Menu, Panes.Toolbar1(), Panes), Work(window, Panes.Status()),
      List({Panes.Grid(), Panes.Filter(), Panes.Letters()}, Work, Named, switchControls, player),
      Tree(Panes.Tree(), Named, Commands, player), Views(List, Panes.Filter(), Tree, Named, switchControls),
      Scan(Work, Views, Named, window), TreeDrags(Panes.Tree(), Views, Drag, Scan.Driver(), Work),
      Covers(window) {
    window.setCentralWidget(&Panes);
    RegisterScanCommands(Commands, Scan, Named, window);
    RegisterListCommands(Commands, List, Panes.Grid(), Named, Work, Views);
    RegisterTreeCommands(Commands, Tree.Model(), Views, window);
    RegisterExchangeCommands(Commands, Tree.Model(), Work, Views, Scan.Driver());
    RegisterLibraryCommands(Commands, Work, Views);
    RegisterPlaybackCommands(Commands, {Panes.Grid().Selection(), Tree.Model(), player, Work}, window);
    RegisterEditingCommands(
        Commands,
        {Panes.Grid(), Views, player, Work, [this](const std::string& key) { Covers.ShowAlbum(key); }},
        window);
    RegisterExtrasCommands(Commands, {Covers, Views, player}, window);
    RegisterOutputCommands(Commands, {Work, Panes.Grid(), Named}, window);
    RegisterWindowCommands(Commands, Named, window, [this, loadStrings, &player] {
        loadStrings();
        if (mainModule.PlayerOpen) {
            player.LoadStrings();
        }
        Covers.LoadStrings();
    });
    QObject::connect(&List, &ListController::PlaySelectedFilesWanted, &List,
                     [] { PlaySelectedFiles(SelectedPaths()); });
    QObject::connect(&List, &ListController::ScanWanted, &List, [this] { (void)Commands.Run("mnuScan"); });
    Panes.Grid().WouldAddFiles = WouldAddFiles;
    QObject::connect(&Work, &MainWork::Ended, &List, [this] {
        if (!mainModule.ScanRunning) {
            List.ShowHint(true); // The library may have got its first files.
        }
    });
    Menu.Build(Commands);
    Panes.BuildCommands(Commands);
    QObject::connect(&Panes.Grid(), &GridView::FilesDropped, &List,
                     [this](const std::vector<std::string>& paths) { Scan.FilesDropped(paths); });
}

} // namespace quavernet
