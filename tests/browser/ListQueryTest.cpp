#include "browser/LoadDatabase.h"

#include "adapters/sqlite/OrderClause.h"
#include "platform/RuntimeError.h"
#include "support/LongWorkDouble.h"
#include "support/RecordingConnection.h"
#include "support/TestLibrary.h"
#include "support/Texts.h"

namespace quavernet::test {

namespace {

struct Song {
    const char* interpret;
    const char* title;
    const char* extension = "mp3";
    long bytes = 1048576;
    int length = 60;
    int album = 1;
    int quality = 128;
};

class ListQueryTest : public LibraryTest {
protected:
    /// Key of a lookup row, made if it is missing.
    std::string Key(const std::string& table, const std::string& key, const std::string& column,
                    const std::string& value) {
        const std::string find = "Select " + key + " from " + table + " where " + column + " = " + value;
        if (Count(find) == 0) {
            Execute("Insert into " + table + " (" + column + ") values (" + value + ")");
        }
        return Value(find);
    }
    void Add(const Song& song) {
        const std::string title = Key("Titel", "Title_id", "Name", "'" + std::string(song.title) + "'");
        const std::string interpret =
            Key("Interpret", "Inter_id", "Interpret", "'" + std::string(song.interpret) + "'");
        const std::string quality = Key("Quality", "Quality_id", "Quality", std::to_string(song.quality));
        const std::string extension =
            Key("Extensions", "Extension_id", "Extension", "'" + std::string(song.extension) + "'");
        const std::string name = std::string(song.title) + "." + song.extension;
        Execute(
            "Insert into Files (Title_id, Inter_id, Name, Path, Sizeinbytes, Drive_id, Quality_id, Length, "
            "Extension_id, Genre_id, Album_id) values (" +
            title + ", " + interpret + ", '" + name + "', '/music/" + name + "', " +
            std::to_string(song.bytes) + ", 1, " + quality + ", " + std::to_string(song.length) + ", " +
            extension + ", 255, " + std::to_string(song.album) + ")");
    }

    const ListResult& Load(const ListFilter& filter = {}, const std::string& list = "") {
        result = LoadDatabase(filter, list, work, [this] { log.push_back("clear"); });
        return result;
    }
    Texts Titles() const {
        Texts titles;
        for (std::size_t row = 1; row <= result.Rows.Count(); ++row) {
            titles.push_back(result.Rows.Text(row, ListColumn::Title));
        }
        return titles;
    }
    Texts Counts() const {
        return {result.Totals.InterpretCount, result.Totals.TitleCount, result.Totals.AlbumCount};
    }
    /// What the three statements answer.
    Texts CountsByStatement(const ListFilter& filter, const std::string& list = "") {
        return {Value(InterpretCountStatement(filter, list)), Value(TitleCountStatement(filter, list)),
                Value(AlbumCountStatement(filter, list))};
    }
    template <typename Action> static int ErrorOf(Action&& action) {
        try {
            action();
        } catch (const RuntimeError& error) {
            return error.Number();
        }
        return 0;
    }

