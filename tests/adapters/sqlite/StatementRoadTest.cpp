// The road of each statement that the program sends: which pieces of the connection take it. The statements
// are those of the procedures themselves, so that another blank in one of them shows here.
#include "support/StatementRoad.h"

#include "support/EngineStatements.h"
#include "support/OggFiles.h"
#include "support/QueryPlans.h"
#include "support/RealFiles.h"
#include "support/RecordingPlayer.h"
#include "support/RecordingPlayerView.h"
#include "support/ScanTest.h"
#include "support/ScriptedPlayer.h"
#include "support/SelectionViewDouble.h"

#include "adapters/vorbis/OggInfoReader.h"
#include "browser/FilterLists.h"
#include "browser/GridOpen.h"
#include "browser/ListFaults.h"
#include "browser/LoadDatabase.h"
#include "extras/Chart.h"
#include "extras/TopListOptions.h"
#include "library/CleanDatabase.h"
#include "library/DatabaseCheck.h"
#include "playback/PlayQueue.h"
#include "playback/RemoteStatus.h"
#include "scanner/CheckReminder.h"
#include "scanner/OggBatches.h"
#include "scanner/ReminderSettings.h"
#include "tree/LoadTree.h"
#include "tree/TreeEvents.h"
#include "tree/TreeExport.h"
#include "tree/TreeImport.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;

const std::string listed =
    "Select F.Path, F.SizeInBytes, T.Name, I.Interpret, Q.Quality, F.File_id, F.Length, F.Name, E.Extension "
    "from Files F, Titel T, Interpret I, Quality Q, Extensions E where F.Title_id = T.Title_id and "
    "F.Inter_id "
    "= I.Inter_id and Q.Quality_id = F.Quality_Id and F.Extension_id = E.Extension_id";

class SilentSort : public SortView {
public:
    void SetRedraw(bool) override {}
    void SetHeaderPicture(const SortArrow&) override {}
    void LoadDatabase(const std::string&) override {}
};

// The engine is watched from before the library is opened. Each procedure runs at least twice, so that a
// later statement can meet what an earlier one has left.
class StatementRoadTest : private EngineStatements, public ScanTest {
protected:
    StatementRoadTest() {
        services.oggInfo = &m_oggInfo;
        mainModule.SortInterpret = false;
    }

    void ScanSongs() {
        for (const char* name : {"a.mp3", "b.mp3"}) { // Of one album.
            WriteMp3(name);
            Scan();
        }
        Write("c.wav", WaveBytes());
        Write("d.mp3", Mp3Bytes("Song", "Red", "Other"));
        Scan();
        Scan();
        view.options.QuickScan = true;
        Scan();
        view.options.QuickScan = false;
    }

    void ScanOggs() {
        ScanDriver withOgg(work, view, log, &m_oggPass);
        // On a busy machine a commit may come between two lookups, which are not remembered then; not between
        // all.
        for (const char* name : {"a.ogg", "b.ogg", "d.ogg", "e.ogg", "f.ogg"}) {
            Write(name, EncodedOgg::Stereo());
            withOgg.StartScan();
        }
        Write("c.ogg", EncodedOgg::Mono());
        withOgg.StartScan();
        view.options.QuickScan = true;
        withOgg.StartScan();
        view.options.QuickScan = false;
    }

    void LoadLists() {
        ListFilter all;
        LoadDatabase(all, "", work, [] {});
        for (bool MainModule::*const flag :
             {&MainModule::SortInterpret, &MainModule::SortTitle, &MainModule::SortLength,
              &MainModule::SortQuality, &MainModule::SortFormat, &MainModule::SortSize}) {
            mainModule.*flag = true;
            LoadDatabase(all, "", work, [] {});
            mainModule.*flag = false;
        }
        for (const char* word : {"a.mp3", "b.mp3"}) {
            ListFilter search;
            search.SearchText = word;
            LoadDatabase(search, "", work, [] {});
        }
        for (const int key : {1, 2}) {
            ListFilter chosen;
            chosen.DriveId = chosen.GenreId = chosen.AlbumId = key;
            LoadDatabase(chosen, "", work, [] {});
        }
        mainModule.ShowInGridMode = true;
        for (const char* list : {"1,2", "2,1"}) {
            LoadDatabase(all, list, work, [] {});
        }
        mainModule.ShowInGridMode = false;
    }

