#include "mainwindow/WindowState.h"

#include "app/NumberSetting.h"
#include "app/Registry.h"
#include "platform/RuntimeError.h"

#include <algorithm>

namespace quavernet {

namespace {

constexpr std::int32_t SmallScreenWidth = 12000;
constexpr std::int32_t SmallScreenHeight = 9000;

bool BooleanSetting(const std::string& name, const std::string& defaultValue) {
    return NumberSetting(name, defaultValue) != 0;
}

// The one kind of setting whose failure is passed over.
std::int32_t IndexSetting(const std::string& name) {
    std::int32_t index = 0;
    IgnoreFailure([&] { index = TwipsSetting(name, "0"); });
    return index;
}

// The normal place of a window that was closed maximised. Its settings are the program's own addition: one
// that is no number counts as missing.
void LoadNormalPlace(WindowState& state) {
    const auto load = [](const char* name, std::int32_t otherwise) {
        std::int32_t value = otherwise;
        IgnoreFailure([&] { value = TwipsSetting(name, std::to_string(otherwise)); });
        return value;
    };
    state.Maximised = Setting("WindowMaximised", "0") == "1";
    if (!state.Maximised) {
        return;
    }
    state.NormalLeft = load("NormalLeft", state.WindowLeft);
    state.NormalTop = load("NormalTop", state.WindowTop);
    state.NormalWidth = load("NormalWidth", state.WindowWidth);
    state.NormalHeight = load("NormalHeight", state.WindowHeight);
}

void SaveNumber(const std::string& name, std::int32_t value) {
    SaveSetting(name, std::to_string(value));
}

void SaveFlag(const std::string& name, bool value) {
    SaveSetting(name, value ? "1" : "0");
}

// Nothing is written of a window that has never been maximised.
void SaveNormalPlace(const WindowState& state) {
    if (state.Maximised) {
        SaveNumber("NormalLeft", state.NormalLeft);
        SaveNumber("NormalTop", state.NormalTop);
        SaveNumber("NormalWidth", state.NormalWidth);
        SaveNumber("NormalHeight", state.NormalHeight);
    }
    if (state.Maximised || !Setting("WindowMaximised", "").empty()) {
        SaveFlag("WindowMaximised", state.Maximised);
    }
}

std::string ColumnName(std::size_t column) {
    return "ColWidth(" + std::to_string(column) + ")";
}

void LoadMenuChecks(WindowState& state) {
    state.QuickScan = BooleanSetting("QuickScan", "0");
    state.RecursiveScan = BooleanSetting("RecursiveScan", "1");
    state.ScanMp3 = BooleanSetting("ScanMp3", "1");
    state.ScanWav = BooleanSetting("ScanWav", "1");
    state.ScanOgg = BooleanSetting("ScanOgg", "1");
    state.ViewMp3 = BooleanSetting("ViewMp3", "1");
    state.ViewWav = BooleanSetting("ViewWav", "1");
    state.ViewOgg = BooleanSetting("ViewOgg", "1");
    state.ScanLog = BooleanSetting("ScanLog", "1");
    state.LoadOverSearch = BooleanSetting("LoadOverSearch", "0");
    // These two are compared as texts: anything but "0" is true.
    state.ExternalPlayer = Setting("ExternalPlayer", "0") != "0";
    state.AddToPlaylist = Setting("AddToPlaylist", "0") != "0";
}

} // namespace

ColumnWidths LoadColumnWidths() {
    static constexpr const char* Defaults[GridColumnCount] = {"3000", "3000", "1000", "1000", "1500", "1000"};
    ColumnWidths widths{};
    for (std::size_t column = 0; column < GridColumnCount; ++column) {
        widths[column] = TwipsSetting(ColumnName(column), Defaults[column]);
    }
    return widths;
}

WindowState LoadWindowState(const std::string& screenResolution) {
    WindowState state;
    state.WindowLeft = TwipsSetting("WindowLeft", "180");
    state.WindowTop = TwipsSetting("WindowTop", "255");
    state.WindowWidth = TwipsSetting("WindowWidth", "15000");
    state.WindowHeight = TwipsSetting("WindowHeight", "11000");
    if (screenResolution == "800x600") {
        state.WindowWidth = std::min(state.WindowWidth, SmallScreenWidth);
        state.WindowHeight = std::min(state.WindowHeight, SmallScreenHeight);
    }
    state.SplitterPos = TwipsSetting("SplitterPos", "2835");
    state.ColWidth = LoadColumnWidths();
    state.GridLines = Setting("GridLines", "no") == "yes";
    state.Drive = IndexSetting("Drive");
    state.Genre = IndexSetting("Genre");
    state.Album = IndexSetting("Album");
    state.SearchTitle = Setting("SearchTitle", "1") == "1";
    state.SearchInterpret = Setting("SearchInterpret", "1") == "1";
    LoadMenuChecks(state);
    LoadNormalPlace(state);
    return state;
}

void SaveWindowState(const WindowState& state) {
    SaveNumber("WindowWidth", state.WindowWidth);
    SaveNumber("WindowHeight", state.WindowHeight);
    SaveNumber("WindowLeft", state.WindowLeft);
    SaveNumber("WindowTop", state.WindowTop);
    SaveNumber("SplitterPos", state.SplitterPos);
    for (std::size_t column = 0; column < GridColumnCount; ++column) {
        SaveNumber(ColumnName(column), state.ColWidth[column]);
    }
    SaveSetting("GridLines", state.GridLines ? "yes" : "no");
    SaveNumber("Drive", state.Drive);
    SaveNumber("Genre", state.Genre);
    SaveNumber("Album", state.Album);
    SaveFlag("QuickScan", state.QuickScan);
    SaveFlag("RecursiveScan", state.RecursiveScan);
    SaveFlag("ScanMp3", state.ScanMp3);
    SaveFlag("ScanWav", state.ScanWav);
    SaveFlag("ScanOgg", state.ScanOgg);
    SaveFlag("ViewMp3", state.ViewMp3);
    SaveFlag("ViewWav", state.ViewWav);
    SaveFlag("ViewOgg", state.ViewOgg);
    SaveFlag("ExternalPlayer", state.ExternalPlayer);
    SaveFlag("AddToPlaylist", state.AddToPlaylist);
    SaveFlag("ScanLog", state.ScanLog);
    SaveFlag("LoadOverSearch", state.LoadOverSearch);
    SaveNormalPlace(state);
}

std::int32_t ExistingIndex(std::int32_t storedIndex, std::int32_t entryCount) {
    return storedIndex >= 0 && storedIndex < entryCount ? storedIndex : 0;
}

} // namespace quavernet
