#include "scanner/OggBatches.h"

#include "support/OggFiles.h"
#include "support/OggVolumes.h"
#include "support/RealFiles.h"
#include "support/RecordingConnection.h"
#include "support/TestLibrary.h"

#include "adapters/vorbis/OggInfoReader.h"
#include "app/LoadResString.h"
#include "scanner/ScanDriver.h"

#include <algorithm>
#include <filesystem>

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Notes the batches and hands them on, to the reader or to the real tool.
class RecordingTool : public OggInfoTool {
public:
    std::string Run(const std::vector<std::string>& paths) override {
        batches.push_back(paths);
        if (onRun) {
            onRun();
        }
        return output ? *output : useRealTool ? RealOggInfo(paths) : m_reader.Run(paths);
    }

    std::vector<std::vector<std::string>> batches;
    std::function<void()> onRun;
    std::optional<std::string> output;
    bool useRealTool = false;

private:
    OggInfoReader m_reader{RealFiles()};
};

class OggBatchesTest : public LibraryTest {
protected:
    OggBatchesTest() : connection(RecordingConnection::Install()) {
        services.fileSystem = &volumes;
        services.oggInfo = &tool;
        volumes.onFile = [](FileFacts& facts) { facts.drivePath = "/"; };
        mainModule.ScanStartTime = clock.now;
        run.texts = {"", " Prozent bearbeitet!", "left: ", "used: ", ""};
    }

    std::string Add(const std::string& name, const std::string& bytes) {
        const std::string path = music / name;
        WriteWhole(path, bytes);
        run.OggPaths.push_back(path);
        return path;
    }
    std::string Number(int i) { return std::string(i < 10 ? "0" : "") + std::to_string(i) + ".ogg"; }
    void AddFiles(int count) {
        for (int i = 0; i < count; ++i) {
            Add(Number(i), EncodedOgg::Stereo());
        }
    }
    void Read() { pass.ReadOggBatches(run); }
    std::vector<std::size_t> BatchSizes() {
        std::vector<std::size_t> sizes;
        for (const auto& batch : tool.batches) {
            sizes.push_back(batch.size());
        }
        return sizes;
    }
    std::vector<std::string> SkippedPaths() {
        std::vector<std::string> paths;
        for (const auto& entry : log.skipped) {
            paths.push_back(entry.path);
        }
        return paths;
    }
    std::vector<std::string> StoredNames() { return Rows("Select Name from Files order by File_id"); }

    RecordingConnection& connection;
    TemporaryFolder music;
    OggVolumes volumes;
    RecordingTool tool;
    CallList calls;
    LongWorkDouble work{calls};
    RecordingScanView view{calls};
    RecordingScanLog log{calls};
    ScanRun run{work, view, log};
    OggBatches pass;
};

TEST_F(OggBatchesTest, TwelveFilesAreReadInABatchOfTenAndOneOfTwo) {
    AddFiles(12);
    Read();
    EXPECT_THAT(BatchSizes(), ElementsAre(10U, 2U));
    EXPECT_EQ(tool.batches[0].front(), music / "00.ogg");
    EXPECT_EQ(tool.batches[1].back(), music / "11.ogg");
    EXPECT_EQ(StoredNames().size(), 12U);
    EXPECT_EQ(run.FilesDone, 12);
}

TEST_F(OggBatchesTest, TenFilesAreOneBatch) {
    AddFiles(10);
    Read();
    EXPECT_THAT(BatchSizes(), ElementsAre(10U));
}

TEST_F(OggBatchesTest, AnotherProgramMayWriteWhileABatchIsRead) {
    AddFiles(12);
    const auto other = OpenLibrary(libraryPath);
    std::vector<std::string> stored;
    tool.onRun = [&] {
        other->Execute("Insert into Albums (Name) values ('Batch " + std::to_string(stored.size()) + "')");
        other->Commit();
        stored.push_back(RowTextsOf(*other, "Select count(*) from Files").front());
    };
    Read();
    EXPECT_THAT(stored, ElementsAre("0", "10"));
    EXPECT_EQ(Count("Select * from Albums where Name like 'Batch _'"), 2);
}

TEST_F(OggBatchesTest, AFileIsStoredWithWhatItTells) {
    Add("a.ogg", EncodedOgg::Stereo());
    Read();
    EXPECT_THAT(
        Rows("Select T.Name, I.Interpret, A.Name, Q.Quality, F.Length, F.Genre_id, F.Extension_id from "
             "Files F, Titel T, Interpret I, Albums A, Quality Q where F.Title_id = T.Title_id and "
             "F.Inter_id = I.Inter_id and F.Album_id = A.Album_id and F.Quality_id = Q.Quality_id"),
        ElementsAre("Über den Wolken|Die Ärzte|Größe|112|3|17|3"));
}