    /// A category with the first two files, as the tree's commands make it. Another program's work.
    void MakeCategory() {
        const auto other = OpenLibrary(libraryPath);
        other->Execute("Insert into Categories (Category) values ('Jazz')");
        for (const char* file : {"1, 1, 1, 'Jazz', 'a.mp3'", "2, 1, 2, 'Jazz', 'b.mp3'"}) {
            other->Execute("Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) "
                           "values (" +
                           std::string(file) + ")");
        }
    }

    void UseTree() {
        RecordingPlayer player{calls};
        TreeModel tree;
        mainModule.UseExternalPlayer = true;
        for (const char* key : {"file1pos1", "file2pos2"}) {
            quavernet::LoadTree(tree);
            tree.Select(key);
            TreeDblClick(tree, player);
        }
    }

    /// Two imports of files that the library knows, the second with names that are taken, and two exports.
    void ExchangeTree() {
        dialogs.file = libraryFolder / "tree.qvn";
        WriteBytes(*dialogs.file, "#Categories\nBlues\nSoul\n#Files\n1,Blues,a.mp3," + (music / "a.mp3") +
                                      "\n2,Soul,b.mp3," + (music / "b.mp3") + "\n");
        TreeModel tree;
        tree.Add(&tree.Add(nullptr, "Parent", "", "", ""), "CAT_Blues", "", "", "");
        for (int round = 0; round < 2; ++round) {
            ImportTree(work, m_views, driver);
        }
        for (int round = 0; round < 2; ++round) {
            ExportTree(tree, work);
        }
    }

    /// Fills the queue in every way, starts entries in both ways, tells the desktop of them and writes it.
    void UsePlayer() {
        ScriptedPlayer player{calls};
        RecordingPlayerView window{calls};
        PlayQueue queue{player, window};
        window.Show(queue);
        queue.Form_Load();
        mainModule.FilePaths.Clear();
        for (const char* name : {"a.mp3", "b.mp3"}) {
            mainModule.FilePaths.Add(music / name);
        }
        mainModule.SelectedRows.AddRange(1, 2);
        TreeModel tree;
        quavernet::LoadTree(tree);
        queue.FillPlaylist();
        for (const char* key : {"file1pos1", "file2pos2"}) {
            tree.Select(key);
            queue.FillPlaylistFromTree(1, tree);
        }
        for (int round = 0; round < 2; ++round) {
            tree.Select("CAT_Jazz");
            queue.FillPlaylistFromTree(2, tree);
        }
        for (const char* number : {"1", "2"}) {
            queue.FillRandomPlaylist(number, 1);
            queue.AddPlaylist(music / (number == std::string("1") ? "a.mp3" : "b.mp3"));
        }
        RemoteStatus remote;
        for (const std::int16_t entry : {std::int16_t{1}, std::int16_t{2}}) {
            queue.PlayFile(entry);
            (void)remote.Read(queue, player);
            queue.PlayFileFromTree(entry);
        }
        queue.WritePlayerPlaylist(libraryFolder / "List.m3u");
    }

    void CleanTwoFiles() {
        std::filesystem::remove(music / "a.mp3");
        std::filesystem::remove(music / "b.mp3");
        CleanDatabase(work, m_views);
        CleanDatabase(work, m_views);
    }

    void UseReminder() {
        ReminderChoice daily;
        daily.chkRemind = daily.optDaily = true;
        for (int day = 1; day <= 2; ++day) {
            LoadReminderSettings();
            SaveReminderSettings(daily);
            SaveReminderSettings(daily);
            clock.now.day += 1;
            bool scan = false;
            CheckReminder(scan, [] {});
        }
    }

