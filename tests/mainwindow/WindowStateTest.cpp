#include "mainwindow/WindowState.h"

#include "app/SettingFailure.h"
#include "support/LogicTest.h"
#include "support/OrderedSettings.h"
#include "support/Texts.h"

namespace quavernet::test {

namespace {

constexpr const char* Screen = "1920x1080";

class WindowStateTest : public LogicTest {
protected:
    WindowStateTest() { services.settings = &ordered; }

    WindowState LoadWith(const std::string& name, const std::string& value) {
        ordered.values = {{name, value}};
        return LoadWindowState(Screen);
    }
    /// The failure's number; the failure has to name the setting.
    int ErrorWith(const std::string& name, const std::string& value) {
        try {
            LoadWith(name, value);
        } catch (const SettingError& error) {
            EXPECT_EQ(error.Name(), name);
            return error.Number();
        }
        return 0;
    }

    OrderedSettings ordered;
};

const char* const NumberNames[] = {"WindowLeft",  "WindowTop",   "WindowWidth", "WindowHeight",
                                   "SplitterPos", "ColWidth(0)", "ColWidth(1)", "ColWidth(2)",
                                   "ColWidth(3)", "ColWidth(4)", "ColWidth(5)"};

const std::pair<const char*, bool WindowState::*> MenuChecks[] = {
    {"QuickScan", &WindowState::QuickScan}, {"RecursiveScan", &WindowState::RecursiveScan},
    {"ScanMp3", &WindowState::ScanMp3},     {"ScanWav", &WindowState::ScanWav},
    {"ScanOgg", &WindowState::ScanOgg},     {"ViewMp3", &WindowState::ViewMp3},
    {"ViewWav", &WindowState::ViewWav},     {"ViewOgg", &WindowState::ViewOgg},
    {"ScanLog", &WindowState::ScanLog},     {"LoadOverSearch", &WindowState::LoadOverSearch}};

const std::pair<const char*, bool WindowState::*> PlayerChecks[] = {
    {"ExternalPlayer", &WindowState::ExternalPlayer}, {"AddToPlaylist", &WindowState::AddToPlaylist}};

} // namespace

TEST_F(WindowStateTest, AUserWithoutSettingsGetsTheDefaultsAndNothingIsStored) {
    const WindowState state = LoadWindowState(Screen);
    EXPECT_EQ(state, WindowState());
    EXPECT_EQ(state.WindowLeft, 180);
    EXPECT_EQ(state.WindowTop, 255);
    EXPECT_EQ(state.WindowWidth, 15000);
    EXPECT_EQ(state.WindowHeight, 11000);
    EXPECT_EQ(state.SplitterPos, 2835);
    EXPECT_EQ(state.ColWidth, (ColumnWidths{3000, 3000, 1000, 1000, 1500, 1000}));
    EXPECT_FALSE(state.GridLines);
    EXPECT_EQ((std::array{state.Drive, state.Genre, state.Album}), (std::array{0, 0, 0}));
    EXPECT_TRUE(state.SearchTitle && state.SearchInterpret);
    EXPECT_TRUE(state.RecursiveScan && state.ScanMp3 && state.ScanWav && state.ScanOgg && state.ViewMp3 &&
                state.ViewWav && state.ViewOgg && state.ScanLog);
    EXPECT_FALSE(state.QuickScan || state.LoadOverSearch || state.ExternalPlayer || state.AddToPlaylist);
    EXPECT_TRUE(ordered.writes.empty());
}

TEST_F(WindowStateTest, SettingsAreReadInTheirOrder) {
    LoadWindowState(Screen);
    EXPECT_EQ(
        ordered.reads,
        (Texts{"WindowLeft",  "WindowTop",       "WindowWidth",    "WindowHeight",  "SplitterPos",
               "ColWidth(0)", "ColWidth(1)",     "ColWidth(2)",    "ColWidth(3)",   "ColWidth(4)",
               "ColWidth(5)", "GridLines",       "Drive",          "Genre",         "Album",
               "SearchTitle", "SearchInterpret", "QuickScan",      "RecursiveScan", "ScanMp3",
               "ScanWav",     "ScanOgg",         "ViewMp3",        "ViewWav",       "ViewOgg",
               "ScanLog",     "LoadOverSearch",  "ExternalPlayer", "AddToPlaylist", "WindowMaximised"}));
}

TEST_F(WindowStateTest, TheNormalPlaceOfAMaximisedWindowReadsBackAndHasNoFailures) {
    WindowState state;
    state.WindowWidth = 28800;
    state.Maximised = true;
    state.NormalLeft = -75;
    state.NormalTop = 300;
    state.NormalWidth = 9000;
    state.NormalHeight = 7500;
    SaveWindowState(state);
    EXPECT_EQ(LoadWindowState(Screen), state);
    ordered.Set("", "", "NormalWidth", "wide");
    EXPECT_EQ(LoadWindowState(Screen).NormalWidth, 28800);
    state.Maximised = false;
    SaveWindowState(state);
    EXPECT_FALSE(LoadWindowState(Screen).Maximised);
}

TEST_F(WindowStateTest, SettingsAreWrittenInTheirOrderAndForm) {
    WindowState state;
    state.WindowLeft = -120;
    state.GridLines = true;
    state.Album = 7;
    state.QuickScan = true;
    state.ViewOgg = false;
    SaveWindowState(state);
    EXPECT_EQ(ordered.writes, (Texts{"WindowWidth=15000", "WindowHeight=11000",
                                     "WindowLeft=-120",   "WindowTop=255",
                                     "SplitterPos=2835",  "ColWidth(0)=3000",
                                     "ColWidth(1)=3000",  "ColWidth(2)=1000",
                                     "ColWidth(3)=1000",  "ColWidth(4)=1500",
                                     "ColWidth(5)=1000",  "GridLines=yes",
                                     "Drive=0",           "Genre=0",
                                     "Album=7",           "QuickScan=1",
                                     "RecursiveScan=1",   "ScanMp3=1",
                                     "ScanWav=1",         "ScanOgg=1",
                                     "ViewMp3=1",         "ViewWav=1",
                                     "ViewOgg=0",         "ExternalPlayer=0",
                                     "AddToPlaylist=0",   "ScanLog=1",
                                     "LoadOverSearch=0"}));
}

TEST_F(WindowStateTest, AStateReadsBackAsItWasSaved) {
    WindowState state;
    state.WindowLeft = -30000;
    state.WindowTop = 99999;
    state.WindowWidth = 4321;
    state.WindowHeight = 1234;
    state.SplitterPos = 500;
    state.ColWidth = {1, 2, 3, 4, 5, 60000};
    state.GridLines = true;
    state.Drive = 1;
    state.Genre = 2;
    state.Album = 40000;
    for (const auto& [name, member] : MenuChecks) {
        state.*member = !(state.*member);
    }
    state.ExternalPlayer = true;
    state.AddToPlaylist = true;
    SaveWindowState(state);
    EXPECT_EQ(LoadWindowState(Screen), state);
}

TEST_F(WindowStateTest, OnlyASmallScreenCapsTheSize) {
    const auto sizeOn = [this](const char* screen, const char* width, const char* height) {
        ordered.values = {{"WindowWidth", width}, {"WindowHeight", height}};
        const WindowState state = LoadWindowState(screen);
        return std::pair{state.WindowWidth, state.WindowHeight};
    };
    EXPECT_EQ(sizeOn("800x600", "15000", "11000"), (std::pair{12000, 9000}));
    EXPECT_EQ(sizeOn("800x600", "12000", "9000"), (std::pair{12000, 9000}));
    EXPECT_EQ(sizeOn("800x600", "12001", "9001"), (std::pair{12000, 9000}));
    EXPECT_EQ(sizeOn("800x600", "11999", "8999"), (std::pair{11999, 8999}));
    EXPECT_EQ(sizeOn("800x601", "15000", "11000"), (std::pair{15000, 11000}));
    EXPECT_EQ(sizeOn("1800x600", "15000", "11000"), (std::pair{15000, 11000}));
}

TEST_F(WindowStateTest, APositionOffTheScreenIsNotChecked) {
    EXPECT_EQ(LoadWith("WindowLeft", "-90000").WindowLeft, -90000);
    EXPECT_EQ(LoadWith("SplitterPos", "90000").SplitterPos, 90000);
}

TEST_F(WindowStateTest, AMalformedNumberStopsTheLoad) {
    for (const char* name : NumberNames) {
        for (const char* text : {"", "wide", "12a", "-"}) {
            EXPECT_EQ(ErrorWith(name, text), ErrorNumber::TypeMismatch) << name << " " << text;
        }
        EXPECT_EQ(ErrorWith(name, "99999999999"), ErrorNumber::Overflow) << name;
    }
}

TEST_F(WindowStateTest, TheFirstMalformedSettingEndsTheReading) {
    ordered.values = {{"WindowTop", "x"}};
    EXPECT_THROW(LoadWindowState(Screen), RuntimeError);
    EXPECT_EQ(ordered.reads, (Texts{"WindowLeft", "WindowTop"}));
}

TEST_F(WindowStateTest, MenuChecksAreFalseAtZeroAndTrueAtAnyOtherNumber) {
    for (const auto& [name, member] : MenuChecks) {
        EXPECT_FALSE(LoadWith(name, "0").*member) << name;
        EXPECT_FALSE(LoadWith(name, "0,0").*member) << name;
        EXPECT_TRUE(LoadWith(name, "1").*member) << name;
        EXPECT_TRUE(LoadWith(name, "-1").*member) << name;
        EXPECT_TRUE(LoadWith(name, "2").*member) << name;
        EXPECT_TRUE(LoadWith(name, "0,5").*member) << name;
        EXPECT_EQ(ErrorWith(name, ""), ErrorNumber::TypeMismatch) << name;
        EXPECT_EQ(ErrorWith(name, "yes"), ErrorNumber::TypeMismatch) << name;
    }
}

TEST_F(WindowStateTest, ThePlayersChecksAreTrueAtAnythingButTheTextZero) {
    for (const auto& [name, member] : PlayerChecks) {
        EXPECT_FALSE(LoadWith(name, "0").*member) << name;
        EXPECT_TRUE(LoadWith(name, "1").*member) << name;
        EXPECT_TRUE(LoadWith(name, "").*member) << name;
        EXPECT_TRUE(LoadWith(name, "no").*member) << name;
    }
}

TEST_F(WindowStateTest, GridLinesAreShownAtTheTextYesAlone) {
    EXPECT_TRUE(LoadWith("GridLines", "yes").GridLines);
    for (const char* text : {"no", "Yes", "1", "", "yes "}) {
        EXPECT_FALSE(LoadWith("GridLines", text).GridLines) << text;
    }
}

TEST_F(WindowStateTest, TheSearchBoxesAreCheckedAtTheTextOneAlone) {
    for (const char* text : {"0", "", "2", "-1", "true"}) {
        EXPECT_FALSE(LoadWith("SearchTitle", text).SearchTitle) << text;
        EXPECT_FALSE(LoadWith("SearchInterpret", text).SearchInterpret) << text;
    }
    EXPECT_TRUE(LoadWith("SearchTitle", "1").SearchTitle);
    EXPECT_TRUE(LoadWith("SearchInterpret", "1").SearchInterpret);
}

TEST_F(WindowStateTest, AMalformedComboIndexIsPassedOver) {
    for (const char* text : {"", "x", "99999999999"}) {
        EXPECT_EQ(LoadWith("Drive", text).Drive, 0);
        EXPECT_EQ(LoadWith("Genre", text).Genre, 0);
        EXPECT_EQ(LoadWith("Album", text).Album, 0);
    }
    ordered.values = {{"Drive", "x"}, {"Genre", "3"}, {"Album", "5"}};
    const WindowState state = LoadWindowState(Screen);
    EXPECT_EQ((std::array{state.Drive, state.Genre, state.Album}), (std::array{0, 3, 5}));
}

TEST_F(WindowStateTest, AnIndexBeyondTheEntriesLeavesTheFirstOne) {
    EXPECT_EQ(ExistingIndex(0, 3), 0);
    EXPECT_EQ(ExistingIndex(2, 3), 2);
    EXPECT_EQ(ExistingIndex(3, 3), 0);
    EXPECT_EQ(ExistingIndex(-1, 3), 0);
    EXPECT_EQ(ExistingIndex(1, 0), 0);
}

TEST_F(WindowStateTest, ColumnWidthsAreReadAloneForANewHead) {
    ordered.values = {{"ColWidth(2)", "1234"}};
    EXPECT_EQ(LoadColumnWidths(), (ColumnWidths{3000, 3000, 1234, 1000, 1500, 1000}));
    EXPECT_EQ(ordered.reads.size(), GridColumnCount);
}

TEST_F(WindowStateTest, NumbersAreReadByTheSystemsForm) {
    EXPECT_EQ(LoadWith("WindowWidth", "12.000").WindowWidth, 12000);
    services.regional = {".", ",", "/", "M/d/yyyy", true};
    EXPECT_EQ(LoadWith("WindowWidth", "12,000").WindowWidth, 12000);
    EXPECT_EQ(LoadWith("WindowWidth", "180.5").WindowWidth, 180);
}

} // namespace quavernet::test
