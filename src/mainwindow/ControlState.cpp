#include "mainwindow/ControlState.h"

#include <array>

namespace quavernet {

namespace {

constexpr auto IdleControls = std::to_array<std::string_view>(
    {"print", "date", "top", "cboGenre", "cboDrive", "cboAlbum", "txtSearch", "cmdSearch", "mnuFile",
     "mnuEdit", "mnuView", "mnuExtras", "mnuOptions", "mnuUpperHelp"});

constexpr auto SelectionControls = std::to_array<std::string_view>(
    {"plist", "mnuKontextPlaylist", "mnuPlaylist", "mnuDetails", "mnuEditFilename", "mnuEditDelete",
     "mnuKontextExchange", "mnuEditExchange", "mnuPlay", "cmdPlay", "mnuPlaySelectedItems"});

constexpr auto ConversionControls =
    std::to_array<std::string_view>({"konvert", "mnuKontextKonvert", "mnuKonvert"});

template <typename Names> void Add(std::vector<ControlSwitch>& switches, const Names& names, bool enabled) {
    for (const std::string_view name : names) {
        switches.push_back({name, enabled});
    }
}

} // namespace

std::vector<ControlSwitch> ControlState(std::int16_t mode, std::int32_t row, const std::string& format) {
    std::vector<ControlSwitch> switches;
    switch (mode) {
    case 0:
        switches.push_back({"scan", true});
        Add(switches, IdleControls, true);
        Add(switches,
            std::to_array<std::string_view>(
                {"cancel", "plist", "konvert", "mnuPlaySelectedItems", "mnuPlay", "cmdPlay"}),
            false);
        break;
    case 1:
        switches.push_back({"cancel", true});
        Add(switches, std::to_array<std::string_view>({"scan", "plist", "konvert"}), false);
        Add(switches, IdleControls, false);
        break;
    case 3:
        Add(switches, SelectionControls, row >= 1);
        Add(switches, ConversionControls, row >= 1 && format == "wav");
        break;
    default:
        break;
    }
    return switches;
}

} // namespace quavernet