    LibraryViewsDouble m_views;
    OggInfoReader m_oggInfo{RealFiles()};
    OggBatches m_oggPass;
};

TEST_F(StatementRoadTest, OfAScan) {
    const StatementRoad road(connection);
    ScanSongs();
    EXPECT_THAT(
        road.Kinds(),
        ElementsAre(
            "Select Inter_id from Interpret where Interpret = ?: lifted kept remembered",
            "Insert into Interpret (Interpret) values (?): lifted kept",
            "Select Album_id from Albums where Name = ?: lifted kept remembered",
            "Insert into Albums (Name) values (?): lifted kept",
            "Select Quality_id from Quality where Quality = ?: lifted kept remembered",
            "Insert into Quality (Quality) values (?): lifted kept",
            "Select Drive_id from Drive where Drive = ?: lifted kept remembered",
            "Insert into Drive (Drive) values (?): lifted", // Sent once.
            "Select Title_id from Titel where Name = ?: lifted kept",
            "Insert into Titel (Name) values (?): lifted kept",
            "Select Extension_Id from Extensions where Extension = ?: lifted kept remembered",
            "Select File_id from Files where Path = ?: lifted kept",
            "Insert Into Files (Title_id, Inter_id, Name, Path, Sizeinbytes, DateLastModified, Drive_id, "
            "Quality_id, Length, Extension_id, Genre_id, Album_id) values (?, ?,?, ?, ?, ?, ?, ?, ?, ?, ?, "
            "?): "
            "lifted kept",
            "Update Files Set Title_id = ?, Inter_id = ?, Name = ?, Path = ?, Sizeinbytes = ?, "
            "DateLastModified = ?, Drive_id = ?, Quality_id = ?, Length = ?, Extension_id = ?, Genre_id = ?, "
            "Album_id = ? where File_id = ?: lifted kept guarded",
            "Select Path from Files where Path = ?: lifted kept"));
}

TEST_F(StatementRoadTest, OfTheOggPass) {
    const StatementRoad road(connection);
    ScanOggs();
    EXPECT_THAT(
        road.Kinds(),
        ElementsAre(
            "Select Title_id from Titel where Name = ?: lifted kept remembered",
            "Insert Into Titel (Name) values (?): lifted kept", "Select Max(Title_id) from Titel: kept",
            "Select Inter_id from Interpret where Interpret = ?: lifted kept remembered",
            "Insert Into Interpret (Interpret) values (?): lifted kept",
            "Select Max(Inter_id) from Interpret: kept",
            "Select Drive_id from Drive where Drive = ?: lifted kept remembered",
            "Insert Into Drive (Drive) values (?): lifted", // Sent once, as is the next one.
            "Select Max(Drive_id) from Drive:",
            "Select Quality_id from Quality where Quality = ?: lifted kept remembered",
            "Insert Into Quality (Quality) values (?): lifted kept",
            "Select Max(Quality_id) from Quality: kept",
            "Select Album_id from Albums where Name = ?: lifted kept remembered",
            "Insert Into Albums (Name) values (?): lifted kept", "Select Max(Album_id) from Albums: kept",
            "Select Genre_id from Genres where Genre = ?: lifted kept remembered",
            "Select File_id from Files where Path = ?: lifted kept",
            "Insert into Files (Title_id, Inter_id, Name, Path, Sizeinbytes, DateLastModified, Drive_id, "
            "Quality_id, Length, Extension_id, Genre_id, Album_id) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
            "?): "
            "lifted kept",
            "Update Files set Title_id = ?, Inter_id = ?, Name = ?,Path = ?,Sizeinbytes = ?,DateLastModified "
            "= "
            "?, Drive_id = ?,Quality_id = ?,Length = ?,Extension_id = ?,Genre_id = ?,Album_id = ? where Path "
            "= "
            "?: lifted kept guarded",
            "Select * from Files where Path = ?: lifted kept"));
}

