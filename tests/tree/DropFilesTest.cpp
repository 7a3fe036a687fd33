#include "tree/TreeDropTest.h"

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class DropFilesTest : public TreeDropTest {
protected:
    /// Real files, not known to the library.
    std::vector<std::string> NewFiles(const std::vector<std::string>& names) {
        std::vector<std::string> paths;
        for (const std::string& name : names) {
            WriteMp3(name);
            paths.push_back(music / name);
        }
        return paths;
    }
    /// Files that the library knows, as dropped from another program.
    std::vector<std::string> KnownFiles(const std::vector<std::string>& names) {
        std::vector<std::string> paths;
        for (const std::string& name : names) {
            AddFile(static_cast<int>(m_nextFile++), name);
            paths.push_back(KnownPath(name));
        }
        return paths;
    }

private:
    int m_nextFile = 5001;
};

TEST_F(DropFilesTest, AKnownFileTakesTheEntrysPlace) {
    FillDense();
    const DropOutcome outcome = Drop(KnownFiles({"x.mp3"}), "file104pos4");
    EXPECT_THAT(
        statements,
        ElementsAre("Select Category_id from Categories where Category = 'Jazz'",
                    "Update FileCategories set [Position] = [Position] + 1 where ([Position] >= 4 and Parent "
                    "= 'Jazz')",
                    "Select Path from Files where Path = '/m/x.mp3'",
                    "Select File_id, Name from Files where Path = '/m/x.mp3'",
                    "Insert Into FileCategories (File_id, Category_id, [Position], Parent, Filename) values "
                    "(5001, 1, 4, 'Jazz', 'x.mp3')"));
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j2", "3 j3", "4 x.mp3", "5 j4", "6 j5", "7 j6"));
    EXPECT_TRUE(outcome.Rebuild);
    EXPECT_TRUE(outcome.HadFileTarget);
    EXPECT_FALSE(outcome.FileAdded);
    EXPECT_EQ(outcome.SelectKey, "file0pos5") << "no node: files from outside select nothing";
}

TEST_F(DropFilesTest, TheEndTellsHowManyEntriesThereAreNow) {
    FillDense();
    WriteMp3("new.mp3");
    std::vector<std::string> files = KnownFiles({"x.mp3", "list.txt"});
    const std::vector<std::string> later = KnownFiles({"y.mp3"});
    files.push_back(music / "new.mp3");
    EXPECT_EQ(Drop(files, "CAT_Empty").Word, "Fertig: 2 Einträge, 1 neu, 1 übergangen, 0:00");
    settings.values["Language"] = "ENG";
    EXPECT_EQ(Drop(later, "CAT_Empty").Word, "Done: 1 entry, 0 new, 0 skipped, 0:00");
}

TEST_F(DropFilesTest, TheShiftIsRepeatedForEveryFile) {
    FillDense();
    Drop(KnownFiles({"x.mp3", "y.ogg", "z.WAV"}), "file104pos4");
    EXPECT_THAT(
        connection.StatementsOf("Update"),
        ElementsAre("Update FileCategories set [Position] = [Position] + 3 where ([Position] >= 4 and "
                    "Parent = 'Jazz')",
                    "Update FileCategories set [Position] = [Position] + 3 where ([Position] >= 5 and "
                    "Parent = 'Jazz')",
                    "Update FileCategories set [Position] = [Position] + 3 where ([Position] >= 6 and "
                    "Parent = 'Jazz')"));
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j2", "3 j3", "4 x.mp3", "5 y.ogg", "6 z.WAV", "13 j4",
                                             "14 j5", "15 j6"));
}

TEST_F(DropFilesTest, ACategoryTakesAFileAfterTheCountOfItsEntries) {
    FillDense();
    const DropOutcome outcome = Drop(KnownFiles({"x.mp3"}), "CAT_Jazz");
    EXPECT_THAT(
        statements,
        ElementsAre("Select Category_id from Categories where Category = 'Jazz'",
                    "Select Path from Files where Path = '/m/x.mp3'",
                    "Select File_id, Name from Files where Path = '/m/x.mp3'",
                    "Insert Into FileCategories (File_id, Category_id, [Position], Parent, Filename) values "
                    "(5001, 1, 7, 'Jazz', 'x.mp3')"));
    EXPECT_TRUE(outcome.Rebuild);
    EXPECT_FALSE(outcome.HadFileTarget);
}