    Texts log;
    LongWorkDouble work{log};
    ListResult result;
};

} // namespace

TEST_F(ListQueryTest, AnEmptyLibraryGivesAnEmptyListAndZeroCounters) {
    Load();
    EXPECT_EQ(result.Rows.Count(), 0u);
    EXPECT_EQ(result.Totals.TotalMegabytes, 0);
    EXPECT_EQ(Counts(), (Texts{"0", "0", "0"}));
    EXPECT_EQ(mainModule.FilePaths.Count(), 0u);
    EXPECT_TRUE(work.progressValues.empty());
    EXPECT_EQ(FileCountText(result.Rows.Count(), result.Totals.TotalMegabytes), "0 Dateien / (0,00 MB)");
    EXPECT_EQ(InterpretCountText(result.Totals.InterpretCount), "0 Interpreten");
    EXPECT_EQ(TitleCountText(result.Totals.TitleCount), "0 Titel");
    EXPECT_EQ(AlbumCountText(result.Totals.AlbumCount), "0 Alben");
}

TEST_F(ListQueryTest, ARowHasItsSixTextsItsFileItsPathAndItsName) {
    Add({"Abba", "Waterloo", "mp3", 5000000, 167, 1, 192});
    Load();
    ASSERT_EQ(result.Rows.Count(), 1u);
    EXPECT_EQ(result.Rows.Text(1, ListColumn::Interpret), "Abba");
    EXPECT_EQ(result.Rows.Text(1, ListColumn::Title), "Waterloo");
    EXPECT_EQ(result.Rows.Text(1, ListColumn::Length), "02:47 min");
    EXPECT_EQ(result.Rows.Text(1, ListColumn::Size), "4,77 MB");
    EXPECT_EQ(result.Rows.Text(1, ListColumn::Quality), "192");
    EXPECT_EQ(result.Rows.Text(1, ListColumn::Format), "mp3");
    EXPECT_EQ(std::to_string(result.Rows.RowData(1)), Value("Select File_id from Files"));
    EXPECT_EQ(mainModule.FilePaths.Item(1), "/music/Waterloo.mp3");
    EXPECT_EQ(mainModule.FileNames.Item(1), "Waterloo.mp3");
    EXPECT_EQ(result.Totals.TotalMegabytes, 4.77);
}

TEST_F(ListQueryTest, ARowThatIsNotListedFails) {
    Add({"Abba", "Waterloo"});
    Load();
    EXPECT_EQ(ErrorOf([&] { result.Rows.Text(0, ListColumn::Title); }), ErrorNumber::InvalidProcedureCall);
    EXPECT_EQ(ErrorOf([&] { result.Rows.Text(2, ListColumn::Title); }), ErrorNumber::InvalidProcedureCall);
    EXPECT_EQ(ErrorOf([&] { result.Rows.RowData(2); }), ErrorNumber::InvalidProcedureCall);
    EXPECT_EQ(ListRows().Count(), 0u);
}

TEST_F(ListQueryTest, ALoadShowsAndSendsInItsOrder) {
    Add({"Abba", "Waterloo"});
    mainModule.FilePaths.Add("old");
    mainModule.FileNames.Add("old");
    mainModule.SelectedRows.Add(1);
    auto recording = std::make_unique<RecordingConnection>(std::move(mainModule.Connection));
    recording->onStatement = [this](const std::string& statement) { log.push_back(statement); };
    mainModule.Connection = std::move(recording);
    events.onDoEvents = [this] {
        log.push_back("events with " + std::to_string(mainModule.FilePaths.Count()) +
                      std::to_string(mainModule.FileNames.Count()) +
                      std::to_string(mainModule.SelectedRows.Count()));
    };
    Load();
    ASSERT_GE(log.size(), 7u);
    log.resize(7);
    EXPECT_EQ(log, (Texts{"events with 111", "events with 000", "panel 1: Lade Datenbank...",
                          "events with 000", "clear", "Select Count(*) from Files", ListStatement({}, "")}));
}

TEST_F(ListQueryTest, TheFilterIsReadAfterTheEventsOfTheBeginning) {
    Add({"Abba", "Waterloo"});
    Add({"Beatles", "Help"});
    ListFilter live;
    events.onDoEvents = [&live] { live.SearchText = "help"; };
    result = LoadDatabase([&live] { return live; }, "", work, [] {});
    EXPECT_EQ(Titles(), (Texts{"Help"}));
}

TEST_F(ListQueryTest, TheProgressStepsOncePerRecordMeasuredOnTheWholeLibrary) {
    Add({"Abba", "Waterloo"});
    Add({"Abba", "Fernando"});
    Add({"Beatles", "Help"});
    ListFilter filter;
    filter.SearchText = "abba";
    mainModule.LetterFilter = "Z"; // Nothing is listed, the bar moves all the same.
    Load(filter);
    const auto step = static_cast<float>(100.0 / 3);
    EXPECT_EQ(result.Rows.Count(), 0u);
    EXPECT_EQ(work.progressValues, (std::vector<float>{step, step + step}));
}

TEST_F(ListQueryTest, TheProgressGoesOnFromWhereTheBarIsAndStopsAtAHundred) {
    Add({"Abba", "Waterloo"});
    Add({"Abba", "Fernando"});
    work.progress = 50;
    Load();
    EXPECT_EQ(work.progressValues, (std::vector<float>{100, 100}));
    work.progressValues.clear();
    work.progress = 60;
    Load();
    EXPECT_EQ(work.progressValues, (std::vector<float>{100, 100}));
}

TEST_F(ListQueryTest, TheListIsSortedByItsFlagInItsDirection) {
    Add({"Beta", "3", "ogg", 3000000, 100, 1, 128});
    Add({"alpha", "2", "mp3", 1000000, 300, 1, 320});
    Add({"Ärger", "1", "wav", 2000000, 200, 1, 192});
    const auto sorted = [this](bool MainModule::*flag, const char* direction) {
        mainModule.SortInterpret = false;
        mainModule.*flag = true;
        mainModule.SortDirection = direction;
        Load();
        mainModule.*flag = false;
        return Titles();
    };
    EXPECT_EQ(sorted(&MainModule::SortInterpret, "ASC"), (Texts{"2", "1", "3"}));
    EXPECT_EQ(sorted(&MainModule::SortInterpret, "DESC"), (Texts{"3", "1", "2"}));
    EXPECT_EQ(sorted(&MainModule::SortTitle, "ASC"), (Texts{"1", "2", "3"}));
    EXPECT_EQ(sorted(&MainModule::SortQuality, "ASC"), (Texts{"3", "1", "2"}));
    EXPECT_EQ(sorted(&MainModule::SortLength, "DESC"), (Texts{"2", "1", "3"}));
    EXPECT_EQ(sorted(&MainModule::SortFormat, "ASC"), (Texts{"2", "3", "1"}));
    EXPECT_EQ(sorted(&MainModule::SortSize, "ASC"), (Texts{"2", "1", "3"}));
}

TEST_F(ListQueryTest, PathsAndNamesFollowTheRowsOfTheList) {
    Add({"Beta", "Zwei", "ogg"});
    Add({"Alpha", "Eins", "mp3"});
    Load();
    EXPECT_EQ(mainModule.FilePaths.Count(), 2u);
    EXPECT_EQ(mainModule.FilePaths.Item(1), "/music/Eins.mp3");
    EXPECT_EQ(mainModule.FilePaths.Item(2), "/music/Zwei.ogg");
    EXPECT_EQ(mainModule.FileNames.Item(2), "Zwei.ogg");
    ListFilter filter;
    filter.ViewMp3 = false;
    Load(filter);
    EXPECT_EQ(mainModule.FilePaths.Count(), 1u);
    EXPECT_EQ(mainModule.FilePaths.Item(1), "/music/Zwei.ogg");
}

TEST_F(ListQueryTest, TheSearchIgnoresCaseKnowsWildcardsAndTakesApostrophes) {
    Add({"Guns", "Rock ''n'' Roll"});
    Add({"Wham", "50% more"});
    Add({"Abba", "5000 more"});
    ListFilter filter;
    filter.SearchText = "ROCK 'N'";
    Load(filter);
    EXPECT_EQ(Titles(), (Texts{"Rock 'n' Roll"}));
    filter.SearchText = "50%more";
    Load(filter);
    EXPECT_EQ(result.Rows.Count(), 2u);
    filter.SearchText = "500_ m";
    Load(filter);
    EXPECT_EQ(Titles(), (Texts{"5000 more"}));
}

TEST_F(ListQueryTest, TheLetterLooksWhereTheBoxesSay) {
    Add({"Beatles", "Help"});
    Add({"Abba", "Bang"});
    Add({"Cher", "Believe"});
    Add({"Zappa", "Yes"});
    mainModule.LetterFilter = "B";
    ListFilter filter;
    Load(filter);
    EXPECT_EQ(Titles(), (Texts{"Bang", "Help", "Believe"}));
    filter.TitleChecked = false;
    Load(filter);
    EXPECT_EQ(Titles(), (Texts{"Help"}));
    filter.TitleChecked = true;
    filter.InterpretChecked = false;
    Load(filter);
    EXPECT_EQ(Titles(), (Texts{"Bang", "Believe"}));
    filter.TitleChecked = false;
    Load(filter);
    EXPECT_EQ(result.Rows.Count(), 4u);
}

TEST_F(ListQueryTest, OtherTakesARowIfEitherTextStartsWithNoPlainLetter) {
    Add({"2 Unlimited", "No Limit"});
    Add({"Abba", "1999"});
    Add({"Ärzte", "Zu spät"});
    Add({"Cher", "Believe"});
    mainModule.LetterFilter = "other";
    Load();
    EXPECT_EQ(result.Rows.Count(), 3u);
    ListFilter filter;
    filter.TitleChecked = false;
    Load(filter);
    EXPECT_EQ(Titles(), (Texts{"No Limit", "Zu spät"}));
    mainModule.LetterFilter = "A";
    Load(filter);
    EXPECT_EQ(Titles(), (Texts{"1999", "Zu spät"}));
}

TEST_F(ListQueryTest, FormatsHideRowsAndLeaveTheCountersAlone) {
    Add({"Abba", "Eins", "mp3", 1048576, 60, 1});
    Add({"Beatles", "Zwei", "wav", 1048576, 60, 2});
    Add({"Cher", "Drei", "ogg", 1048576, 60, 3});
    Add({"Dido", "Vier", "fla", 1048576, 60, 4});
    ListFilter filter;
    filter.ViewMp3 = false;
    Load(filter);
    EXPECT_EQ(Titles(), (Texts{"Zwei", "Drei", "Vier"}));
    filter.ViewWav = false;
    Load(filter);
    EXPECT_EQ(Titles(), (Texts{"Drei", "Vier"}));
    filter.ViewOgg = false;
    Load(filter);
    EXPECT_EQ(Titles(), (Texts{"Vier"}));
    EXPECT_EQ(Counts(), (Texts{"4", "4", "4"}));
    EXPECT_EQ(FileCountText(result.Rows.Count(), result.Totals.TotalMegabytes), "1 Datei / (1,00 MB)");
}

TEST_F(ListQueryTest, TheLetterLeavesTheCountersAlone) {
    Add({"Abba", "Eins"});
    Add({"Beatles", "Zwei"});
    mainModule.LetterFilter = "A";
    ListFilter filter;
    filter.TitleChecked = false;
    Load(filter);
    EXPECT_EQ(result.Rows.Count(), 1u);
    EXPECT_EQ(Counts(), (Texts{"2", "2", "1"}));
}

TEST_F(ListQueryTest, TheCountersAreThoseOfTheirStatements) {
    for (int i = 0; i < 60; ++i) {
        const std::string interpret = "P" + std::to_string(i % 7);
        const std::string title = "T" + std::to_string(i % 13);
        Add({interpret.c_str(), title.c_str(), "mp3", 1, 1, i % 5});
    }
    Execute("Update Files set Album_id = null where Album_id = 4");
    ListFilter all;
    ListFilter search;
    search.SearchText = "3";
    ListFilter album;
    album.AlbumId = 2;
    ListFilter nothing;
    nothing.DriveId = 99;
    for (const ListFilter& filter : {all, search, album, nothing}) {
        Load(filter);
        EXPECT_EQ(Counts(), CountsByStatement(filter));
    }
    EXPECT_EQ(CountsByStatement(all), (Texts{"7", "13", "4"}));
    mainModule.ShowInGridMode = true;
    Load(search, "1,2,30,30,9999");
    EXPECT_EQ(Counts(), CountsByStatement(search, "1,2,30,30,9999"));
    EXPECT_EQ(result.Rows.Count(), 3u);
}

TEST_F(ListQueryTest, TheCountersAreTheSameForFewFilesForManyAndForAll) {
    for (int i = 0; i < 60; ++i) {
        const std::string interpret = (i < 3 ? "few " : i < 40 ? "many " : "rest ") + std::to_string(i % 7);
        Add({interpret.c_str(), ("T" + std::to_string(i % 13)).c_str(), "mp3", 1, 1, i % 5});
    }
    Execute("Update Files set Album_id = null where Album_id = 4");
    Execute("Update Files set Album_id = -7 where Album_id = 3");
    Execute("Update Files set Album_id = 5000000000 where Album_id = 2");
    for (const auto& [text, rows] : {std::pair("few", 3u), std::pair("many", 37u), std::pair("", 60u)}) {
        ListFilter filter;
        filter.SearchText = text;
        Load(filter);
        EXPECT_EQ(result.Rows.Count(), rows);
        EXPECT_EQ(Counts(), CountsByStatement(filter)) << text;
    }
}

TEST_F(ListQueryTest, TheCountersOfAComboPassOverFilesThatTheListHasLost) {
    for (int i = 0; i < 12; ++i) {
        Add({("P" + std::to_string(i)).c_str(), ("T" + std::to_string(i)).c_str(), "mp3", 1, 1, i % 2 + 1});
    }
    ListFilter album;
    album.AlbumId = 2;
    ListFilter searched = album;
    searched.SearchText = "1";
    ListFilter unsearched = searched; // A text that is looked for nowhere.
    unsearched.InterpretChecked = unsearched.TitleChecked = false;
    for (const char* lost : {"0", "2", "4"}) {
        Execute("Update Files set Quality_id = 9999 where File_id = " + std::string(lost));
        for (const ListFilter& filter : {album, searched, unsearched}) {
            Load(filter);
            EXPECT_EQ(Counts(), CountsByStatement(filter)) << lost;
        }
    }
    EXPECT_EQ(Counts(), (Texts{"4", "4", "1"}));
    mainModule.ShowInGridMode = true;
    Load(album, "1,3");
    EXPECT_EQ(Counts(), (Texts{"2", "2", "1"}));
}

TEST_F(ListQueryTest, AChartsRequestShowsItsListWhileItsCountersFollowTheControls) {
    Add({"Abba", "Eins", "mp3", 1048576, 60, 1});
    Add({"Beatles", "Zwei", "mp3", 1048576, 60, 2});
    Add({"Cher", "Drei", "mp3", 1048576, 60, 3});
    ListFilter filter;
    filter.SearchText = "e"; // Not "Abba", "Eins" by title alone.
    filter.TitleChecked = false;
    mainModule.ShowChartMode = true;
    Load(filter, "1");
    EXPECT_EQ(Titles(), (Texts{"Eins"}));
    EXPECT_EQ(Counts(), (Texts{"2", "2", "2"}));
    mainModule.ShowInGridMode = true;
    Load(filter, "1");
    EXPECT_EQ(Counts(), (Texts{"1", "1", "1"}));
}

TEST_F(ListQueryTest, AFileWithoutOneOfItsFourLinksIsInTheTableButNotInTheList) {
    Add({"Abba", "Eins"});
    Add({"Abba", "Zwei"});
    Execute("Update Files set Quality_id = 9999 where File_id = 1");
    Load();
    EXPECT_EQ(Titles(), (Texts{"Zwei"}));
    EXPECT_EQ(Value("Select Count(File_id) from Files"), "2");
    EXPECT_EQ(work.progressValues, (std::vector<float>{50})); // The step still counts it.
}

TEST_F(ListQueryTest, TheSumAddsSizesAsTheyAreShown) {
    for (int i = 0; i < 10; ++i) {
        Add({"Abba", ("T" + std::to_string(i)).c_str(), "mp3", 5242});
    }
    Load();
    EXPECT_EQ(result.Totals.TotalMegabytes, 0);
}

TEST_F(ListQueryTest, HiddenRowsAddNothingToTheSum) {
    Add({"Abba", "Eins", "mp3"});
    Add({"Abba", "Zwei", "ogg"});
    ListFilter filter;
    filter.ViewOgg = false;
    Load(filter);
    EXPECT_EQ(result.Totals.TotalMegabytes, 1);
}

TEST_F(ListQueryTest, AFailingStatementLeavesThePanelsText) {
    Add({"Abba", "Eins"});
    mainModule.ShowInGridMode = true;
    EXPECT_NE(ErrorOf([this] { Load({}, ","); }), 0);
    ASSERT_FALSE(log.empty());
    EXPECT_EQ(log, (Texts{"panel 1: Lade Datenbank...", "clear"}));
}

TEST_F(ListQueryTest, AMissingSizeOrLengthOfAListedRowFails) {
    Add({"Abba", "Eins"});
    Execute("Update Files set Length = null");
    EXPECT_EQ(ErrorOf([this] { Load(); }), ErrorNumber::InvalidUseOfNull);
    Execute("Update Files set Length = 1, Sizeinbytes = null");
    EXPECT_EQ(ErrorOf([this] { Load(); }), ErrorNumber::InvalidUseOfNull);
    ListFilter hidden;
    hidden.ViewMp3 = false;
    EXPECT_EQ(ErrorOf([&] { Load(hidden); }), 0);
    Execute("Update Files set Length = 3000000000, Sizeinbytes = 1");
    EXPECT_EQ(ErrorOf([this] { Load(); }), ErrorNumber::Overflow);
    EXPECT_EQ(ErrorOf([&] { Load(hidden); }), 0);
}

TEST_F(ListQueryTest, AnEmptyPerformerFailsOnlyUnderTheLettersThatAskForItsCode) {
    Add({"", "Eins"});
    for (const char* letter : {"All", "B", "E"}) {
        mainModule.LetterFilter = letter;
        EXPECT_EQ(ErrorOf([this] { Load(); }), 0) << letter;
    }
    for (const char* letter : {"other", "A", "O", "U"}) {
        mainModule.LetterFilter = letter;
        EXPECT_EQ(ErrorOf([this] { Load(); }), ErrorNumber::InvalidProcedureCall) << letter;
    }
    ListFilter titleOnly;
    titleOnly.InterpretChecked = false;
    EXPECT_EQ(ErrorOf([&] { Load(titleOnly); }), 0);
    Execute("Update Interpret set Interpret = null");
    EXPECT_EQ(ErrorOf([this] { Load(); }), ErrorNumber::InvalidProcedureCall);
}

TEST_F(ListQueryTest, TextsFollowTheRegionalSettingsAndKeepTheProgramsRows) {
    Add({"Abba", "Eins", "mp3", 1310720000000});
    Load();
    EXPECT_EQ(result.Rows.Text(1, ListColumn::Size), "1.250.000,00 MB");
    services.regional = {".", ",", "/", "M/d/yyyy", true};
    EXPECT_EQ(result.Rows.Text(1, ListColumn::Size), "1,250,000.00 MB");
    Load();
    EXPECT_EQ(result.Totals.TotalMegabytes, 1250000);
}

TEST_F(ListQueryTest, EveryListStatementStartsAtFilesAndFindsTheRestByKey) {
    for (int i = 0; i < 30; ++i) {
        Add({"Abba", ("T" + std::to_string(i)).c_str()});
    }
    ListFilter search;
    search.SearchText = "a";
    ListFilter drive;
    drive.DriveId = 1;
    ListFilter album = search;
    album.AlbumId = 1;
    mainModule.SortInterpret = false;
    for (bool MainModule::*const flag :
         {&MainModule::SortInterpret, &MainModule::SortTitle, &MainModule::SortLength,
          &MainModule::SortQuality, &MainModule::SortFormat, &MainModule::SortSize}) {
        mainModule.*flag = true;
        for (const ListFilter& filter : {ListFilter(), search, drive, album}) {
            const std::string statement = ListStatement(filter, "");
            // The connection sorts the rows that it has read: the statement runs without its order.
            const auto taken = sqlite::TakeOrderClause(statement);
            ASSERT_TRUE(taken) << statement;
            const Texts plan = Rows("explain query plan " + std::string(taken->unordered));
            ASSERT_EQ(plan.size(), 5u) << statement;
            EXPECT_TRUE(plan[0].find("SCAN F") != std::string::npos ||
                        plan[0].find("SEARCH F ") != std::string::npos)
                << statement << "\n"
                << plan[0];
            for (std::size_t i = 1; i < 5; ++i) {
                EXPECT_NE(plan[i].find("USING INTEGER PRIMARY KEY (rowid=?)"), std::string::npos)
                    << statement << "\n"
                    << plan[i];
            }
        }
        mainModule.*flag = false;
    }
}

TEST_F(ListQueryTest, AFiltersKeysAreCountedFromItsLastRowToTheFirstWithoutASort) {
    for (const int album : {1, 2, 1, 2, 1}) {
        Add({.interpret = "Abba",
             .title = ("T" + std::to_string(Count("Select File_id from Files"))).c_str(),
             .album = album});
    }
    RecordingConnection& recorded = Record();
    ListFilter filter;
    filter.AlbumId = 1;
    EXPECT_EQ(Load(filter).Totals.TitleCount, "3");
    const Texts counting = recorded.StatementsOf("Select F.Inter_id");
    ASSERT_EQ(counting.size(), 1u);
    EXPECT_EQ(Rows(counting.front()), (Texts{"1|5|1", "1|3|1", "1|1|1"}));
    const Texts plan = Rows("explain query plan " + counting.front());
    ASSERT_EQ(plan.size(), 1u);
    EXPECT_NE(plan.front().find("USING INDEX FilesByAlbum (Album_id=?)"), std::string::npos) << plan.front();
}

} // namespace quavernet::test