TEST_F(StatementRoadTest, AnOggFileThatIsScannedAgainWritesNoRow) {
    Write("a.ogg", EncodedOgg::Stereo());
    ScanDriver withOgg(work, view, log, &m_oggPass);
    withOgg.StartScan();
    const std::string before = Value("Select total_changes()");
    withOgg.StartScan();
    EXPECT_EQ(Value("Select total_changes()"), before);
    EXPECT_EQ(connection.StatementsOf("Update Files set ").size(), 1u);
}

TEST_F(StatementRoadTest, OfTheList) {
    ScanSongs();
    const StatementRoad road(connection);
    LoadLists();
    EXPECT_THAT(
        road.Kinds(),
        ElementsAre(
            "Select Count(*) from Files: remembered", listed + ":", // The same as those in an order.
            "Select Count(distinct Inter_id) from Files: remembered",
            "Select Count(distinct Title_id) from Files: remembered",
            "Select Count(distinct Album_id) from Files: remembered",
            listed + " order by I.Interpret ASC: kept ordered", listed + " order by T.Name ASC: kept ordered",
            listed + " order by F.Length ASC: kept ordered", listed + " order by Q.Quality ASC: kept ordered",
            listed + " order by E.Extension ASC: kept ordered",
            listed + " order by F.SizeInBytes ASC: kept ordered",
            listed + " and (I.Interpret Like ? or T.Name Like ?): lifted kept",
            "Select File_id, Inter_id, Title_id, Album_id from Files: kept",
            listed + " and F.Drive_id = ? and F.Genre_id = ? and F.Album_id = ?: lifted kept",
            listed + " and File_id in (?,?): lifted kept"));
}

// No value is in them but the 1 of "Select 1", which is a column and stays.
TEST_F(StatementRoadTest, OfTheFilterLists) {
    ScanSongs();
    const StatementRoad road(connection);
    for (int round = 0; round < 2; ++round) {
        FillDriveCombo();
        FillGenreCombo();
        FillAlbumCombo();
    }
    EXPECT_THAT(
        road.Kinds(),
        ElementsAre("Select D.Drive, D.Drive_id from Drive D where exists (Select ? from Files F where "
                    "F.Drive_id = D.Drive_id) Order By D.Drive_id: remembered",
                    "Select G.Genre, G.Genre_id from Genres G where exists (Select ? from Files F where "
                    "F.Genre_id = G.Genre_id) Order By G.Genre: remembered",
                    "Select A.Name, A.Album_id from Albums A where exists (Select ? from Files F where "
                    "F.Album_id = A.Album_id) Order By A.Name: remembered"));
}

TEST_F(StatementRoadTest, OfTheFaultsOfTheList) {
    ScanSongs();
    const StatementRoad road(connection);
    FindListFaults();
    FindListFaults();
    EXPECT_THAT(road.Kinds(),
                ElementsAre("Select File_id, Name, SizeInBytes, Length from Files where Length is null or "
                            "SizeInBytes is null or Length < -? or Length > ? or SizeInBytes < ? or "
                            "SizeInBytes > ?: partly lifted kept"));
}

// A count of plays writes another value each time: nothing to guard. Its 1 stays where it is.
TEST_F(StatementRoadTest, OfTheTree) {
    ScanSongs();
    MakeCategory();
    const StatementRoad road(connection);
    UseTree();
    EXPECT_THAT(
        road.Kinds(),
        ElementsAre(
            "Select Category from Categories order By Category: kept",
            "Select F.Name, C.Category, F.Path, F.File_id, [FC.Position], FC.FileCategory_id from "
            "Files F, Categories C, FileCategories FC  where F.File_id = FC.File_id and "
            "C.Category_id = FC.Category_id Order By [FC.Position]: rewritten kept",
            "Select Sum(F.Length), FC.Parent from Files F Inner Join FileCategories FC on F.File_id = "
            "FC.File_id Group By FC.Parent: kept",
            "Select File_id from FileCategories where Parent = ? and Filename = ? and [Position] = ?: "
            "lifted kept",
            "Select Path from Files where File_id = ?: lifted kept",
            "Update Files Set Hits = Hits + ? where Path = ?: partly lifted kept"));
}