TEST_F(DropFilesTest, ACategoryTakesSeveralFilesOneAfterTheOther) {
    FillDense();
    Drop(KnownFiles({"x.mp3", "y.ogg", "z.WAV"}), "CAT_Jazz");
    EXPECT_THAT(Entries("Jazz"),
                ElementsAre("1 j1", "2 j2", "3 j3", "4 j4", "5 j5", "6 j6", "7 x.mp3", "8 y.ogg", "9 z.WAV"));
    EXPECT_THAT(connection.StatementsOf("Update"), IsEmpty());
}

TEST_F(DropFilesTest, GapsStayAndMayGiveATakenPosition) {
    FillGapped();
    Drop(KnownFiles({"v.mp3", "w.mp3"}), "file103pos7");
    EXPECT_THAT(Entries("Jazz"),
                ElementsAre("2 j1", "3 j2", "7 v.mp3", "8 w.mp3", "11 j3", "12 j4", "24 j5", "25 j6"));
    Drop(KnownFiles({"x.mp3"}), "CAT_Blues");
    EXPECT_THAT(Entries("Blues"), ElementsAre("4 b1", "4 x.mp3", "9 b2", "10 b3"));
}

TEST_F(DropFilesTest, OtherFilesAreNotCountedAndTakeNoPosition) {
    FillDense();
    std::vector<std::string> files = KnownFiles({"x.mp3", "y.mp3"});
    files.insert(files.begin(), "/m/notes.txt");
    files.push_back("/m/list.m3u");
    files.push_back("/m/folder");
    Drop(files, "file106pos6");
    EXPECT_THAT(connection.StatementsOf("Update"),
                ElementsAre(testing::HasSubstr("+ 2 "), testing::HasSubstr("+ 2 ")));
    EXPECT_THAT(Entries("Jazz"),
                ElementsAre("1 j1", "2 j2", "3 j3", "4 j4", "5 j5", "6 x.mp3", "7 y.mp3", "10 j6"));
    EXPECT_EQ(Rows("Select * from Categories").size(), 3U) << "a playlist that isn't first does nothing";
}

TEST_F(DropFilesTest, FilesThatAllFailTheFilterChangeNothingAndRebuildTheTree) {
    FillDense();
    const auto before = EveryEntry();
    const DropOutcome outcome = Drop({"/m/notes.txt"}, "file102pos2");
    EXPECT_TRUE(outcome.Rebuild);
    EXPECT_TRUE(outcome.HadFileTarget);
    EXPECT_THAT(statements, IsEmpty());
    EXPECT_EQ(EveryEntry(), before);
}

TEST_F(DropFilesTest, AnUnknownFileIsStoredOnTheWay) {
    FillDense();
    const std::vector<std::string> files = NewFiles({"it's.mp3"});
    const DropOutcome outcome = Drop(files, "CAT_Empty");
    EXPECT_TRUE(outcome.FileAdded);
    EXPECT_THAT(Entries("Empty"), ElementsAre("1 it's.mp3"));
    EXPECT_EQ(statements[1], "Select Path from Files where Path = '" + SqlQuote(files[0]) + "'");
    EXPECT_THAT(connection.StatementsOf("Insert"),
                testing::Contains(StartsWith("Insert Into Files (Title_id")));
    EXPECT_THAT(statements.back(), testing::HasSubstr(", 3, 1, 'Empty', 'it''s.mp3')"));
    EXPECT_EQ(mainModule.CurrentFile.CurrentPath, files[0]);
    EXPECT_EQ(mainModule.CurrentFile.DetailsPath, files[0]);
}

TEST_F(DropFilesTest, AKnownFileBecomesTheCurrentPath) {
    FillDense();
    Drop(KnownFiles({"x.mp3"}), "CAT_Empty");
    EXPECT_EQ(mainModule.CurrentFile.CurrentPath, "/m/x.mp3");
    EXPECT_EQ(mainModule.CurrentFile.DetailsPath, "/m/x.mp3");
}

TEST_F(DropFilesTest, ThreeUnknownFilesOnAnEntryAreStoredEachAfterItsShift) {
    FillDense();
    const DropOutcome outcome = Drop(NewFiles({"x.mp3", "y.mp3", "z.mp3"}), "file104pos4");
    EXPECT_TRUE(outcome.FileAdded);
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j2", "3 j3", "4 x.mp3", "5 y.mp3", "6 z.mp3", "13 j4",
                                             "14 j5", "15 j6"));
    LoadTree(tree);
    EXPECT_EQ(tree.Node("CAT_Jazz").Children.size(), 9U);
}

