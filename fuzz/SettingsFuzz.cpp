// Gives every setting that is read as a number, a flag or a word a text of any bytes and reads the state that
// they make. The input: a byte that chooses the settings of a country, then lines "name=text"; a line without
// a sign belongs to the settings in their order.
#include "app/LoadResString.h"
#include "app/Registry.h"
#include "mainwindow/WindowState.h"
#include "platform/RuntimeError.h"
#include "scanner/ScanPathSettings.h"

#include "FuzzInput.h"
#include "FuzzServices.h"

#include <array>
#include <optional>
#include <string>

namespace {

using namespace quavernet;
using fuzz::Require;

constexpr std::array<const char*, 34> Names = {
    "WindowLeft",    "WindowTop",   "WindowWidth",    "WindowHeight",   "SplitterPos",     "ColWidth(0)",
    "ColWidth(1)",   "ColWidth(2)", "ColWidth(3)",    "ColWidth(4)",    "ColWidth(5)",     "GridLines",
    "Drive",         "Genre",       "Album",          "SearchTitle",    "SearchInterpret", "QuickScan",
    "RecursiveScan", "ScanMp3",     "ScanWav",        "ScanOgg",        "ViewMp3",         "ViewWav",
    "ViewOgg",       "ScanLog",     "LoadOverSearch", "ExternalPlayer", "AddToPlaylist",   "Language",
    "LastScan",      "Scanpath",    "ScanpathValue",  "Coverstring"};

void FillSettings(std::string_view input, test::MapSettings& settings) {
    for (std::size_t i = 0; !input.empty(); ++i) {
        const std::string_view line = fuzz::TakeLine(input);
        const std::size_t sign = line.find('=');
        if (sign == std::string_view::npos) {
            settings.values[Names[i % Names.size()]] = line;
        } else {
            settings.values[std::string(line.substr(0, sign))] = line.substr(sign + 1);
        }
    }
}

std::string Stored(const test::MapSettings& settings, const std::string& name, const std::string& otherwise) {
    const auto found = settings.values.find(name);
    return found == settings.values.end() ? otherwise : found->second;
}

bool IsNumber(const test::MapSettings& settings, const char* name) {
    const auto number = ParseNumber(Stored(settings, name, "0"), services.regional);
    return number.has_value();
}

// Which failure the first bad text brings; nothing if all of them can be read.
bool AllNumbers(const test::MapSettings& settings) {
    for (std::size_t i = 0; i < Names.size(); ++i) {
        const bool isTwips = i < 11;
        const bool isFlag = i >= 17 && i <= 26;
        if ((isTwips || isFlag) && !IsNumber(settings, Names[i])) {
            return false;
        }
    }
    return true;
}

void RequireState(const WindowState& state, const test::MapSettings& settings) {
    Require(state.GridLines == (Stored(settings, "GridLines", "no") == "yes"));
    Require(state.SearchTitle == (Stored(settings, "SearchTitle", "1") == "1"));
    Require(state.ExternalPlayer == (Stored(settings, "ExternalPlayer", "0") != "0"));
    for (const std::int32_t count : {0, 1, 20}) {
        for (const std::int32_t stored : {state.Drive, state.Genre, state.Album}) {
            const std::int32_t index = ExistingIndex(stored, count);
            Require(index == 0 || (index == stored && index > 0 && index < count));
        }
    }
}

void ReadWindow(const test::MapSettings& settings) {
    const auto before = settings.values;
    std::optional<WindowState> state;
    try {
        state = LoadWindowState("1024x768");
    } catch (const RuntimeError& error) {
        Require(error.Number() == ErrorNumber::TypeMismatch || error.Number() == ErrorNumber::Overflow);
        Require(error.Number() == ErrorNumber::Overflow || !AllNumbers(settings));
    }
    Require(settings.values == before); // A default is never stored.
    if (!state) {
        return;
    }
    Require(AllNumbers(settings));
    RequireState(*state, settings);
    const WindowState small = LoadWindowState("800x600");
    Require(small.WindowWidth <= 12000 && small.WindowHeight <= 9000 && small.ColWidth == state->ColWidth);
    SaveWindowState(*state);
    Require(LoadWindowState("1024x768") == *state);
}

void ReadOthers(const test::MapSettings& settings) {
    const std::string language = Stored(settings, "Language", "GER");
    const std::string text = LoadResString(432);
    Require((text == "Error : No Local Data") == (language != "GER" && language != "ENG"));
    const ScanPathSettings scanPath = LoadScanPathSettings();
    Require(scanPath.Scanpath == Stored(settings, "Scanpath", ""));
    for (const auto& [name, value] : settings.values) {
        Require(GetSettingValue(SettingsApplication, SettingsSection, name, "default") == value);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view input = fuzz::TextOf(data, size);
    fuzz::FuzzServices doubles;
    if (fuzz::TakeByte(input) % 2 == 1) {
        services.regional = {".", ",", "/", "M/d/yyyy", true};
    }
    FillSettings(input, doubles.settings);
    ReadOthers(doubles.settings);
    ReadWindow(doubles.settings);
    return 0;
}
