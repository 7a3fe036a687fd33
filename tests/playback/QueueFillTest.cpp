#include "playback/PlayQueueTest.h"

#include "tree/LoadTree.h"
#include "tree/TreeModel.h"

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string joined =
    " from (Files F inner join Interpret I on F.Inter_id = I.Inter_id) inner join Titel "
    "T on T.Title_id = F.Title_id";

class QueueFillTest : public PlayQueueTest {
protected:
    /// The list as the user sees it, and what is selected in it.
    void List(std::initializer_list<const char*> paths, std::initializer_list<std::int32_t> selected) {
        mainModule.FilePaths.Clear();
        mainModule.SelectedRows.Clear();
        for (const char* path : paths) {
            mainModule.FilePaths.Add(path);
        }
        for (const std::int32_t row : selected) {
            mainModule.SelectedRows.Add(row);
        }
    }
    void AddCategory(const std::string& name, std::initializer_list<const char*> fileIds) {
        Execute("Insert into Categories (Category) values ('" + SqlQuote(name) + "')");
        const std::string id = Value("Select Max(Category_id) from Categories");
        int position = 0;
        for (const char* file : fileIds) {
            Execute(
                "Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (" +
                std::string(file) + ", " + id + ", " + std::to_string(++position) + ", '" + SqlQuote(name) +
                "', '" + file + ".mp3')");
        }
        LoadTree(tree);
    }

    TreeModel tree;
};

TEST_F(QueueFillTest, TheListsSelectionComesInItsOwnOrderOneStatementAFile) {
    AddFiles(3);
    AddFile("/m/it's.mp3", "It's", "Me");
    List({"/m/1.mp3", "/m/2.mp3", "/m/it's.mp3"}, {3, 1});
    const RecordingConnection& connection = Record();
    queue.FillPlaylist();
    EXPECT_THAT(connection.statements,
                ElementsAre("Select I.Interpret, T.Name" + joined + " where Path = '/m/it''s.mp3'",
                            "Select I.Interpret, T.Name" + joined + " where Path = '/m/1.mp3'"));
    EXPECT_THAT(Texts(), ElementsAre("It's - Me", "P1 - T1"));
    EXPECT_THAT(Paths(), ElementsAre("/m/it's.mp3", "/m/1.mp3"));
    EXPECT_EQ(queue.ListIndex(), 0);
    EXPECT_EQ(view.appendings, 1);
    EXPECT_EQ(queue.CurrentTrack(), 0);
}

TEST_F(QueueFillTest, AFillTakesTheOldEntriesPlace) {
    Fill(2);
    AddFile("/m/a.mp3", "A", "B");
    List({"/m/a.mp3"}, {1});
    queue.FillPlaylist();
    EXPECT_THAT(Texts(), ElementsAre("A - B"));
}

TEST_F(QueueFillTest, WithTheOptionItFollowsThemAndTheSelectionStays) {
    Fill(2);
    queue.SetListIndex(1);
    AddFile("/m/a.mp3", "A", "B");
    List({"/m/a.mp3"}, {1});
    mainModule.AlwaysAddToPlaylist = true;
    queue.FillPlaylist();
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "P2 - T2", "A - B"));
    EXPECT_EQ(queue.ListIndex(), 1);
}

TEST_F(QueueFillTest, WithTheOptionAnEmptyQueueGetsNoSelection) {
    AddFiles(1);
    List({"/m/1.mp3"}, {1});
    mainModule.AlwaysAddToPlaylist = true;
    queue.FillPlaylist();
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1"));
    EXPECT_EQ(queue.ListIndex(), -1);
}

TEST_F(QueueFillTest, AFailureEndsAFillAndWhatIsThereStays) {
    AddFiles(3);
    List({"/m/1.mp3", "/m/unknown.mp3", "/m/3.mp3"}, {1, 2, 3});
    queue.FillPlaylist();
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1"));
    EXPECT_EQ(queue.ListIndex(), -1);
    List({"/m/1.mp3"}, {1, 7}); // A row that is not there.
    queue.FillPlaylist();
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1"));
    Record().failOn = "Select I.Interpret";
    queue.FillPlaylist();
    EXPECT_THAT(Texts(), IsEmpty());
}