TEST_F(DropFilesTest, AFileThatIsDroppedTwiceIsStoredOnceAndEnteredTwice) {
    FillDense();
    const std::vector<std::string> files = NewFiles({"x.mp3"});
    Drop({files[0], files[0]}, "CAT_Empty");
    EXPECT_THAT(Entries("Empty"), ElementsAre("1 x.mp3", "2 x.mp3"));
    EXPECT_EQ(Rows("Select * from Files where Name = 'x.mp3'").size(), 1U);
}

TEST_F(DropFilesTest, TheFirstMissingFileEndsTheDropSilently) {
    FillDense();
    const DropOutcome outcome = Drop({music / "gone.mp3", KnownFiles({"x.mp3"})[0]}, "file106pos6");
    EXPECT_FALSE(outcome.Rebuild);
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j2", "3 j3", "4 j4", "5 j5", "8 j6"))
        << "the shift that was written stays";
}

TEST_F(DropFilesTest, AMissingFileAfterOneThatWasStoredIsAFailureOfTheProgram) {
    FillDense();
    std::vector<std::string> files = NewFiles({"x.mp3"});
    files.push_back(music / "gone.mp3");
    drag.DragText = "kept";
    EXPECT_THROW(Drop(files, "CAT_Empty"), RuntimeError);
    EXPECT_THAT(Entries("Empty"), ElementsAre("1 x.mp3")) << "what was written stays";
}

TEST_F(DropFilesTest, AFailingStoreIsAFailureOfTheProgram) {
    FillDense();
    connection.failOn = "Insert Into Files (";
    EXPECT_THROW(Drop(NewFiles({"x.mp3"}), "CAT_Empty"), RuntimeError);
}

TEST_F(DropFilesTest, AFailingStatementBeforeAnyFileWasStoredEndsTheDropSilently) {
    FillDense();
    connection.failOn = "Insert Into FileCategories";
    const DropOutcome outcome = Drop(KnownFiles({"x.mp3"}), "CAT_Empty");
    EXPECT_FALSE(outcome.Rebuild);
    EXPECT_THAT(calls, ElementsAre("pointer 0"));
}

TEST_F(DropFilesTest, PositionsBeyond16BitsEndTheDrop) {
    FillDense();
    AddEntry(110, 1, "Jazz", "far", 32767);
    LoadTree(tree);
    EXPECT_FALSE(Drop(KnownFiles({"x.mp3"}), "file110pos32767").Rebuild) << "there is no place after it";
    EXPECT_THAT(Entries("Jazz"),
                ElementsAre("1 j1", "2 j2", "3 j3", "4 j4", "5 j5", "6 j6", "32767 x.mp3", "32768 far"));
    LoadTree(tree);
    EXPECT_FALSE(Drop(KnownFiles({"y.mp3"}), "file110pos32768").Rebuild);
    EXPECT_THAT(statements, IsEmpty());
}

TEST_F(DropFilesTest, AListOfHundredThousandOtherPathsIsReadAndWritesNothing) {
    FillDense();
    EXPECT_TRUE(Drop(std::vector<std::string>(100000, "/m/notes.txt"), "CAT_Jazz").Rebuild);
    EXPECT_THAT(statements, IsEmpty());
}

TEST_F(DropFilesTest, ACategoryWithAnApostropheTakesNoFile) {
    FillDense();
    Execute("Insert into Categories (Category_id, Category) values (9, 'it''s')");
    LoadTree(tree);
    EXPECT_FALSE(Drop(KnownFiles({"x.mp3"}), "CAT_it's").Rebuild);
    EXPECT_THAT(statements, IsEmpty());
}

TEST_F(DropFilesTest, EventsMayBuildTheTreeAgainWhileAFileIsRead) {
    FillDense();
    events.onDoEvents = [&] {
        const auto keep = std::exchange(events.onDoEvents, nullptr);
        LoadTree(tree);
        events.onDoEvents = keep;
    };
    Drop(NewFiles({"x.mp3", "y.mp3"}), "file102pos2");
    EXPECT_GT(events.count, 0);
    EXPECT_THAT(Entries("Jazz"),
                ElementsAre("1 j1", "2 x.mp3", "3 y.mp3", "6 j2", "7 j3", "8 j4", "9 j5", "10 j6"));
}

