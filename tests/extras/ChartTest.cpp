#include "extras/Chart.h"

#include "support/LongWorkDouble.h"
#include "support/RecordingPlayer.h"
#include "support/TestLibrary.h"
#include "support/Texts.h"

#include "app/LoadResString.h"

#include <gmock/gmock.h>

#include <functional>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string mostPlayed =
    "Select Name, Hits, Path, File_id from Files order by  Hits DESC, DateLastModified DESC";
const std::string newest =
    "Select Name, DateLastModified, Path, File_id from Files order by DateLastModified DESC";

const ShownBox cannotPlay{"Die Datei konnte nicht geöffnet werden!", "Abspielen nicht möglich!",
                          MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok};

/// A player that lets a test act where the real one lets events run.
class ActingPlayer : public RecordingPlayer {
public:
    using RecordingPlayer::RecordingPlayer;

    void FillPlaylistFromCharts(const RowTexts& chartPaths, std::int32_t row) override {
        RecordingPlayer::FillPlaylistFromCharts(chartPaths, row);
        handed.push_back(row <= static_cast<std::int32_t>(chartPaths.Count()) ? chartPaths.Item(row) : "-");
    }
    void PlayFile(std::int16_t index) override {
        RecordingPlayer::PlayFile(index);
        if (onPlay) {
            onPlay();
        }
    }

    Texts handed; ///< The paths of the rows that were asked for.
    std::function<void()> onPlay;
};

class ChartTest : public LibraryTest {
protected:
    void AddFile(const std::string& name, int hits, const std::string& date) {
        Execute("Insert into Files (Name, Path, Hits, DateLastModified) values ('" + name + "', '/m/" + name +
                "', " + std::to_string(hits) + ", '" + date + "')");
    }
    void AddThreeFiles() {
        AddFile("a.mp3", 1, "01.03.2026");
        AddFile("b.mp3", 7, "20.11.2026");
        AddFile("c.mp3", 3, "31.12.2025");
    }
    ChartContent Load(const std::string& limit, bool top = true) {
        settings.values["FileCountTopList"] = limit;
        (top ? mainModule.ChartShowTop : mainModule.ChartShowNew) = true;
        chart.Form_Load();
        return chart.FillChart();
    }
    static Texts Lines(const ChartContent& content) {
        Texts lines;
        for (const ChartLine& line : content.Lines) {
            lines.push_back(line[0] + "|" + line[1] + "|" + line[2]);
        }
        return lines;
    }
    std::optional<ChartContent> DoubleClick(std::int32_t row) {
        return chart.grdChart_DblClick(row, player, [this](MousePointer pointer) {
            calls.push_back(pointer == MousePointer::Hourglass ? "hourglass" : "pointer");
        });
    }
    Texts Hits() { return Rows("Select Hits from Files order by File_id"); }

    RecordingConnection& connection = Record();
    CallList calls;
    ActingPlayer player{calls};
    LibraryViewsDouble views{calls};
    Chart chart;
};

TEST_F(ChartTest, TheTopListRanksByHitsAndShowsThem) {
    AddThreeFiles();
    connection.statements.clear();
    const ChartContent content = Load("3");
    EXPECT_THAT(connection.statements, ElementsAre(mostPlayed));
    EXPECT_EQ(content.Title, "TOP 3");
    EXPECT_THAT(content.Headers, ElementsAre("Platz", "Name", "Hits"));
    EXPECT_TRUE(content.IsTopList);
    EXPECT_THAT(Lines(content), ElementsAre("1.|b.mp3|7", "2.|c.mp3|3", "3.|a.mp3|1"));
    EXPECT_EQ(chart.ChartFileIds(), "2, 3, 1");
    EXPECT_EQ(content.CurrentRow, 0);
}

