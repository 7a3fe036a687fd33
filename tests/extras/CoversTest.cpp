#include "extras/CoversTest.h"

#include "app/LoadResString.h"

namespace quavernet::test {

namespace {

/// Notes how many rows each query for its first ones asks for.
class FirstRowsWatch : public RecordingConnection {
public:
    using RecordingConnection::RecordingConnection;
    ADODB::RowBlock QueryFirst(std::string_view statement, std::size_t most) override {
        asked.push_back(most);
        return RecordingConnection::QueryFirst(statement, most);
    }

    std::vector<std::size_t> asked;
};

/// Gives the list of albums twice.
class DoubledRows : public RecordingConnection {
public:
    using RecordingConnection::RecordingConnection;
    ADODB::RowBlock Query(std::string_view statement) override {
        const ADODB::RowBlock rows = RecordingConnection::Query(statement);
        ADODB::RowBlock doubled(rows.Columns());
        for (std::size_t i = 0; i < 2 * rows.Rows(); ++i) {
            for (std::size_t column = 0; column < rows.Columns(); ++column) {
                doubled.AddText(rows.At(i % rows.Rows(), column).Text());
            }
        }
        return doubled;
    }
};

} // namespace

TEST_F(CoversTest, TheListHasAnEntryForEachPerformerOfAnAlbumByPerformer) {
    AddAlbum("Cure", "Wish");
    AddAlbum("Abba", "Arrival");
    AddAlbum("Ärzte", "Planet Punk");
    AddAlbum("Cure", "Arrival");
    AddAlbum("Cure", "Wish");
    covers.LoadAlbumList();
    Texts albums = covers.Albums();
    ASSERT_EQ(albums.size(), 4U);
    EXPECT_EQ(albums[0], "Abba - Arrival");
    EXPECT_EQ(albums[1], "Ärzte - Planet Punk") << "umlauts are beside their base letters";
    std::sort(albums.begin() + 2, albums.end());
    EXPECT_EQ(albums[2], "Cure - Arrival");
    EXPECT_EQ(albums[3], "Cure - Wish");
    EXPECT_FALSE(covers.HasSelection());
}

TEST_F(CoversTest, TheListIsReadByTheseStatements) {
    AddAlbum("Abba", "Arrival");
    AddAlbum("Cure", "Wish");
    RecordingConnection& recorder = Record();
    covers.LoadAlbumList();
    EXPECT_EQ(recorder.statements,
              (Texts{"Select distinct A.Name, A.Album_id, I.Interpret, I.Inter_id from (Albums A Inner Join "
                     "Files F On A.Album_id = F.Album_id) Inner Join Interpret I On F.Inter_id = I.Inter_id "
                     "Order By I.Interpret",
                     "Select Album_id from Files where Album_id = 1",
                     "Select Album_id from Files where Album_id = 2"}));
    EXPECT_EQ(view.calls, (Texts{"hourglass", "pointer"}));
}

TEST_F(CoversTest, AnAlbumWhoseFilesHaveGoneMeanwhileIsLeftOut) {
    AddAlbum("Abba", "Arrival");
    AddAlbum("Cure", "Wish");
    RecordingConnection& recorder = Record();
    recorder.onStatement = [this](const std::string& statement) {
        if (statement == "Select Album_id from Files where Album_id = 1") {
            Execute("Delete from Files where Album_id = 1");
        }
    };
    covers.LoadAlbumList();
    EXPECT_EQ(covers.Albums(), Texts{"Cure - Wish"});
    EXPECT_EQ(covers.PositionOf("AlbumID:2InterID:2"), 0U);
}

TEST_F(CoversTest, TheFilesOfAnAlbumAreNotReadForEachOfItsPerformers) {
    for (int i = 0; i < 30; ++i) {
        AddAlbum("P" + std::to_string(i), "Kein Album...");
        AddAlbum("P" + std::to_string(i), "Greatest Hits");
    }
    auto watch = std::make_unique<FirstRowsWatch>(std::move(mainModule.Connection));
    const FirstRowsWatch& watched = *watch;
    mainModule.Connection = std::move(watch);
    covers.LoadAlbumList();
    EXPECT_EQ(covers.Albums().size(), 30U);
    EXPECT_EQ(watched.statements.size(), 31U) << "none for files without an album";
    EXPECT_EQ(watched.asked, std::vector<std::size_t>(30, 1U)) << "one row says that there is one";
}

TEST_F(CoversTest, TheAlbumOfFilesWithoutOneIsNotListedInTheLanguageOfNow) {
    AddAlbum("Abba", "Kein Album...");
    AddAlbum("Abba", "kein album...");
    AddAlbum("Cure", "Wish");
    EXPECT_EQ(LoadResString(328), "Kein Album...");
    covers.LoadAlbumList();
    EXPECT_EQ(covers.Albums(), Texts{"Cure - Wish"}) << "the two names are one album to the library";
    settings.values["Language"] = "ENG";
    covers.LoadAlbumList();
    EXPECT_EQ(covers.Albums().size(), 2U) << "a library that was filled in German";
}

TEST_F(CoversTest, AFailingListIsAFailureAndThePointerComesBack) {
    AddAlbum("Abba", "Arrival");
    Record().failOn = "Select Album_id";
    EXPECT_THROW(covers.LoadAlbumList(), RuntimeError);
    EXPECT_EQ(view.calls, (Texts{"hourglass", "pointer"}));
}

TEST_F(CoversTest, TheLastPlaceOfAKeyCountsAndTheFirstEntryForAnUnknownOne) {
    EXPECT_EQ(covers.PositionOf("AlbumID:1InterID:1"), std::nullopt) << "the list is empty";
    AddAlbum("Abba", "Arrival");
    AddAlbum("Blur", "Arrival");
    AddAlbum("Cure", "Wish");
    // Two rows with one key and different names: as a library from elsewhere may hold them.
    mainModule.Connection = std::make_unique<DoubledRows>(std::move(mainModule.Connection));
    covers.LoadAlbumList();
    EXPECT_EQ(covers.Albums().size(), 6U);
    EXPECT_EQ(covers.PositionOf("AlbumID:1InterID:1"), 3U);
    EXPECT_EQ(covers.PositionOf("AlbumID:1InterID:2"), 4U);
    EXPECT_EQ(covers.PositionOf("AlbumID:2InterID:3"), 5U);
    EXPECT_EQ(covers.PositionOf("AlbumID:2InterID:9"), 0U);
    EXPECT_EQ(covers.PositionOf(""), 0U);
}

TEST_F(CoversTest, AnAlbumWithoutARowShowsNothing) {
    AddAlbum("Abba", "Arrival");
    covers.LoadAlbumList();
    view.calls.clear();
    RecordingConnection& recorder = Record();
    covers.SelectAlbum(0);
    EXPECT_EQ(recorder.statements, Texts{"Select Front, Back, CD, CD2, Inlay, Inlet from Covers where "
                                         "Album_id = 1 and Interpret_id = 1"});
    EXPECT_EQ(view.calls, (Texts{"remove", "panel ", "hourglass", "pointer"}));
    EXPECT_TRUE(covers.HasSelection());
}

TEST_F(CoversTest, EachOfTheSixSetsThePanelToTheFront) {
    AddAlbum("Abba", "Arrival");
    Texts paths;
    std::string values = "1, 1";
    for (const char* name : {"f.png", "b.png", "1.png", "2.png", "y.png", "t.png"}) {
        paths.push_back(MakeFile(name));
        values += ", " + Quoted(paths.back());
    }
    AddCovers(values);
    covers.LoadAlbumList();
    view.calls.clear();
    covers.SelectAlbum(0);
    Texts expected{"remove", "panel ", "hourglass"};
    for (std::size_t page = 0; page < paths.size(); ++page) {
        expected.push_back("show " + std::to_string(page) + " " + paths[page]);
        expected.push_back("panel " + paths[0]);
    }
    expected.emplace_back("pointer");
    EXPECT_EQ(view.calls, expected);
    EXPECT_EQ(covers.Panel(), paths[0]);
}

TEST_F(CoversTest, ThePanelNamesAFrontThatHasGoneIfAnotherImageIsThere) {
    AddAlbum("Abba", "Arrival");
    AddCovers("1, 1, '/gone/front.png', '', null, null, " + Quoted(MakeFile("y.png")) + ", ''");
    covers.LoadAlbumList();
    covers.SelectAlbum(0);
    EXPECT_EQ(covers.Panel(), "/gone/front.png");
}

TEST_F(CoversTest, FoldersMissingFilesAndNothingAreNoImages) {
    AddAlbum("Abba", "Arrival");
    AddCovers("1, 1, " + Quoted(folder.Path()) + ", '/gone', '', null, " + Quoted(folder / "x" + "\n") +
              ", '/dev/null'");
    covers.LoadAlbumList();
    view.calls.clear();
    covers.SelectAlbum(0);
    EXPECT_EQ(view.calls, (Texts{"remove", "panel ", "hourglass", "pointer"}));
}

TEST_F(CoversTest, TheNextSaveClearsTheColumnOfAFileThatHasGone) {
    AddAlbum("Abba", "Arrival");
    const std::string front = MakeFile("f.png");
    AddCovers("1, 1, " + Quoted(front) + ", '/gone/b.png', '', '', '', ''");
    covers.LoadAlbumList();
    covers.SelectAlbum(0);
    const std::string inlet = MakeFile("t.png");
    covers.SetCover(CoverPage::Inlet, inlet);
    EXPECT_EQ(Stored(), Texts{"1|1|1|" + front + "|||||" + inlet});
}

TEST_F(CoversTest, TwoPerformersOfAnAlbumHaveCoversOfTheirOwn) {
    AddAlbum("Abba", "Arrival");
    AddAlbum("Blur", "Arrival");
    covers.LoadAlbumList();
    covers.SelectAlbum(0);
    covers.SetCover(CoverPage::Front, "/a");
    covers.SelectAlbum(1);
    EXPECT_EQ(covers.Panel(), "");
    covers.SetCover(CoverPage::Back, "/b");
    EXPECT_EQ(Stored(), (Texts{"1|1|1|/a|||||", "2|1|2||/b||||"}));
}

TEST_F(CoversTest, TheFirstImageInsertsTheRowAndTheNextUpdatesIt) {
    SelectArrival();
    RecordingConnection& recorder = Record();
    covers.SetCover(CoverPage::Front, "/a/Vorn's.png");
    EXPECT_EQ(recorder.statements,
              (Texts{"Select Cover_id from Covers where  Album_id = 1 and Interpret_id = 1",
                     "Insert Into Covers (Album_id, Interpret_id, Front, Back, CD, CD2, Inlay, Inlet) values "
                     "(1, 1, '/a/Vorn''s.png', '', '', '', '', '')"}));
    EXPECT_EQ(Stored(), Texts{"1|1|1|/a/Vorn's.png|||||"});
    EXPECT_EQ(view.calls, (Texts{"load 0 /a/Vorn's.png", "panel /a/Vorn's.png", "hourglass", "pointer"}));
    recorder.statements.clear();
    for (const CoverPage page : {CoverPage::Back, CoverPage::CD, CoverPage::CD2, CoverPage::Inlay}) {
        covers.SetCover(page, "/" + std::to_string(static_cast<int>(page)) + "'");
    }
    recorder.statements.clear();
    covers.SetCover(CoverPage::Inlet, "/5''");
    EXPECT_EQ(recorder.statements,
              (Texts{"Select Cover_id from Covers where  Album_id = 1 and Interpret_id = 1",
                     "Update Covers Set Front = '/a/Vorn''s.png', Back = '/1''', CD = '/2''', CD2 = '/3''', "
                     "Inlay = '/4''', Inlet = '/5''''' where Cover_id = 1"}));
    EXPECT_EQ(Stored(), Texts{"1|1|1|/a/Vorn's.png|/1'|/2'|/3'|/4'|/5''"});
}

TEST_F(CoversTest, BrowsingAsksForAnyFileInTheDocuments) {
    SelectArrival();
    dialogs.file = "/a.png";
    covers.BrowseCover(CoverPage::CD);
    EXPECT_EQ(dialogs.shown, Texts{"open Alle Dateien (*.*)|*.* /home/user/documents"});
    EXPECT_EQ(Stored(), Texts{"1|1|1|||/a.png|||"});
    EXPECT_EQ(covers.Panel(), "/a.png");
    dialogs.file.reset();
    covers.BrowseCover(CoverPage::CD);
    EXPECT_EQ(Stored(), Texts{"1|1|1|||/a.png|||"}) << "cancelled";
    dialogs.fails = true;
    covers.BrowseCover(CoverPage::CD);
    EXPECT_EQ(Stored(), Texts{"1|1|1|||/a.png|||"});
}

TEST_F(CoversTest, WithoutAnAlbumNothingIsAskedSetOrSaved) {
    AddAlbum("Abba", "Arrival");
    covers.LoadAlbumList();
    view.calls.clear();
    dialogs.file = "/a.png";
    RecordingConnection& recorder = Record();
    covers.BrowseCover(CoverPage::Front);
    covers.SetCover(CoverPage::Front, "/a.png");
    covers.SSTab1_Click(CoverPage::Back);
    covers.DeleteCover(CoverPage::Front);
    covers.OpenCoverFile();
    EXPECT_EQ(dialogs.shown, Texts{});
    EXPECT_EQ(view.calls, Texts{});
    EXPECT_EQ(recorder.statements, Texts{});
    EXPECT_EQ(shell.executed, Texts{});
}

TEST_F(CoversTest, WhatIsNoPictureIsNotSavedButWithTheNextImage) {
    SelectArrival();
    view.isPicture = false;
    RecordingConnection& recorder = Record();
    covers.SetCover(CoverPage::Front, "/letter.txt");
    EXPECT_EQ(view.calls, Texts{"load 0 /letter.txt"});
    EXPECT_EQ(recorder.statements, Texts{});
    EXPECT_EQ(covers.Panel(), "");
    view.isPicture = true;
    covers.SetCover(CoverPage::Back, "/b.png");
    EXPECT_EQ(Stored(), Texts{"1|1|1|/letter.txt|/b.png||||"});
}

TEST_F(CoversTest, AFailingSaveOfANewImageIsQuietAndThePointerComesBack) {
    SelectArrival();
    dialogs.file = "/a.png";
    RecordingConnection& recorder = Record();
    for (const char* statement : {"Select Cover_id", "Insert Into Covers"}) {
        recorder.failOn = statement;
        view.calls.clear();
        covers.SetCover(CoverPage::Front, "/a.png");
        EXPECT_EQ(view.calls, (Texts{"load 0 /a.png", "panel /a.png", "hourglass", "pointer"}));
        covers.BrowseCover(CoverPage::Back);
    }
    recorder.failOn.clear();
    recorder.failLock = true;
    covers.SetCover(CoverPage::CD, "/c.png");
    recorder.failLock = false;
    EXPECT_EQ(Stored(), Texts{});
    covers.SetCover(CoverPage::CD2, "/d.png");
    EXPECT_EQ(Stored(), Texts{"1|1|1|/a.png|/a.png|/c.png|/d.png||"}) << "the fields have kept the paths";
}

TEST_F(CoversTest, AFailureOutsideOfANewImageIsOne) {
    SelectArrival();
    RecordingConnection& recorder = Record();
    recorder.failOn = "Insert Into Covers";
    EXPECT_THROW(covers.DeleteCover(CoverPage::Front), RuntimeError);
    recorder.failOn = "Select Front";
    EXPECT_THROW(covers.SelectAlbum(0), RuntimeError);
    EXPECT_THROW(covers.SSTab1_Click(CoverPage::Back), RuntimeError);
    EXPECT_EQ(std::count(view.calls.begin(), view.calls.end(), "hourglass"),
              std::count(view.calls.begin(), view.calls.end(), "pointer"));
}

TEST_F(CoversTest, DeletingSavesAndShowsAgainAndRemovesNoPicture) {
    SelectArrival();
    const std::string front = MakeFile("f.png");
    const std::string back = MakeFile("b.png");
    covers.SetCover(CoverPage::Front, front);
    covers.SetCover(CoverPage::Back, back);
    view.calls.clear();
    RecordingConnection& recorder = Record();
    covers.DeleteCover(CoverPage::Front);
    EXPECT_EQ(recorder.statements,
              (Texts{"Select Cover_id from Covers where  Album_id = 1 and Interpret_id = 1",
                     "Update Covers Set Front = '', Back = '" + back +
                         "', CD = '', CD2 = '', Inlay = '', Inlet = '' where Cover_id = 1",
                     "Select Front, Back, CD, CD2, Inlay, Inlet from Covers where Album_id = 1 and "
                     "Interpret_id = 1"}));
    EXPECT_EQ(view.calls, (Texts{"hourglass", "pointer", "hourglass", "show 1 " + back, "panel ", "pointer"}))
        << "the panel takes the front's column, which is empty now";
    EXPECT_EQ(covers.Panel(), "");
}

TEST_F(CoversTest, DeletingTheLastImageLeavesARowOfSixEmptyPaths) {
    SelectArrival();
    covers.SetCover(CoverPage::Inlay, MakeFile("y.png"));
    covers.DeleteCover(CoverPage::Inlay);
    EXPECT_EQ(Stored(), Texts{"1|1|1||||||"});
    EXPECT_EQ(covers.Panel(), folder / "y.png") << "no image is left to set it";
}

TEST_F(CoversTest, DeletingWithoutARowInsertsOne) {
    SelectArrival();
    covers.DeleteCover(CoverPage::CD2);
    EXPECT_EQ(Stored(), Texts{"1|1|1||||||"});
}

TEST_F(CoversTest, APageShowsItsColumnAlsoOfAFileThatHasGone) {
    AddAlbum("Abba", "Arrival");
    AddCovers("1, 1, '/0', '/1', '/2', '/3', '/4', null");
    covers.LoadAlbumList();
    covers.SelectAlbum(0);
    EXPECT_EQ(covers.Panel(), "") << "none of the files is there";
    RecordingConnection& recorder = Record();
    for (int page = 4; page >= 0; --page) {
        covers.SSTab1_Click(static_cast<CoverPage>(page));
        EXPECT_EQ(covers.Panel(), "/" + std::to_string(page));
    }
    covers.SSTab1_Click(CoverPage::Inlet);
    EXPECT_EQ(covers.Panel(), "");
    EXPECT_EQ(recorder.statements, Texts(6, "Select Front, Back, CD, CD2, Inlay, Inlet from Covers where "
                                            "Album_id = 1 and Interpret_id = 1"));
}

TEST_F(CoversTest, APageOfAnAlbumWithoutARowLeavesThePanel) {
    SelectArrival();
    view.isPicture = true;
    Record().failOn = "Insert";
    covers.SetCover(CoverPage::Front, "/a.png"); // Is shown, and not stored.
    EXPECT_EQ(covers.Panel(), "/a.png");
    covers.SSTab1_Click(CoverPage::Back);
    EXPECT_EQ(covers.Panel(), "/a.png");
}

TEST_F(CoversTest, ADoubleClickOpensThePanelsFileUnderTheHourglass) {
    SelectArrival();
    covers.OpenCoverFile();
    EXPECT_EQ(shell.executed, Texts{}) << "the panel is empty";
    covers.SetCover(CoverPage::Back, "/b 1.png");
    view.calls.clear();
    covers.OpenCoverFile();
    EXPECT_EQ(shell.executed, Texts{"/b 1.png"});
    EXPECT_EQ(view.calls, (Texts{"hourglass", "pointer"}));
    EXPECT_TRUE(msgBox.shown.empty());
    shell.executeResult = Shell::FileMissing;
    covers.OpenCoverFile();
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0], (ShownBox{"Die Datei konnte nicht gefunden werden!", "Öffnen nicht möglich",
                                         MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok}));
    shell.executeResult = Shell::FolderMissing;
    covers.OpenCoverFile();
    EXPECT_EQ(msgBox.shown.size(), 1U) << "every other result counts as success";
}

} // namespace quavernet::test