TEST_F(StatementRoadTest, OfTheExchangeOfTheTree) {
    ScanSongs();
    const StatementRoad road(connection);
    ExchangeTree();
    EXPECT_THAT(road.Kinds(),
                ElementsAre("Select * from Categories where Category = ?: lifted kept",
                            "Insert into Categories (Category) values (?): lifted kept",
                            "Select Category_id from Categories where Category = ?: lifted kept",
                            "Select File_id from Files where Path = ?: lifted kept remembered",
                            "Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) "
                            "values (?, ?, ?, "
                            "?, ?): lifted kept",
                            "Select Category from Categories: kept",
                            "Select [Position], Parent, Filename, File_id from FileCategories: kept",
                            "Select Path from Files where File_id = ?: lifted kept remembered"));
}

TEST_F(StatementRoadTest, OfThePlayer) {
    ScanSongs();
    MakeCategory();
    const std::string joined = " from (Files F inner join Interpret I on F.Inter_id = I.Inter_id) inner join "
                               "Titel T on T.Title_id = F.Title_id where ";
    const StatementRoad road(connection);
    UsePlayer();
    EXPECT_THAT(
        road.Kinds(),
        ElementsAre(
            "Select Category from Categories order By Category:", // The tree's three are sent once.
            "Select F.Name, C.Category, F.Path, F.File_id, [FC.Position], FC.FileCategory_id from "
            "Files F, Categories C, FileCategories FC  where F.File_id = FC.File_id and "
            "C.Category_id = FC.Category_id Order By [FC.Position]: rewritten",
            "Select Sum(F.Length), FC.Parent from Files F Inner Join FileCategories FC on F.File_id = "
            "FC.File_id Group By FC.Parent:",
            "Select I.Interpret, T.Name" + joined + "Path = ?: lifted kept",
            "Select File_id from FileCategories where Parent = ? and Filename = ? and [Position] = ?: "
            "lifted kept",
            "Select I.Interpret, T.Name, F.Path" + joined + "F.File_id = ?: lifted kept",
            "Select Category_id from Categories where Category = ?: lifted kept",
            "Select File_id from FileCategories where Category_id = ? order by [Position]: lifted kept",
            "Select I.Interpret, T.Name, F.Path" + joined + "File_id = ?: lifted kept",
            "Select I.Interpret, T.Name" + joined + "F.Path = ?: lifted kept",
            "Select Q.Quality, F.Length from Quality Q Inner Join Files F on Q.Quality_id = "
            "F.Quality_id where F.Path = ?: lifted kept",
            "Select I.Interpret, T.Name, F.Album_id, F.Inter_id" + joined + "F.Path = ?: lifted kept",
            "Select Front from Covers where Album_id = ? and Interpret_id = ?: lifted kept",
            "Select Quality, F.Length from Quality Q Inner Join Files F on Q.Quality_id = "
            "F.Quality_id where F.Path = ?: lifted kept",
            "Select Name, Length from Files where Path = ?: lifted kept"));
}

TEST_F(StatementRoadTest, OfADoubleClickOnTheList) {
    const StatementRoad road(connection);
    RecordingPlayer player{calls};
    SelectionViewDouble rows;
    SilentSort sort;
    DragState drag;
    GridSelection grid{rows, drag};
    grid.Reset(3);
    for (const int row : {1, 2}) {
        mainModule.FilePaths.Add("/" + std::to_string(row));
    }
    for (const int row : {1, 2}) {
        grid.SetRow(row);
        grdMp3_DblClick(0, row, grid, player, sort, work);
    }
    EXPECT_THAT(road.Kinds(),
                ElementsAre("Update Files Set Hits = Hits + ? where File_id = ?: partly lifted kept"));
}