TEST_F(ChartTest, TheNewestListRanksByDateAndShowsItShort) {
    AddThreeFiles();
    AddFile("d.mp3", 0, "20.11.2026 14:03:22");
    connection.statements.clear();
    const ChartContent content = Load("4", false);
    EXPECT_THAT(connection.statements, ElementsAre(newest));
    EXPECT_EQ(content.Title, "Aktuelle Mp3s");
    EXPECT_THAT(content.Headers, ElementsAre("Platz", "Name", "Datum"));
    EXPECT_FALSE(content.IsTopList);
    EXPECT_THAT(Lines(content), ElementsAre("1.|d.mp3|20.11.2026", "2.|b.mp3|20.11.2026",
                                            "3.|a.mp3|01.03.2026", "4.|c.mp3|31.12.2025"));
    EXPECT_EQ(chart.ChartFileIds(), "4, 2, 1, 3");
}

TEST_F(ChartTest, DatesAreShortInTheFormOfTheRegion) {
    services.regional.shortDatePattern = "M/d/yyyy";
    services.regional.dateSeparator = "/";
    services.regional.twelveHours = true;
    mainModule.Connection = OpenLibrary(libraryPath, services.regional);
    AddFile("a.mp3", 0, "11/20/2026 2:03:22 PM");
    AddFile("b.mp3", 0, "1/2/2026");
    EXPECT_THAT(Lines(Load("2", false)), ElementsAre("1.|a.mp3|11/20/2026", "2.|b.mp3|1/2/2026"));
}

TEST_F(ChartTest, AFileWithoutADateComesLastWithAnEmptyCell) {
    Execute("Insert into Files (Name, Path) values ('x.ogg', '/m/x.ogg')");
    AddThreeFiles();
    EXPECT_EQ(Lines(Load("4", false)).back(), "4.|x.ogg|");
}

TEST_F(ChartTest, OnlyTheFlagOfTheTopListIsLookedAt) {
    AddThreeFiles();
    mainModule.ChartShowNew = true;
    EXPECT_TRUE(Load("3").IsTopList);
    mainModule.ChartShowTop = mainModule.ChartShowNew = false;
    EXPECT_FALSE(chart.FillChart().IsTopList);
}

TEST_F(ChartTest, TheHeadersAreThoseOfTheLanguage) {
    settings.values["Language"] = "ENG";
    EXPECT_EQ(Load("5").Title, "TOP 5");
    EXPECT_THAT(chart.FillChart().Headers, ElementsAre("Rank", "Name", "Hits"));
    chart.Form_Unload();
    EXPECT_EQ(Load("5", false).Title, "Newest Mp3s");
    EXPECT_THAT(chart.FillChart().Headers, ElementsAre("Rank", "Name", "Date"));
}

TEST_F(ChartTest, OfEqualHitsTheNewerFileIsFirstAndOfEqualDatesTheOneStoredFirst) {
    AddFile("a", 2, "01.01.2026");
    AddFile("b", 2, "03.01.2026");
    AddFile("c", 2, "01.01.2026");
    AddFile("d", 2, "02.01.2026");
    EXPECT_THAT(Lines(Load("4")), ElementsAre("1.|b|2", "2.|d|2", "3.|a|2", "4.|c|2"));
    EXPECT_THAT(Lines(Load("3")), ElementsAre("1.|b|2", "2.|d|2", "3.|a|2"));
    chart.Form_Unload();
    EXPECT_THAT(Lines(Load("4", false)),
                ElementsAre("1.|b|03.01.2026", "2.|d|02.01.2026", "3.|a|01.01.2026", "4.|c|01.01.2026"));
}

TEST_F(ChartTest, NoMoreFilesAreShownThanWereAskedFor) {
    AddThreeFiles();
    EXPECT_THAT(Lines(Load("2")), ElementsAre("1.|b.mp3|7", "2.|c.mp3|3"));
    EXPECT_EQ(chart.ChartFileIds(), "2, 3");
}

