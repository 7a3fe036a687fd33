#include "scanner/ScanDriver.h"

#include "support/ScanTest.h"

#include <algorithm>

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::Not;

class ScanDriverTest : public ScanTest {};

const std::vector<std::string> ClearedPanels{"panel 1: ", "panel 2: ", "panel 3: ", "panel 4: ", "panel 5: "};

std::vector<std::string> Joined(std::vector<std::string> first, const std::vector<std::string>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

TEST_F(ScanDriverTest, AScanOfOneFileShowsThisInThisOrder) {
    WriteMp3("a.mp3");
    settings.values["LastScan"] = "01.10.2026";
    events.onDoEvents = [&] {
        if (calls.back() != "events") { // How often they run in a row is told by the tests of each step.
            calls.push_back("events");
        }
    };

    Scan();

    EXPECT_THAT(calls, ElementsAreArray(Joined(ClearedPanels, {"state: scan running",
                                                               "panel 1: Initialisiere Ordner ",
                                                               "events",
                                                               "pointer 11",
                                                               "events",
                                                               "panel 1: Initialisiere Ordner .",
                                                               "panel 1: Initialisierung abgeschlossen",
                                                               "pointer 0",
                                                               "clear list",
                                                               "pointer 11",
                                                               "events",
                                                               "panel 1: Scanning... " + (music / "a.mp3"),
                                                               "events",
                                                               "progress 100.000000",
                                                               "title: Quavernet - 100 %",
                                                               "panel 2: 100 Prozent bearbeitet!",
                                                               "panel 3: verbl.: 00:00:00",
                                                               "panel 4: Zeit: 00:00:00",
                                                               "pointer 0",
                                                               "progress 0.000000",
                                                               "drive combo",
                                                               "album combo",
                                                               "load ''",
                                                               "state: idle",
                                                               "title: Quavernet - letzter scan: 20.11.2026",
                                                               "panel 1: "})));
    EXPECT_EQ(settings.values["LastScan"], "20.11.2026");
    EXPECT_FALSE(mainModule.SuppressComboClick);
    EXPECT_GE(connection.commits, 1);
    EXPECT_THAT(volumes.folders, ElementsAre(music.Path(), music.Path()))
        << "taken again for the second pass";
}

TEST_F(ScanDriverTest, TheInspectedValuesAreStored) {
    Write("a.mp3", Mp3Bytes("Title", "Artist", "Album", 32, 10));
    Write("b.wav", WaveBytes());

    Scan();

    EXPECT_THAT(Rows("Select F.Name, T.Name, I.Interpret, A.Name, Q.Quality, F.Length, F.Genre_id, "
                     "F.Sizeinbytes, F.Extension_id from Files F, Titel T, Interpret I, Albums A, Quality Q "
                     "where F.Title_id = T.Title_id and F.Inter_id = I.Inter_id and F.Album_id = A.Album_id "
                     "and F.Quality_id = Q.Quality_id order by F.Name"),
                ElementsAre("a.mp3|Title|Artist|Album|128|10|32|160128|1",
                            ::testing::StartsWith("b.wav|b|Unbekannt|Kein Album...|8|1|255|8044|2")));
}

TEST_F(ScanDriverTest, WithTheScanLogItIsShownAndClosedForTheLengthOfTheScan) {
    WriteMp3("a.mp3");
    mainModule.ScanLogEnabled = true;

    Scan();

    EXPECT_THAT(CallsOf("log"),
                ElementsAre("log show", "log close off", "log line: Starting scan...", "log select",
                            "log line: ", "log select", "log line: 14:03:22 - Saved... " + (music / "a.mp3"),
                            "log files: 1", "log megabytes: 0,15", "log minutes: 0", "log select",
                            "log line: Fertig: 1 neu, 0 aktualisiert, 0 übergangen, 0:00", "log select",
                            "log close on"));
    const auto at = [&](const std::string& call) { return std::find(calls.begin(), calls.end(), call); };
    EXPECT_LT(at("panel 1: Initialisierung abgeschlossen"), at("log show"));
    EXPECT_LT(at("log show"), at("clear list"));
    EXPECT_LT(at("progress 0.000000"), at("log close on"));
    EXPECT_LT(at("log close on"), at("drive combo"));
}

TEST_F(ScanDriverTest, TheLogCountersGoOnInTheNextScan) {
    WriteMp3("a.mp3");
    mainModule.ScanLogEnabled = true;

    Scan();
    Scan();

    EXPECT_THAT(CallsOf("log files"), ElementsAre("log files: 1", "log files: 2"));
}

TEST_F(ScanDriverTest, TheFolderIsAskedForByItsTitle) {
    dialogs.folder = std::nullopt;

    Scan();

    EXPECT_THAT(dialogs.titles, ElementsAre("Wählen Sie einen Ordner"));
}

TEST_F(ScanDriverTest, ACancelledDialogEndsTheCommandAtOnceAndCombosStayMuted) {
    dialogs.folder = std::nullopt;

    Scan();

    EXPECT_EQ(calls, ClearedPanels);
    EXPECT_TRUE(mainModule.SuppressComboClick);
}

TEST_F(ScanDriverTest, TheChosenPathIsCutAtItsFirstNul) {
    WriteMp3("a.mp3");
    dialogs.folder = music.Path() + std::string("\0rest", 5);

    Scan();

    EXPECT_THAT(volumes.folders, ElementsAre(music.Path(), music.Path()));
}

TEST_F(ScanDriverTest, TheStandardPathIsTakenWithoutAQuestion) {
    WriteMp3("a.mp3");
    settings.values["ScanpathValue"] = "1";
    settings.values["Scanpath"] = music.Path() + "/";

    Scan();

    EXPECT_THAT(dialogs.titles, IsEmpty());
    EXPECT_THAT(volumes.folders, ElementsAre(music.Path() + "/", music.Path() + "/"));
    EXPECT_THAT(StoredPaths(), ElementsAre("a.mp3"));
}

TEST_F(ScanDriverTest, AnEmptyStandardPathStartsNoScan) {
    settings.values["ScanpathValue"] = "1";

    Scan();

    EXPECT_THAT(dialogs.titles, IsEmpty());
    EXPECT_EQ(calls, ClearedPanels);
    EXPECT_TRUE(mainModule.SuppressComboClick);
}

TEST_F(ScanDriverTest, AnyOtherValueOfTheSettingAsksForTheFolder) {
    settings.values["Scanpath"] = music.Path();
    for (const char* value : {"0", "", "2", "ja", "-1", "11"}) {
        settings.values["ScanpathValue"] = value;
        dialogs.folder = std::nullopt;
        Scan();
    }

    EXPECT_EQ(dialogs.titles.size(), 6u);
}

TEST_F(ScanDriverTest, TheSettingCountsByItsNumber) {
    for (const char* value : {"1", " 1", "1.0", "01"}) {
        settings.values["ScanpathValue"] = value;
        Scan();
    }

    EXPECT_THAT(dialogs.titles, IsEmpty());
}

TEST_F(ScanDriverTest, AFolderThatCannotBeOpenedEndsTheCommandWithoutAMessage) {
    dialogs.folder = music / "missing";
    mainModule.ScanLogEnabled = true;

    Scan();

    EXPECT_THAT(calls, ElementsAreArray(Joined(
                           ClearedPanels, {"state: scan running", "pointer 0", "state: idle", "log close on",
                                           "panel 1: ", "title: Quavernet - letzter scan: -"})));
    EXPECT_TRUE(mainModule.SuppressComboClick);
    EXPECT_THAT(msgBox.shown, IsEmpty());
    EXPECT_EQ(settings.values.count("LastScan"), 0u);
}

TEST_F(ScanDriverTest, AFolderThatIsGoneBeforeTheSecondPassEndsTheCommandLikewise) {
    WriteMp3("a.mp3");
    volumes.foldersLeft = 1;

    Scan();

    EXPECT_EQ(calls.back(), "title: Quavernet - letzter scan: -");
    EXPECT_THAT(calls, Not(Contains("clear list")));
    EXPECT_TRUE(mainModule.SuppressComboClick);
}

TEST_F(ScanDriverTest, AFolderWithoutFilesEndsTheCommandAndLeavesTheList) {
    std::filesystem::create_directory(music / "sub");
    WriteMp3("sub/a.mp3");
    view.options.Recursive = false;

    Scan();

    EXPECT_THAT(
        calls, ElementsAreArray(Joined(ClearedPanels,
                                       {"state: scan running", "panel 1: Initialisiere Ordner ", "pointer 11",
                                        "panel 1: Initialisierung abgeschlossen", "pointer 0", "pointer 0",
                                        "state: idle", "panel 1: ", "title: Quavernet - letzter scan: -"})));
    EXPECT_TRUE(mainModule.SuppressComboClick);
}

TEST_F(ScanDriverTest, OnlyHiddenFilesCountAsNone) {
    WriteMp3(".a.mp3");

    Scan();

    EXPECT_THAT(StoredPaths(), IsEmpty());
    EXPECT_THAT(calls, Not(Contains("clear list")));
}

TEST_F(ScanDriverTest, ACancelInTheCountingPassEndsTheCommandThoughFilesWereCounted) {
    WriteMp3("a.mp3");
    events.onDoEvents = [&] {
        if (events.count == 2) { // In the folder, whose files are still counted.
            driver.Cancel();
        }
    };

    Scan();

    EXPECT_THAT(calls, Contains("panel 1: Initialisiere Ordner ."));

    EXPECT_THAT(calls, Not(Contains("clear list")));
    EXPECT_EQ(calls.back(), "title: Quavernet - letzter scan: -");
    EXPECT_TRUE(mainModule.SuppressComboClick);
}

TEST_F(ScanDriverTest, ACancelFromTheScanBeforeIsForgotten) {
    WriteMp3("a.mp3");
    driver.Cancel();

    Scan();

    EXPECT_THAT(StoredPaths(), ElementsAre("a.mp3"));
}

TEST_F(ScanDriverTest, ACancelBetweenTheTwoPassesIsForgotten) {
    WriteMp3("a.mp3");
    mainModule.ScanLogEnabled = true;
    log.onShow = [&] { driver.Cancel(); };

    Scan();

    EXPECT_THAT(StoredPaths(), ElementsAre("a.mp3"));
}

TEST_F(ScanDriverTest, ACancelInTheSearchEndsItAtTheNextFileAndFinishesAsUsual) {
    for (const char* name : {"a.mp3", "b.mp3", "c.mp3"}) {
        WriteMp3(name);
    }
    WriteMp3("sub/d.mp3");
    events.onDoEvents = [&] {
        if (work.panels[1].starts_with("Scanning... ")) {
            driver.Cancel();
        }
    };

    Scan();

    EXPECT_EQ(StoredPaths().size(), 1u);
    EXPECT_EQ(CallsOf("panel 1: Scanning... ").size(), 1u);
    EXPECT_EQ(CallsOf("panel 2: ").size(), 2u) << "cleared, and one step: none for the file that was left";
    EXPECT_THAT(calls, Contains("load ''"));
    EXPECT_FALSE(mainModule.SuppressComboClick);
    EXPECT_EQ(settings.values["LastScan"], "20.11.2026");
    EXPECT_TRUE(mainModule.CurrentFile.FileName.empty()) << "the next file's fields had been cleared";
}

TEST_F(ScanDriverTest, ACancelBetweenFoldersLeavesTheSecondUntouched) {
    WriteMp3("one/a.mp3");
    WriteMp3("two/b.mp3");
    int listed = 0;
    volumes.onList = [&](FolderContents&) { ++listed; };
    events.onDoEvents = [&] {
        if (!connection.StatementsOf("Insert Into Files").empty()) {
            driver.Cancel();
        }
    };

    Scan();

    EXPECT_EQ(StoredPaths().size(), 1u);
    EXPECT_EQ(listed, 3 + 2) << "all three to count, two to search";
    EXPECT_FALSE(mainModule.CurrentFile.FileName.empty());
}

TEST_F(ScanDriverTest, TheLogsLastLineCountsWhatBecameOfTheFiles) {
    for (const char* name : {"a.mp3", "b.mp3", "picture.jpg"}) {
        WriteMp3(name);
    }
    Scan();
    WriteMp3("c.mp3");
    std::filesystem::create_symlink(music / "nowhere", music / "d.mp3");
    mainModule.ScanLogEnabled = true;
    calls.clear();
    events.onDoEvents = [&] { clock.now.second = 26; };
    Scan();
    EXPECT_THAT(work.endWords, ElementsAre("Fertig: 2 neu, 0 aktualisiert, 0 übergangen, 0:00",
                                           "Fertig: 1 neu, 2 aktualisiert, 1 übergangen, 0:04"));
    EXPECT_EQ(CallsOf("log line: ").back(), "log line: " + work.endWords.back());
    const auto line = std::find(calls.begin(), calls.end(), "log line: " + work.endWords.back());
    EXPECT_LT(line, std::find(calls.begin(), calls.end(), "log close on"))
        << "a log that has gone shows nothing";
    EXPECT_EQ(work.PanelText(Panel::Scanning), "");
}

TEST_F(ScanDriverTest, InAQuickScanKnownFilesAreCountedAsSkipped) {
    WriteMp3("a.mp3");
    WriteMp3("b.mp3");
    view.options.QuickScan = true;
    Scan();
    WriteMp3("c.mp3");
    Scan();
    EXPECT_EQ(work.endWords.back(), "Fertig: 1 neu, 0 aktualisiert, 2 übergangen, 0:00");
}

TEST_F(ScanDriverTest, ACancelledScanSaysAfterHowLongAndWhatItDid) {
    for (const char* name : {"a.mp3", "b.mp3"}) {
        WriteMp3(name);
    }
    mainModule.ScanLogEnabled = true;
    events.onDoEvents = [&] {
        if (work.panels[1].starts_with("Scanning... ")) {
            clock.now.second = 29;
            driver.Cancel();
        }
    };
    Scan();
    EXPECT_THAT(work.endWords, ElementsAre("Abgebrochen nach 0:07: 1 neu, 0 aktualisiert, 0 übergangen"));
    EXPECT_EQ(CallsOf("log line: ").back(), "log line: " + work.endWords.back());
}

TEST_F(ScanDriverTest, AScanThatFindsNothingOrIsCancelledWhileItCountsSaysSo) {
    Scan();
    WriteMp3("a.mp3");
    events.onDoEvents = [&] { driver.Cancel(); };
    Scan();
    EXPECT_THAT(work.endWords, ElementsAre("Fertig: keine Datei gefunden, 0:00", "Abgebrochen nach 0:00"));
}

TEST_F(ScanDriverTest, AScanWithoutAFolderSaysNothing) {
    dialogs.folder = std::nullopt;
    Scan();
    dialogs.folder = music / "missing";
    Scan();
    EXPECT_THAT(work.endWords, IsEmpty());
}

TEST_F(ScanDriverTest, WithLoadOverSearchTheListStaysEmpty) {
    WriteMp3("a.mp3");
    mainModule.LoadOverSearch = true;

    Scan();

    EXPECT_THAT(calls, Not(Contains("load ''")));
    EXPECT_THAT(calls, Contains("album combo"));
}

TEST_F(ScanDriverTest, OggFilesAreCollectedAndHandedOverWithFreshCounters) {
    Write("a.ogg");
    Write("B.OGG");
    WriteMp3("c.mp3");
    int ticks = 0;
    events.onDoEvents = [&] { clock.now.second = 22 + std::min(++ticks, 30); };

    Scan();

    EXPECT_EQ(ogg.runs, 1);
    EXPECT_THAT(ogg.paths, ::testing::UnorderedElementsAre(music / "a.ogg", music / "B.OGG"));
    EXPECT_EQ(ogg.filesDone, 0);
    EXPECT_FALSE(ogg.cancelled);
    EXPECT_EQ(ogg.start, clock.now);
    EXPECT_THAT(StoredPaths(), ElementsAre("c.mp3"));
}

TEST_F(ScanDriverTest, OggPathsOfACancelledScanAreHandedOverWithTheFlagSet) {
    Write("a.ogg");
    Write("sub/b.ogg");
    events.onDoEvents = [&] {
        if (work.panels[1].starts_with("Scanning... ")) {
            driver.Cancel();
        }
    };

    Scan();

    EXPECT_EQ(ogg.runs, 1);
    EXPECT_THAT(ogg.paths, ElementsAre(music / "a.ogg"));
    EXPECT_TRUE(ogg.cancelled);
}

TEST_F(ScanDriverTest, WithoutOggFilesThePassDoesNotRun) {
    WriteMp3("a.mp3");

    Scan();

    EXPECT_EQ(ogg.runs, 0);
}

TEST_F(ScanDriverTest, WithoutAPassOggFilesAreLeftAlone) {
    Write("a.ogg");
    ScanDriver withoutPass(work, view, log);

    withoutPass.StartScan();

    EXPECT_THAT(StoredPaths(), IsEmpty());
    EXPECT_EQ(calls.back(), "panel 1: ");
    EXPECT_FALSE(mainModule.SuppressComboClick);
}

TEST_F(ScanDriverTest, TheSumOfMegabytesBeginsAgainInTheNextScan) {
    Write("a.mp3", std::string(1600000, 'x'));
    Write("b.ogg");

    Scan();
    EXPECT_DOUBLE_EQ(ogg.megabytes, 1.53);
    Scan();
    EXPECT_DOUBLE_EQ(ogg.megabytes, 1.53);
}

TEST_F(ScanDriverTest, TheOggPathsOfOneScanAreGoneInTheNext) {
    Write("a.ogg");
    Scan();
    std::filesystem::rename(music / "a.ogg", music / "b.ogg");
    Scan();

    EXPECT_THAT(ogg.paths, ElementsAre(music / "b.ogg"));
}

TEST_F(ScanDriverTest, TheOggPathsOfAScanThatFailedAreGoneInTheNext) {
    Write("a.ogg");
    WriteMp3("sub/b.mp3");
    connection.failOn = "Insert Into Files";
    EXPECT_THROW(Scan(), RuntimeError);
    connection.failOn.clear();

    Scan();

    EXPECT_THAT(ogg.paths, ElementsAre(music / "a.ogg"));
}

TEST_F(ScanDriverTest, AFailingStatementLeavesTheScanWhereItWas) {
    WriteMp3("a.mp3");
    connection.failOn = "Insert Into Files";

    EXPECT_THROW(Scan(), RuntimeError);

    EXPECT_TRUE(mainModule.SuppressComboClick);
    EXPECT_THAT(calls, Not(Contains("state: idle")));
    EXPECT_EQ(settings.values.count("LastScan"), 0u);
    EXPECT_EQ(Count("Select Inter_id from Interpret"), 1);
}

TEST_F(ScanDriverTest, ScanRunningIsTheCallersAffair) {
    WriteMp3("a.mp3");
    mainModule.ScanRunning = true;
    Scan();
    EXPECT_TRUE(mainModule.ScanRunning);

    mainModule.ScanRunning = false;
    Scan();
    EXPECT_FALSE(mainModule.ScanRunning);
}

TEST_F(ScanDriverTest, TheLibraryIsCopiedBeforeTheFirstStatementOfAScanAndNotWithoutOne) {
    Scan();
    EXPECT_THAT(connection.statements, IsEmpty());

    WriteMp3("a.mp3");
    Scan();
    EXPECT_EQ(connection.statements.front(), "(backup)");
}

TEST_F(ScanDriverTest, ACopyThatCannotBeMadeDoesNotKeepTheScanBack) {
    WriteMp3("a.mp3");
    connection.failBackup = true;

    Scan();

    EXPECT_THAT(StoredPaths(), ElementsAre("a.mp3"));
    EXPECT_THAT(CallsOf("log line: "), IsEmpty());
}

TEST_F(ScanDriverTest, TheLogNamesACopyThatCannotBeMade) {
    WriteMp3("a.mp3");
    connection.failBackup = true;
    mainModule.ScanLogEnabled = true;

    Scan();

    EXPECT_THAT(calls, Contains("log line: Keine Sicherungskopie der Datenbank: no space"));
}

TEST_F(ScanDriverTest, ADamagedOrReplacedLibraryIsNotWrittenTo) {
    WriteMp3("a.mp3");
    for (const LibraryFault fault : {LibraryFault::Damaged, LibraryFault::Moved}) {
        connection.backupFault = fault;

        EXPECT_THROW(Scan(), LibraryError);

        EXPECT_THAT(StoredPaths(), IsEmpty());
    }
    connection.backupFault = LibraryFault::Locked;
    Scan();
    EXPECT_THAT(StoredPaths(), ElementsAre("a.mp3"));
}

} // namespace
} // namespace quavernet::test
