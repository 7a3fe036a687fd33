// The table of process-wide state: the way in which the subsystems meet. One instance; the test fixture
// resets it. Beside it stand the services that RealServices fills in.
#pragma once

#include "app/Collections.h"
#include "app/CurrentFile.h"
#include "app/RandomNumbers.h"
#include "app/StartFaults.h"
#include "platform/ADODB.h"
#include "platform/DateTime.h"
#include "platform/FileSystemObject.h"
#include "platform/OggInfoTool.h"
#include "platform/RegionalSettings.h"
#include "platform/Services.h"
#include "platform/TagComponent.h"
#include "platform/UserFiles.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace quavernet {

class Desktop;
class MediaPlayer;
class MediaRemote;
class ReadAhead;
class VorbisCommentTool;

struct MainModule {
    std::unique_ptr<ADODB::Connection> Connection; ///< The one open library, for the whole process.
    std::string ConnectionString;
    std::string Language;         ///< "GER" or "ENG"; read again from the settings at every string lookup.
    std::string HelpDocument;     ///< Name of the help document of the language.
    std::string ScreenResolution; ///< Screen size in pixels, for example "800x600".

    bool SuppressComboClick = false; ///< While set, a click on a filter combo does not reload the list.
    bool TreeLoaded = false;         ///< The category tree has been filled once.
    bool MainOpen = false;           ///< frmMain has run Form_Load and not yet finished Form_Unload.
    bool PlayerOpen = false;         ///< frmPlayer is loaded.
    bool CoversOpen = false;         ///< frmCovers is loaded.

    bool LoadOverSearch = false;      ///< Mirror of mnuOptionsLoadOverSearch.
    bool ScanLogEnabled = false;      ///< Mirror of mnuOptionsScanLog.
    bool UseExternalPlayer = false;   ///< Mirror of mnuExternalPlayer.
    bool AlwaysAddToPlaylist = false; ///< Mirror of mnuAddToPlaylist.

    std::string LetterFilter = "All";  ///< "All", "other" or one capital letter.
    std::string SortDirection = "ASC"; ///< "ASC" or "DESC".
    bool SortInterpret = true;         ///< Exactly one of the six flags is set.
    bool SortTitle = false;
    bool SortLength = false;
    bool SortQuality = false;
    bool SortFormat = false;
    bool SortSize = false;

    bool ShowInGridMode = false; ///< LoadDatabase runs for a request of the tree.
    bool ShowChartMode = false;  ///< LoadDatabase runs for a request of the charts dialog.
    bool ChartShowTop = false;   ///< The charts show the most played files, else the newest.
    bool ChartShowNew = false;   ///< They were opened for the newest files; read by nobody.

    RowTexts FilePaths;          ///< Files.Path of each listed row.
    RowTexts FileNames;          ///< Files.Name of each listed row.
    RowNumbers SelectedRows;     ///< Rows of the current multiple selection.
    KeyCollection TreeNodeData;  ///< Keys of the expanded tree nodes.
    StartFaults TreeFaults;      ///< What was wrong with the tree when it was loaded first; see LoadTree.
    StartFaults ListFaults;      ///< Rows that the list could not have shown at the start; see ListFaults.h.
    bool ListFaultsDue = false;  ///< They have yet to be noted.
    std::int32_t DetailsRow = 0; ///< Grid row from which the details dialog starts.
    std::int32_t GridCurrentRow = 0;
    std::int32_t GridTopRow = 0;

    std::int32_t RandomCount = 0; ///< Entries that the running random play or shuffle makes.
    quavernet::RandomNumbers RandomNumbers;

    bool ScanRunning = false; ///< A scan is in progress.
    DateTime ScanStartTime;   ///< When the running scan began.
    bool ActsAlone = false;   ///< A command is running in which no other one may act; see MayAct.h.
    bool TreeLoading = false; ///< The nodes that the tree shows are old ones; see MayAct.h.

    std::unique_ptr<quavernet::TagComponent> TagComponent; ///< The ID3v2 component.
    quavernet::CurrentFile CurrentFile;                    ///< Where the last scan or drop left off.
};

extern MainModule mainModule;

/// What the logic asks of the platform. Filled once by RealServices, or by the test fixture.
struct Services {
    SettingsStore* settings = nullptr;
    FileSystemObject* fileSystem = nullptr;
    UserFiles* files = nullptr;
    OggInfoTool* oggInfo = nullptr;
    VorbisCommentTool* oggComments = nullptr;
    Shell* shell = nullptr;
    MsgBox* msgBox = nullptr;
    CommonDialogs* dialogs = nullptr;
    Events* events = nullptr;
    Clock* clock = nullptr;
    HelpViewer* helpViewer = nullptr;
    Desktop* desktop = nullptr;     ///< Null: there is none.
    ReadAhead* readAhead = nullptr; ///< Null: files are read when they are wanted, and no sooner.
    RegionalSettings regional;
    std::function<std::unique_ptr<ADODB::Connection>()> createConnection;
    std::function<std::unique_ptr<TagComponent>()> createTagComponent;
    std::function<std::unique_ptr<MediaPlayer>()> createMediaPlayer; ///< One for each player window.
    std::function<std::unique_ptr<MediaRemote>()> createMediaRemote; ///< Empty: there is none.
};

extern Services services;

/// Releases Connection, FilePaths, FileNames, SelectedRows, TreeNodeData and TagComponent, in this order, and
/// ends the process at once, without a failure code.
[[noreturn]] void ExitProgram();

/// Path of a shell folder (5: the user's documents), cut at its first NUL; if the shell knows no such folder,
/// the text " - nicht definiert - " of the current language.
std::string GetSpecialFolderPath(int id);

/// True and the version of the help browser's component, or false if there is none.
bool GetIEVersion(std::int32_t& major, std::int32_t& minor, std::int32_t& build);

} // namespace quavernet