TEST_F(ChartTest, WhereFilesAreMissingLinesShowTheirNumberAlone) {
    AddThreeFiles();
    const ChartContent content = Load("5");
    EXPECT_THAT(Lines(content), ElementsAre("1.|b.mp3|7", "2.|c.mp3|3", "3.|a.mp3|1", "4.||", "5.||"));
    EXPECT_EQ(content.Title, "TOP 5");
    EXPECT_EQ(chart.ChartLimit(), 5);
    EXPECT_EQ(chart.ChartFileIds(), "2, 3, 1");
    AddFile("d.mp3", 5, "01.01.2026");
    EXPECT_EQ(Lines(chart.FillChart()).size(), 5U);
}

TEST_F(ChartTest, OfAnEmptyLibraryThereIsNoLineAtAll) {
    for (const bool top : {true, false}) {
        const ChartContent content = Load("10", top);
        EXPECT_THAT(content.Lines, IsEmpty());
        EXPECT_EQ(content.CurrentRow, -1);
        EXPECT_EQ(chart.ChartFileIds(), "");
        EXPECT_EQ(content.Title, top ? "TOP 10" : "Aktuelle Mp3s");
        chart.Form_Unload();
    }
}

TEST_F(ChartTest, ALengthOfNothingGivesAnEmptyList) {
    AddThreeFiles();
    for (const char* limit : {"0", "-5", "abc", "-99999999999"}) {
        const ChartContent content = Load(limit);
        EXPECT_THAT(content.Lines, IsEmpty()) << limit;
        EXPECT_EQ(chart.ChartFileIds(), "") << limit;
        EXPECT_EQ(content.CurrentRow, -1) << limit;
    }
    EXPECT_EQ(Load("-5").Title, "TOP -5");
    EXPECT_EQ(Load("abc").Title, "TOP 0");
}

TEST_F(ChartTest, AHugeLengthShowsAllFilesAndAsManyNumbersAsARowHas) {
    AddThreeFiles();
    const ChartContent content = Load("99999999999");
    EXPECT_EQ(content.Title, "TOP 2147483647");
    ASSERT_EQ(content.Lines.size(), 3U + 32767U);
    EXPECT_EQ(content.Lines.back()[0], "32770.");
    EXPECT_EQ(chart.ChartFileIds(), "2, 3, 1");
}

TEST_F(ChartTest, OneLineAloneHasNoCurrentRow) {
    AddThreeFiles();
    EXPECT_EQ(Load("1").CurrentRow, -1);
}

TEST_F(ChartTest, EachFillReadsTheLibraryAgainAndBeginsItsIdsAgain) {
    AddThreeFiles();
    (void)Load("2");
    Execute("Update Files Set Hits = 9 where File_id = 1");
    EXPECT_THAT(Lines(chart.FillChart()), ElementsAre("1.|a.mp3|9", "2.|b.mp3|7"));
    EXPECT_EQ(chart.ChartFileIds(), "1, 2");
}

TEST_F(ChartTest, AClosedWindowClearsBothFlagsAndKeepsNothing) {
    AddThreeFiles();
    mainModule.ChartShowNew = true;
    (void)Load("2");
    (void)DoubleClick(1);
    chart.Form_Unload();
    EXPECT_FALSE(mainModule.ChartShowTop);
    EXPECT_FALSE(mainModule.ChartShowNew);
    EXPECT_FALSE(chart.IsLoaded());
    EXPECT_EQ(chart.ChartFileIds(), "");
    EXPECT_EQ(Load("2").CurrentRow, 0) << "the row of the last double click is forgotten";
}

TEST_F(ChartTest, AFillThatFailsPassesThrough) {
    AddThreeFiles();
    connection.failOn = "Select Name, Hits";
    EXPECT_THROW((void)Load("3"), RuntimeError);
}