TEST_F(OggBatchesTest, TheRealToolsOutputGivesTheSameLibrary) {
    Add("a.ogg", EncodedOgg::Stereo());
    Add("b - c.ogg", EncodedOgg::Mono());
    Add("broken.ogg", "no ogg");
    Add("chain.ogg", EncodedOgg::Stereo() + EncodedOgg::Managed());
    const std::string everything =
        "Select F.Name, F.Path, F.Sizeinbytes, F.Length, F.Genre_id, T.Name, I.Interpret, A.Name, Q.Quality "
        "from "
        "Files F, Titel T, Interpret I, Albums A, Quality Q where F.Title_id = T.Title_id and "
        "F.Inter_id = I.Inter_id and F.Album_id = A.Album_id and F.Quality_id = Q.Quality_id order by F.Name";
    Read();
    const auto own = Rows(everything);
    EXPECT_EQ(own.size(), 3U);
    Execute("Delete from Files");
    tool.useRealTool = true;
    Read();
    EXPECT_EQ(Rows(everything), own);
}

TEST_F(OggBatchesTest, ValuesDoNotPassFromFileToFileOrFromBatchToBatch) {
    AddFiles(10);
    Add("b - c.ogg", EncodedOgg::Mono());
    Add("d - e.ogg", EncodedOgg::Mono());
    Read();
    EXPECT_THAT(Rows("Select T.Name, I.Interpret, A.Name from Files F, Titel T, Interpret I, Albums A where "
                     "F.Title_id = T.Title_id and F.Inter_id = I.Inter_id and F.Album_id = A.Album_id and "
                     "F.Name > '10' order by F.Name"),
                ElementsAre("c|b|Kein Album...", "e|d|Kein Album..."));
}

TEST_F(OggBatchesTest, AQuickScanAsksForUnknownFilesOnly) {
    AddFiles(3);
    Read();
    Execute("Delete from Files where Name = '01.ogg'");
    connection.statements.clear();
    tool.batches.clear();
    run.QuickScan = true;
    Read();
    EXPECT_THAT(connection.StatementsOf("Select * from Files"),
                ElementsAre("Select * from Files where Path = '" + (music / "00.ogg") + "'",
                            "Select * from Files where Path = '" + (music / "01.ogg") + "'",
                            "Select * from Files where Path = '" + (music / "02.ogg") + "'"));
    EXPECT_THAT(tool.batches, ElementsAre(ElementsAre(music / "01.ogg")));
}

TEST_F(OggBatchesTest, AFullScanAsksForEveryFile) {
    AddFiles(2);
    Read();
    connection.statements.clear();
    Read();
    EXPECT_THAT(connection.StatementsOf("Select * from Files"), IsEmpty());
    EXPECT_THAT(BatchSizes(), ElementsAre(2U, 2U));
    EXPECT_EQ(StoredNames().size(), 2U);
}

TEST_F(OggBatchesTest, AQuickScanLooksForThePathQuoted) {
    Add("it's.ogg", EncodedOgg::Mono());
    run.QuickScan = true;
    Read();
    EXPECT_EQ(connection.statements.front(),
              "Select * from Files where Path = '" + (music / "it''s.ogg") + "'");
    EXPECT_THAT(StoredNames(), ElementsAre("it's.ogg"));
}

TEST_F(OggBatchesTest, TenKnownFilesInARowEndAQuickPassBeforeTheFilesAfterThem) {
    AddFiles(10);
    Read();
    AddFiles(0);
    Add("new.ogg", EncodedOgg::Mono());
    tool.batches.clear();
    calls.clear();
    run.QuickScan = true;
    Read();
    EXPECT_THAT(tool.batches, IsEmpty());
    EXPECT_EQ(StoredNames().size(), 10U) << "the new file after the ten is not looked at";
    EXPECT_THAT(calls, ElementsAre("panel 1: Ogg Dateien werden ausgelesen...", "progress 0.000000"))
        << "the pass is left without its end";
    EXPECT_EQ(run.Counts.New, 10U);
    EXPECT_EQ(run.Counts.Skipped, 11U) << "the ten, and the one that nobody looked at";
}

TEST_F(OggBatchesTest, NineKnownFilesDoNotEndAQuickPass) {
    AddFiles(9);
    Read();
    Add("new.ogg", EncodedOgg::Mono());
    tool.batches.clear();
    run.QuickScan = true;
    Read();
    EXPECT_THAT(tool.batches, ElementsAre(ElementsAre(music / "new.ogg")));
}

TEST_F(OggBatchesTest, ACancelledScanLeavesBeforeTheNextBatchAndFinishesTheOneUnderWay) {
    AddFiles(25);
    tool.onRun = [this] { run.work.SetCancelled(true); };
    Read();
    EXPECT_THAT(BatchSizes(), ElementsAre(10U));
    EXPECT_EQ(StoredNames().size(), 10U);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "panel 3: verbl.: 00:00:00"), 1)
        << "only the step of the batch has shown it";
}