TEST_F(DropFilesTest, AnotherDropMayComeWhileAFileIsRead) {
    FillDense();
    const std::vector<std::string> inner = NewFiles({"inner.mp3"});
    bool isDone = false;
    events.onDoEvents = [&] {
        if (!std::exchange(isDone, true)) {
            EXPECT_TRUE(TreeDrop({inner, "CAT_Jazz", false}, drag, tree, driver, work).Rebuild);
        }
    };
    EXPECT_TRUE(Drop(NewFiles({"outer.mp3"}), "CAT_Blues").Rebuild);
    EXPECT_TRUE(isDone);
    EXPECT_EQ(Entries("Jazz").back(), "7 inner.mp3");
    EXPECT_EQ(Entries("Blues").back(), "4 outer.mp3");
    EXPECT_EQ(mainModule.CurrentFile.CurrentFileName, "outer.mp3");
}

TEST_F(DropFilesTest, TheTargetsPositionIsRoundedToTheEvenNumber) {
    FillDense();
    const std::pair<const char*, const char*> positions[] = {
        {"2.5", ">= 2 "}, {"3.5", ">= 4 "}, {"-1", ">= -1 "}, {"null", ">= 0 "}, {"'x'", ">= 0 "}};
    for (const auto& [stored, asked] : positions) {
        Execute(std::string("Update FileCategories set [Position] = ") + stored +
                " where FileCategory_id = 301");
        Execute("Delete from FileCategories where Parent = 'Empty'");
        Execute("Delete from Files where File_id = 301");
        AddEntry(301, 3, "Empty", "e1", 1);
        Execute(std::string("Update FileCategories set [Position] = ") + stored +
                " where FileCategory_id = 301");
        LoadTree(tree);
        const std::string key = tree.Node("CAT_Empty").Children.front()->Key;
        Drop({KnownPath("b1.mp3")}, key);
        ASSERT_GE(statements.size(), 2U);
        EXPECT_THAT(statements[1], testing::HasSubstr(asked)) << stored;
    }
}

TEST_F(DropFilesTest, TwoUntaggedFilesAreNamedOneAfterTheOther) {
    FillDense();
    const std::string bytes = Mp3Bytes("", "", "");
    for (const char* name : {"Adam - One.mp3", "Eve - Two.mp3"}) {
        Write(name, bytes.substr(0, bytes.size() - 128));
    }
    Drop({music / "Adam - One.mp3", music / "Eve - Two.mp3"}, "CAT_Empty");
    EXPECT_THAT(Entries("Empty"), ElementsAre("1 Adam - One.mp3", "2 Eve - Two.mp3"));
    EXPECT_THAT(Rows("Select I.Interpret, T.Name from Files F, Interpret I, Titel T where F.Inter_id = "
                     "I.Inter_id and F.Title_id = T.Title_id order by F.File_id"),
                ElementsAre("Adam|One", "Adam|One"))
        << "the name of the file before is still the current one";
}

TEST_F(DropFilesTest, AnOggFileIsStoredAsAnyOtherDroppedFile) {
    FillDense();
    Write("Cain - Song.ogg", "OggS");
    EXPECT_TRUE(Drop({music / "Cain - Song.ogg"}, "CAT_Empty").FileAdded);
    EXPECT_THAT(Entries("Empty"), ElementsAre("1 Cain - Song.ogg"));
    EXPECT_EQ(Value("Select Length from Files where Name = 'Cain - Song.ogg'"), "0");
}

TEST_F(DropFilesTest, NamesThatAreNotUTF8AreTakenAsTheyAre) {
    FillDense();
    Drop(NewFiles({"Bl\xFCte.mp3"}), "CAT_Empty");
    EXPECT_THAT(Entries("Empty"), ElementsAre("1 Bl\xFCte.mp3"));
}

TEST_F(DropFilesTest, ANulInAPathEndsTheDrop) {
    FillDense();
    const auto before = EveryEntry();
    EXPECT_FALSE(Drop({music / "a" + std::string("\0.mp3", 5)}, "CAT_Empty").Rebuild);
    EXPECT_EQ(EveryEntry(), before);
}

TEST_F(DropFilesTest, APathThatIsNotInItsNormalFormIsStoredAndEnteredInIt) {
    FillDense();
    WriteMp3("x.mp3");
    EXPECT_TRUE(Drop({music.Path() + "//x.mp3", music.Path() + "/./x.mp3"}, "CAT_Empty").Rebuild);
    EXPECT_THAT(Entries("Empty"), ElementsAre("1 x.mp3", "2 x.mp3"));
    EXPECT_THAT(Rows("Select Path from Files where Name = 'x.mp3'"), ElementsAre(music / "x.mp3"));
}