TEST_F(ChartTest, ADoubleClickReplacesTheQueuePlaysAndCounts) {
    AddThreeFiles();
    for (const bool adds : {false, true}) {
        mainModule.AlwaysAddToPlaylist = adds;
        (void)Load("3");
        connection.statements.clear();
        calls.clear();
        const auto content = DoubleClick(1);
        EXPECT_THAT(calls,
                    ElementsAre("hourglass", "Show", "FillPlaylistFromCharts 2", "PlayFile 1", "pointer"));
        EXPECT_THAT(connection.statements,
                    ElementsAre("Update Files Set Hits = Hits + 1 where Path = '/m/c.mp3'", mostPlayed));
        ASSERT_TRUE(content);
        EXPECT_EQ(content->CurrentRow, 1);
    }
    EXPECT_THAT(player.handed, ElementsAre("/m/c.mp3", "/m/c.mp3"));
    EXPECT_THAT(Hits(), ElementsAre("1", "7", "5"));
    EXPECT_THAT(shell.executed, IsEmpty());
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(ChartTest, TheOrderMayChangeUnderTheCurrentRow) {
    AddFile("a", 1, "01.01.2026");
    AddFile("b", 1, "01.01.2025");
    (void)Load("2");
    const auto content = DoubleClick(1);
    ASSERT_TRUE(content);
    EXPECT_THAT(Lines(*content), ElementsAre("1.|b|2", "2.|a|1"));
    EXPECT_EQ(content->CurrentRow, 1) << "the row stays, whatever file is in it now";
}

TEST_F(ChartTest, WithTheExternalPlayerTheSystemOpensTheFileAndThePlayCounts) {
    Execute("Insert into Files (Name, Path, Hits) values ('it''s.mp3', '/m/it''s.mp3', 8)");
    AddThreeFiles();
    mainModule.UseExternalPlayer = true;
    (void)Load("4");
    connection.statements.clear();
    EXPECT_TRUE(DoubleClick(0));
    EXPECT_THAT(shell.executed, ElementsAre("/m/it's.mp3"));
    EXPECT_THAT(calls, ElementsAre("hourglass", "pointer"));
    EXPECT_THAT(connection.statements,
                ElementsAre("Update Files Set Hits = Hits + 1 where Path = '/m/it''s.mp3'", mostPlayed));
    EXPECT_THAT(Hits(), ElementsAre("9", "1", "7", "3"));
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(ChartTest, AMissingFileIsToldInGermanInBothLanguagesAndStillCounted) {
    AddThreeFiles();
    mainModule.UseExternalPlayer = true;
    const ShownBox missing{"Die Datei konnte nicht gefunden werden!", "Öffnen nicht möglich",
                           MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok};
    for (const char* language : {"GER", "ENG"}) {
        settings.values["Language"] = language;
        for (const int result : {Shell::FileMissing, Shell::FolderMissing}) {
            shell.executeResult = result;
            (void)Load("3");
            EXPECT_TRUE(DoubleClick(0));
        }
    }
    EXPECT_THAT(msgBox.shown, ElementsAre(missing, missing, missing, missing));
    EXPECT_THAT(Hits(), ElementsAre("1", "11", "3"));
}

TEST_F(ChartTest, EveryOtherResultOfTheSystemCountsAsSuccess) {
    AddThreeFiles();
    mainModule.UseExternalPlayer = true;
    (void)Load("3");
    for (const int result : {Shell::AccessDenied, Shell::NoProgram, Shell::Started, 0}) {
        shell.executeResult = result;
        EXPECT_TRUE(DoubleClick(0));
    }
    EXPECT_THAT(msgBox.shown, IsEmpty());
    EXPECT_THAT(Hits(), ElementsAre("1", "11", "3"));
}

TEST_F(ChartTest, ALineWithoutAFileCannotBePlayed) {
    AddThreeFiles();
    (void)Load("10");
    connection.statements.clear();
    calls.clear();
    EXPECT_FALSE(DoubleClick(3));
    EXPECT_THAT(calls, ElementsAre("hourglass", "Show", "FillPlaylistFromCharts 4", "PlayFile 1", "pointer"));
    EXPECT_THAT(player.handed, ElementsAre("-"));
    mainModule.UseExternalPlayer = true;
    EXPECT_FALSE(DoubleClick(9));
    EXPECT_THAT(msgBox.shown, ElementsAre(cannotPlay, cannotPlay));
    EXPECT_THAT(shell.executed, IsEmpty());
    EXPECT_THAT(connection.statements, IsEmpty()) << "nothing is counted, nothing filled again";
    EXPECT_EQ(chart.FillChart().CurrentRow, 9) << "but it is the last double click's row";
}

TEST_F(ChartTest, AFailureOfTheCountIsToldInTheLanguageAndEndsTheClick) {
    AddThreeFiles();
    settings.values["Language"] = "ENG";
    (void)Load("3");
    connection.failOn = "Update";
    connection.statements.clear();
    EXPECT_FALSE(DoubleClick(0));
    EXPECT_THAT(msgBox.shown, ElementsAre(ShownBox{std::string(*QuavernetENG.GetResourceString(316)),
                                                   std::string(*QuavernetENG.GetResourceString(317)),
                                                   MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok}));
    EXPECT_EQ(connection.statements.size(), 1U);
    EXPECT_EQ(calls.back(), "pointer");
}

TEST_F(ChartTest, RowsBeyondTheNumbersOfARowCannotBePlayed) {
    AddThreeFiles();
    (void)Load("99999999999");
    (void)DoubleClick(1);
    EXPECT_FALSE(DoubleClick(32768));
    EXPECT_THAT(msgBox.shown, ElementsAre(cannotPlay));
    EXPECT_EQ(chart.FillChart().CurrentRow, 1);
}

TEST_F(ChartTest, AFillThatFailsAfterAPlayPassesThrough) {
    AddThreeFiles();
    (void)Load("3");
    connection.failOn = "Select Name, Hits";
    EXPECT_THROW((void)DoubleClick(0), RuntimeError);
    EXPECT_THAT(msgBox.shown, IsEmpty());
    EXPECT_THAT(Hits(), ElementsAre("1", "8", "3"));
    EXPECT_EQ(calls.back(), "pointer") << "the hourglass has gone";
}

TEST_F(ChartTest, AWindowThatClosesWhileThePlayerStartsHasItsPlayCountedAndShowsNothing) {
    AddThreeFiles();
    (void)Load("3");
    player.onPlay = [this] { chart.Form_Unload(); };
    connection.statements.clear();
    EXPECT_FALSE(DoubleClick(2));
    EXPECT_THAT(connection.statements,
                ElementsAre("Update Files Set Hits = Hits + 1 where Path = '/m/a.mp3'"));
    EXPECT_THAT(msgBox.shown, IsEmpty());
    EXPECT_EQ(calls.back(), "pointer");
}

/// Views that tell in which modes they were asked to load.
class ModeViews : public LibraryViewsDouble {
public:
    void LoadDatabase(const std::string& list) override {
        loads.push_back(list + (mainModule.ShowChartMode ? " charts" : "") +
                        (mainModule.ShowInGridMode ? " tree" : ""));
        if (fails) {
            throw RuntimeError(1, "list");
        }
    }

    Texts loads;
    bool fails = false;
};

TEST_F(ChartTest, TheButtonShowsTheFilesInTheListAndItsModeEnds) {
    AddThreeFiles();
    (void)Load("10");
    ModeViews modes;
    chart.cmdShowInList_Click(modes);
    mainModule.ShowInGridMode = true; // Inside the events of such a load.
    chart.cmdShowInList_Click(modes);
    EXPECT_THAT(modes.loads, ElementsAre("2, 3, 1 charts", "2, 3, 1 charts"));
    EXPECT_FALSE(mainModule.ShowChartMode);
    EXPECT_TRUE(mainModule.ShowInGridMode);
    modes.fails = true;
    EXPECT_THROW(chart.cmdShowInList_Click(modes), RuntimeError);
    EXPECT_FALSE(mainModule.ShowChartMode);
}

TEST_F(ChartTest, WithoutFilesTheButtonDoesNothing) {
    ModeViews modes;
    (void)Load("10");
    chart.cmdShowInList_Click(modes);
    AddThreeFiles();
    (void)Load("0");
    chart.cmdShowInList_Click(modes);
    EXPECT_THAT(modes.loads, IsEmpty());
    EXPECT_FALSE(mainModule.ShowChartMode);
}

} // namespace
} // namespace quavernet::test