TEST_F(OggBatchesTest, APassThatIsCancelledAlreadyReadsNothing) {
    AddFiles(1);
    run.work.SetCancelled(true);
    Read();
    EXPECT_THAT(tool.batches, IsEmpty());
    EXPECT_EQ(events.count, 0);
}

TEST_F(OggBatchesTest, ACancelInTheEventsOfABatchStillReadsThatBatch) {
    AddFiles(11);
    events.onDoEvents = [this] { run.work.SetCancelled(true); };
    Read();
    EXPECT_THAT(BatchSizes(), ElementsAre(10U));
}

TEST_F(OggBatchesTest, EventsRunOncePerBatchAndOncePerStoredFile) {
    AddFiles(12);
    Read();
    EXPECT_EQ(events.count, 2 + 12);
}

TEST_F(OggBatchesTest, ThePassShowsTheseTextsInThisOrder) {
    AddFiles(2);
    clock.now.second += 4;
    tool.onRun = [this] { calls.push_back("tool"); };
    Read();
    EXPECT_THAT(calls,
                ElementsAre("panel 1: Ogg Dateien werden ausgelesen...", "progress 0.000000",
                            "panel 1: Ogg Dateien werden hinzugefügt...", "tool", "progress 50.000000",
                            "title: Quavernet - 50 %", "panel 2: 50 Prozent bearbeitet!",
                            "panel 3: left: 00:00:04", "panel 4: used: 00:00:04", "progress 100.000000",
                            "title: Quavernet - 100 %", "panel 2: 100 Prozent bearbeitet!",
                            "panel 3: verbl.: 00:00:00", "panel 4: Zeit: 00:00:04",
                            "panel 3: verbl.: 00:00:00", "panel 4: Zeit: 00:00:00", "progress 0.000000"));
}

TEST_F(OggBatchesTest, TheStepAtTheEndOfABatchSpeaksGermanInEnglishToo) {
    settings.values["Language"] = "ENG";
    AddFiles(1);
    Read();
    EXPECT_THAT(calls, Contains("panel 3: verbl.: 00:00:00"));
    EXPECT_THAT(calls, Contains("panel 4: Zeit: 00:00:00"));
    EXPECT_EQ(work.panels[3], LoadResString(345) + "00:00:00");
    EXPECT_EQ(work.panels[4], LoadResString(346) + "00:00:00");
}

TEST_F(OggBatchesTest, ARecordThatCannotBeStoredIsDroppedAndNamedAndTheRestGoesOn) {
    mainModule.ScanLogEnabled = true;
    Add("a.ogg", EncodedOgg::Stereo());
    const std::string noOgg = Add("b.ogg", "this is no ogg");
    const std::string tooLong =
        Add("c.ogg", WithLastGranule(EncodedOgg::Stereo(), std::int64_t{44100} * 547 * 60));
    const std::string gone = Add("d.ogg", EncodedOgg::Stereo());
    Add("e.ogg", EncodedOgg::Stereo());
    tool.onRun = [&] { std::filesystem::remove(gone); };
    Read();
    EXPECT_THAT(StoredNames(), ElementsAre("a.ogg", "e.ogg"));
    EXPECT_THAT(SkippedPaths(), ElementsAre(noOgg, tooLong, gone));
    EXPECT_EQ(log.skipped[1].reason, "Overflow");
    EXPECT_EQ(log.skipped[1].kind, SkippedEntry::Kind::Unreadable);
    EXPECT_EQ(log.skipped[2].kind, SkippedEntry::Kind::Missing);
    EXPECT_EQ(run.FilesDone, 4) << "the missing file has no record";
}

TEST_F(OggBatchesTest, AFileThatTheReaderDoesNotTellOfThoughItIsThereMayNotBeRead) {
    mainModule.ScanLogEnabled = true;
    AddFiles(1);
    tool.output = "";
    Read();
    ASSERT_EQ(log.skipped.size(), 1U);
    EXPECT_EQ(log.skipped[0].kind, SkippedEntry::Kind::NoAccess);
}

TEST_F(OggBatchesTest, ALengthOf546MinutesIsStored) {
    Add("a.ogg", WithLastGranule(EncodedOgg::Stereo(), std::int64_t{44100} * (546 * 60 + 7)));
    Read();
    EXPECT_EQ(Value("Select Length from Files"), "32767");
}

TEST_F(OggBatchesTest, AFileThatVanishesBeforeItsStoreIsDropped) {
    mainModule.ScanLogEnabled = true;
    const std::string first = Add("a.ogg", EncodedOgg::Stereo());
    const std::string gone = Add("b.ogg", EncodedOgg::Stereo());
    events.onDoEvents = [&] {
        if (Count("Select * from Files") == 1) {
            std::filesystem::remove(gone);
        }
    };
    Read();
    EXPECT_THAT(StoredNames(), ElementsAre("a.ogg"));
    EXPECT_THAT(SkippedPaths(), ElementsAre(gone));
}