TEST_F(StatementRoadTest, OfTheCharts) {
    ScanSongs();
    const StatementRoad road(connection);
    RecordingPlayer player{calls};
    Chart chart;
    for (const bool top : {true, false}) {
        mainModule.ChartShowTop = top;
        chart.Form_Load();
        (void)chart.FillChart();
        for (const int row : {0, 1}) {
            (void)chart.grdChart_DblClick(row, player, [](MousePointer) {});
        }
    }
    for (int round = 0; round < 2; ++round) {
        SaveTopListOptions("10", true);
    }
    EXPECT_THAT(road.Kinds(),
                ElementsAre("Select Name, Hits, Path, File_id from Files order by  Hits DESC, "
                            "DateLastModified DESC: kept limited",
                            "Update Files Set Hits = Hits + ? where Path = ?: partly lifted kept",
                            "Select Name, DateLastModified, Path, File_id from Files order by "
                            "DateLastModified DESC: kept limited",
                            "Update Files Set Hits = ?: lifted kept"));
}

TEST_F(StatementRoadTest, OfTheCleaning) {
    ScanSongs();
    MakeCategory();
    const StatementRoad road(connection);
    CleanTwoFiles();
    EXPECT_THAT(
        road.Kinds(),
        ElementsAre(
            "Select Path, File_id from Files: kept", "Delete from Files where File_id = ?: lifted kept",
            "Select Parent, [Position] from FileCategories where File_id = ?: lifted kept",
            "Delete from FileCategories where ([Position] = ? and File_id = ? and Parent = ?): lifted "
            "kept",
            "Update FileCategories set [Position] = [Position] - ? where ([Position] > ? and Parent = "
            "?): partly lifted kept"));
}

TEST_F(StatementRoadTest, OfTheCheckAtStart) {
    const StatementRoad road(connection);
    for (int round = 0; round < 2; ++round) {
        const auto other = OpenLibrary(libraryPath);
        for (const char* name : {"Jazz", "jazz", "Pop", "pop"}) {
            other->Execute("Insert into Categories (Category) values ('" + std::string(name) + "')");
        }
        other->Commit();
        CheckDatabase(work);
        Connection().Commit();
    }
    EXPECT_THAT(
        road.Kinds(),
        ElementsAre("Select count(Category), Category from Categories Group By Category: kept",
                    "Select Category_id from Categories where Category = ? Order By Category_id: lifted kept",
                    "Delete from Categories where Category_id in (?, ?): lifted kept",
                    "Delete from FileCategories where Category_id in (?, ?): lifted kept"));
}

// The one row of the reminder is written as it is: it is in no index, and has no key to be found by.
TEST_F(StatementRoadTest, OfTheReminder) {
    const StatementRoad road(connection);
    UseReminder();
    EXPECT_THAT(
        road.Kinds(),
        ElementsAre("Select RemindFlag, ScanPeriode, RemindDate from Reminder: kept",
                    "Select RemindFlag from Reminder: kept",
                    "Insert Into Reminder (RemindFlag, RemindDate, Scanperiode) values (?, ?, ?): lifted",
                    "Update Reminder Set RemindFlag = ?, RemindDate = ?, ScanPeriode = ?: lifted kept",
                    "Select RemindFlag, RemindDate from Reminder: kept",
                    "Select ScanPeriode from Reminder: kept",
                    "Update Reminder Set RemindDate = ?: lifted kept"));
}

TEST_F(StatementRoadTest, EveryReadWithoutAnOrderComesByKey) {
    const StatementRoad road(connection);
    ScanSongs();
    ScanOggs();
    MakeCategory();
    LoadLists();
    UseTree();
    UsePlayer();
    UseReminder();
    ExchangeTree();
    CleanTwoFiles();
    const std::vector<std::string> queries = QueriesWithoutOrder(road);
    EXPECT_GE(queries.size(), 20U);
    for (const std::string& query : queries) {
        EXPECT_TRUE(ComesByKey(Connection(), query)) << query;
    }
}

} // namespace
} // namespace quavernet::test