TEST_F(QueueFillTest, EventsRunBeforeTheQueueIsEmptied) {
    Fill(1);
    List({}, {});
    events.onDoEvents = [&] { EXPECT_EQ(queue.ListCount(), 1); };
    queue.FillPlaylist();
    EXPECT_EQ(events.count, 1);
    EXPECT_EQ(queue.ListCount(), 0);
}

TEST_F(QueueFillTest, AFileWithoutNamesHasTheHyphenAlone) {
    Execute({"Insert into Interpret (Inter_id) values (1)", "Insert into Titel (Title_id) values (1)",
             "Insert into Files (Path, Inter_id, Title_id) values ('/m/a.mp3', 1, 1)"});
    queue.AddPlaylist("/m/a.mp3");
    EXPECT_THAT(Texts(), ElementsAre(" - "));
}

TEST_F(QueueFillTest, AFileOfTheTreeIsFoundByItsNode) {
    AddFiles(2);
    AddCategory("Jazz", {"2", "1"});
    tree.Select("file2pos2");
    const RecordingConnection& connection = Record();
    queue.FillPlaylistFromTree(1, tree);
    EXPECT_EQ(connection.statements.back(),
              "Select I.Interpret, T.Name, F.Path" + joined + " where F.File_id = 1");
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1"));
    EXPECT_THAT(Paths(), ElementsAre("/m/1.mp3"));
    EXPECT_EQ(queue.ListIndex(), 0);
}

TEST_F(QueueFillTest, ACategoryComesInTheOrderOfItsPositions) {
    AddFiles(3);
    AddCategory("Rock", {"1"});
    AddCategory("Jazz's", {"3", "1", "3"});
    tree.Select("CAT_Jazz's");
    const RecordingConnection& connection = Record();
    queue.FillPlaylistFromTree(2, tree);
    EXPECT_THAT(connection.statements,
                ElementsAre("Select Category_id from Categories where Category = 'Jazz''s'",
                            "Select File_id from FileCategories where Category_id = 2 order by [Position]",
                            "Select I.Interpret, T.Name, F.Path" + joined + " where F.File_id = 3",
                            "Select I.Interpret, T.Name, F.Path" + joined + " where F.File_id = 1",
                            "Select I.Interpret, T.Name, F.Path" + joined + " where F.File_id = 3"));
    EXPECT_THAT(Paths(), ElementsAre("/m/3.mp3", "/m/1.mp3", "/m/3.mp3"));
    EXPECT_EQ(queue.ListIndex(), 0);
}

TEST_F(QueueFillTest, FromTheTreeTheFirstEntryIsSelectedWhateverTheOption) {
    Fill(2);
    AddCategory("Jazz", {"1"});
    mainModule.AlwaysAddToPlaylist = true;
    for (const char* key : {"file1pos1", "CAT_Jazz"}) {
        queue.SetListIndex(1);
        tree.Select(key);
        queue.FillPlaylistFromTree(std::string_view(key) == "CAT_Jazz" ? 2 : 1, tree);
        EXPECT_EQ(queue.ListIndex(), 0);
    }
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "P2 - T2", "P1 - T1", "P1 - T1"));
    queue.SetListIndex(1);
    queue.FillPlaylistFromTree(3, tree); // Only selects.
    EXPECT_EQ(queue.ListIndex(), 0);
    EXPECT_EQ(queue.ListCount(), 4);
}

TEST_F(QueueFillTest, AFaultInTheTreeEndsTheFill) {
    Fill(2);
    AddCategory("Jazz", {"1", "99", "2"}); // The middle one's file is gone.
    AddCategory("Empty", {});
    tree.Select("CAT_Jazz");
    queue.FillPlaylistFromTree(2, tree);
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1"));
    EXPECT_EQ(queue.ListIndex(), -1);
    mainModule.AlwaysAddToPlaylist = true;
    tree.Select("CAT_Empty");
    queue.FillPlaylistFromTree(2, tree);
    EXPECT_EQ(queue.ListIndex(), -1); // The first row is missing: not even the selection is reached.
    mainModule.AlwaysAddToPlaylist = false;
    tree.ClearSelection();
    queue.FillPlaylistFromTree(1, tree);
    EXPECT_THAT(Texts(), IsEmpty());
}