TEST_F(OggBatchesTest, AFileWithoutANominalBitRateIsDroppedAndTheLogSaysWhy) {
    constexpr std::size_t NominalBitRate = 20; // In the identification packet.
    mainModule.ScanLogEnabled = true;
    const std::string silent =
        Add("a.ogg", WithIdentification(EncodedOgg::Stereo(), NominalBitRate, LittleEndian32(0)));
    Add("b.ogg", EncodedOgg::Mono());
    for (const bool real : {false, true}) {
        tool.useRealTool = real;
        log.skipped.clear();
        Read();
        EXPECT_THAT(StoredNames(), ElementsAre("b.ogg"));
        EXPECT_THAT(SkippedPaths(), ElementsAre(silent));
        EXPECT_EQ(log.skipped[0].kind, SkippedEntry::Kind::NoBitRate);
    }
}

TEST_F(OggBatchesTest, AFileThatVanishedIsNotDroppedForItsBitRate) {
    mainModule.ScanLogEnabled = true;
    const std::string gone = Add("a.ogg", EncodedOgg::Stereo());
    tool.output = "Processing file \"" + gone + "\"...\n";
    tool.onRun = [&] { std::filesystem::remove(gone); };
    Read();
    EXPECT_THAT(SkippedPaths(), ElementsAre(gone));
    EXPECT_EQ(log.skipped[0].kind, SkippedEntry::Kind::Unreadable);
}

TEST_F(OggBatchesTest, AFailingStatementDropsItsRecordAlone) {
    mainModule.ScanLogEnabled = true;
    Add("a.ogg", EncodedOgg::Stereo());
    connection.failOn = "Insert Into Interpret";
    Read();
    EXPECT_THAT(SkippedPaths(), ElementsAre(music / "a.ogg"));
    EXPECT_EQ(log.skipped[0].reason, "constraint failed");
    EXPECT_EQ(Count("Select * from Titel"), 1) << "what was written before stays";
}

TEST_F(OggBatchesTest, AFaultOfTheLibraryIsNoFaultOfTheFileAndEndsThePass) {
    mainModule.ScanLogEnabled = true;
    AddFiles(3);
    connection.onStatement = [](const std::string& statement) {
        if (statement.starts_with("Insert into Files")) {
            throw LibraryError(LibraryFault::DiskFull, "Quavernet.db", 13, "database or disk is full");
        }
    };
    EXPECT_THROW(Read(), LibraryError);
    EXPECT_THAT(log.skipped, IsEmpty());
}

TEST_F(OggBatchesTest, WithoutTheScanLogADroppedRecordIsNotNamed) {
    Add("b.ogg", "this is no ogg");
    Read();
    EXPECT_THAT(log.skipped, IsEmpty());
}

TEST_F(OggBatchesTest, AnOutputWithoutAnyPathStoresNothingAndStillMovesTheBar) {
    mainModule.ScanLogEnabled = true;
    AddFiles(1);
    tool.output = "";
    Read();
    EXPECT_THAT(StoredNames(), IsEmpty());
    EXPECT_EQ(run.FilesDone, 1);
    EXPECT_THAT(SkippedPaths(), ElementsAre(music / "00.ogg"));
}

TEST_F(OggBatchesTest, ACommentThatLooksLikeAFileLineCostsItsRecordAndNoOther) {
    mainModule.ScanLogEnabled = true;
    const std::string odd =
        Add("odd.ogg", WithComments(EncodedOgg::Stereo(), {"X=Processing file about nothing"}));
    Add("a.ogg", EncodedOgg::Stereo());
    Read();
    EXPECT_THAT(StoredNames(), ElementsAre("a.ogg"));
    EXPECT_THAT(SkippedPaths(), ElementsAre(odd, "bout not"));
}

TEST_F(OggBatchesTest, AWholeScanFindsReadsAndStoresOggFiles) {
    mainModule.ScanLogEnabled = true;
    WriteWhole(music / "a.OGG", EncodedOgg::Stereo());
    std::filesystem::create_directory(music / "sub");
    WriteWhole(music / "sub/b - c.ogg", EncodedOgg::Mono());
    dialogs.folder = music.Path();
    ScanDriver driver(work, view, log, &pass);
    driver.StartScan();
    EXPECT_THAT(Rows("Select Name from Files order by Name"), ElementsAre("a.OGG", "b - c.ogg"));
    EXPECT_EQ(work.progress, 0);
    EXPECT_THAT(calls, Contains("log files: 2"));
}

} // namespace
} // namespace quavernet::test