TEST_F(DropFilesTest, ALongListEndsAtTheLastPositionAndKeepsWhatItEntered) {
    FillDense();
    AddEntry(110, 1, "Jazz", "far", 32760);
    LoadTree(tree);
    const std::string path = KnownFiles({"x.mp3"})[0];
    EXPECT_FALSE(Drop(std::vector<std::string>(100000, path), "file110pos32760").Rebuild);
    EXPECT_EQ(Value("Select count(*) from FileCategories where Filename = 'x.mp3'"), "8");
    EXPECT_EQ(Value("Select Max([Position]) from FileCategories where Filename = 'x.mp3'"), "32767");
}

TEST_F(DropFilesTest, TheTreeIsLoadedAfterTheHighestShiftThatADropMakes) {
    FillDense();
    const std::string path = KnownFiles({"x.mp3"})[0];
    EXPECT_TRUE(Drop(std::vector<std::string>(182, path), "file101pos1").Rebuild);
    LoadTree(tree);
    EXPECT_EQ(tree.Node("CAT_Jazz").Children.back()->Key, "file106pos33130");
}

TEST_F(DropFilesTest, AFailureAfterAFileWasStoredIsOneOfTheProgramAlsoInTheEntry) {
    FillDense();
    connection.failOn = "Insert Into FileCategories";
    EXPECT_THROW(Drop(NewFiles({"x.mp3"}), "CAT_Empty"), RuntimeError);
    EXPECT_EQ(Count("Select File_id from Files where Name = 'x.mp3'"), 1);
}

TEST_F(DropFilesTest, ADropOnTheSameEntryMayComeInside) {
    FillDense();
    const std::vector<std::string> inner = NewFiles({"inner.mp3"});
    bool isDone = false;
    events.onDoEvents = [&] {
        if (!std::exchange(isDone, true)) {
            EXPECT_TRUE(TreeDrop({inner, "file102pos2", false}, drag, tree, driver, work).Rebuild);
        }
    };
    EXPECT_TRUE(Drop(NewFiles({"outer.mp3"}), "file102pos2").Rebuild);
    EXPECT_TRUE(isDone);
    LoadTree(tree);
    EXPECT_EQ(tree.Node("CAT_Jazz").Children.size(), 8U) << "each has its entry, wherever";
}

TEST_F(DropFilesTest, ADropThatFailsInsideEndsAlone) {
    FillDense();
    bool isDone = false;
    events.onDoEvents = [&] {
        if (!std::exchange(isDone, true)) {
            EXPECT_FALSE(
                TreeDrop({{music / "gone.mp3"}, "CAT_Jazz", false}, drag, tree, driver, work).Rebuild);
        }
    };
    EXPECT_TRUE(Drop(NewFiles({"outer.mp3"}), "CAT_Empty").Rebuild);
    EXPECT_TRUE(isDone);
    EXPECT_THAT(Entries("Empty"), ElementsAre("1 outer.mp3"));
}

TEST_F(DropFilesTest, TheNodeMayBeGoneFromTheTreeInside) {
    FillDense();
    bool isDone = false;
    events.onDoEvents = [&] {
        if (!std::exchange(isDone, true)) {
            Execute("Delete from FileCategories where FileCategory_id = 102");
            LoadTree(tree);
        }
    };
    EXPECT_TRUE(Drop(NewFiles({"x.mp3"}), "file102pos2").Rebuild);
    EXPECT_TRUE(isDone);
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 x.mp3", "4 j3", "5 j4", "6 j5", "7 j6"));
}

TEST_F(DropFilesTest, AScanMayBeginInside) {
    FillDense();
    dialogs.folder = music.Path();
    bool isDone = false;
    events.onDoEvents = [&] {
        if (!std::exchange(isDone, true)) {
            mainModule.ScanRunning = true;
            Scan();
            mainModule.ScanRunning = false;
        }
    };
    EXPECT_TRUE(Drop(NewFiles({"x.mp3", "y.mp3"}), "CAT_Empty").Rebuild);
    EXPECT_THAT(Entries("Empty"), ElementsAre("1 x.mp3", "2 y.mp3"));
    EXPECT_EQ(Count("Select File_id from Files where Name = 'x.mp3'"), 1);
}

} // namespace
} // namespace quavernet::test