TEST_F(QueueFillTest, ARowOfTheChartsAlwaysTakesTheQueuesPlace) {
    Fill(2);
    mainModule.AlwaysAddToPlaylist = true;
    RowTexts chartPaths;
    chartPaths.Add("/m/1.mp3");
    chartPaths.Add("/m/2.mp3");
    const RecordingConnection& connection = Record();
    queue.FillPlaylistFromCharts(chartPaths, 2);
    EXPECT_THAT(connection.statements,
                ElementsAre("Select I.Interpret, T.Name" + joined + " where Path = '/m/2.mp3'"));
    EXPECT_THAT(Texts(), ElementsAre("P2 - T2"));
    EXPECT_EQ(queue.ListIndex(), 0);
    queue.FillPlaylistFromCharts(chartPaths, 3);
    EXPECT_THAT(Texts(), IsEmpty());
}

TEST_F(QueueFillTest, AFileIsAddedByItsPathAndTheFirstEntrySelected) {
    Fill(2);
    queue.SetListIndex(1);
    const RecordingConnection& connection = Record();
    queue.AddPlaylist("/n/it's me.mp3");
    EXPECT_THAT(connection.statements,
                ElementsAre("Select I.Interpret, T.Name" + joined + " where F.Path = '/n/it''s me.mp3'"));
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "P2 - T2", "it's me.mp3"));
    EXPECT_EQ(Paths().back(), "/n/it's me.mp3");
    EXPECT_EQ(queue.ListIndex(), 0);
}

TEST_F(QueueFillTest, AnIdAddsItsFileOrNothing) {
    AddFiles(2);
    const RecordingConnection& connection = Record();
    queue.FillRandomPlaylist("2", 1);
    queue.FillRandomPlaylist("1.5E+07", 2);
    queue.FillRandomPlaylist("", 3);
    queue.FillRandomPlaylist("2", 4);
    EXPECT_EQ(connection.statements.front(),
              "Select I.Interpret, T.Name, F.Path" + joined + " where File_id = 2");
    EXPECT_EQ(connection.statements[1],
              "Select I.Interpret, T.Name, F.Path" + joined + " where File_id = 1.5E+07");
    EXPECT_THAT(Texts(), ElementsAre("P2 - T2", "P2 - T2"));
    EXPECT_EQ(queue.ListIndex(), -1);
}

TEST_F(QueueFillTest, BeyondItsLimitAFillEnds) {
    AddFiles(1);
    RowTexts full;
    for (std::int32_t i = 0; i < PlayQueue::MostEntries; ++i) {
        queue.FillRandomPlaylist("1", i);
    }
    EXPECT_EQ(queue.ListCount(), 32767);
    queue.FillRandomPlaylist("1", 1);
    queue.AddPlaylist("/m/other.mp3");
    EXPECT_EQ(queue.ListCount(), 32767);
    EXPECT_EQ(queue.PathCount(), 32767U);
    EXPECT_EQ(queue.ListIndex(), -1); // The added file's fill has not come to its end.
    mainModule.AlwaysAddToPlaylist = true;
    List({"/m/1.mp3"}, {1});
    queue.FillPlaylist();
    EXPECT_EQ(queue.ListCount(), 32767);
    // The last number of 16 bits is an entry like any other.
    queue.PlayFile(32767);
    EXPECT_EQ(queue.CurrentTrack(), 32767);
    player.End();
    EXPECT_EQ(queue.CurrentTrack(), 32767);
    queue.cmdNext_Click();
    EXPECT_EQ(queue.CurrentTrack(), 32767);
    queue.lstFiles_KeyDown(40);
    EXPECT_EQ(queue.CurrentTrack(), 32767);
}

TEST_F(QueueFillTest, AnUnloadedWindowTakesNothing) {
    AddFiles(1);
    queue.Form_Unload();
    queue.AddPlaylist("/m/1.mp3");
    queue.FillRandomPlaylist("1", 1);
    queue.PlayFile(1);
    EXPECT_EQ(queue.ListCount(), 0);
    queue.Form_Load();
    queue.AddPlaylist("/m/1.mp3");
    EXPECT_EQ(queue.ListCount(), 1);
}

} // namespace
} // namespace quavernet::test
