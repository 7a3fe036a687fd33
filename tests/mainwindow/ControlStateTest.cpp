#include "mainwindow/ControlState.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace quavernet::test {

namespace {

using Names = std::vector<std::string>;

Names Switched(const std::vector<ControlSwitch>& switches, bool enabled) {
    Names names;
    for (const ControlSwitch& item : switches) {
        if (item.Enabled == enabled) {
            names.emplace_back(item.Name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

const Names SelectionControls{"cmdPlay",
                              "mnuDetails",
                              "mnuEditDelete",
                              "mnuEditExchange",
                              "mnuEditFilename",
                              "mnuKontextExchange",
                              "mnuKontextPlaylist",
                              "mnuPlay",
                              "mnuPlaySelectedItems",
                              "mnuPlaylist",
                              "plist"};
const Names ConversionControls{"konvert", "mnuKontextKonvert", "mnuKonvert"};

Names Both(Names first, const Names& second) {
    first.insert(first.end(), second.begin(), second.end());
    std::sort(first.begin(), first.end());
    return first;
}

} // namespace

TEST(ControlStateTest, IdleOpensTheMenusAndFiltersAndClosesWhatNeedsASelection) {
    const auto switches = ControlState(ControlMode::Idle, 0, "");
    EXPECT_EQ(
        Switched(switches, true),
        (Names{"cboAlbum", "cboDrive", "cboGenre", "cmdSearch", "date", "mnuEdit", "mnuExtras", "mnuFile",
               "mnuOptions", "mnuUpperHelp", "mnuView", "print", "scan", "top", "txtSearch"}));
    EXPECT_EQ(Switched(switches, false),
              (Names{"cancel", "cmdPlay", "konvert", "mnuPlay", "mnuPlaySelectedItems", "plist"}));
}

TEST(ControlStateTest, ARunningScanLeavesOnlyCancel) {
    const auto switches = ControlState(ControlMode::ScanRunning, 0, "");
    EXPECT_EQ(Switched(switches, true), Names{"cancel"});
    EXPECT_EQ(Switched(switches, false),
              (Names{"cboAlbum", "cboDrive", "cboGenre", "cmdSearch", "date", "konvert", "mnuEdit",
                     "mnuExtras", "mnuFile", "mnuOptions", "mnuUpperHelp", "mnuView", "plist", "print",
                     "scan", "top", "txtSearch"}));
}

TEST(ControlStateTest, ASelectedRowOpensItsCommandsAndConversionForWavAlone) {
    EXPECT_EQ(Switched(ControlState(ControlMode::SelectionChanged, 1, "mp3"), true), SelectionControls);
    EXPECT_EQ(Switched(ControlState(ControlMode::SelectionChanged, 1, "mp3"), false), ConversionControls);
    EXPECT_EQ(Switched(ControlState(ControlMode::SelectionChanged, 1, "wav"), true),
              Both(SelectionControls, ConversionControls));
    EXPECT_EQ(Switched(ControlState(ControlMode::SelectionChanged, 1, "WAV"), false), ConversionControls);
}

TEST(ControlStateTest, NoRowClosesAllOfThem) {
    EXPECT_EQ(Switched(ControlState(ControlMode::SelectionChanged, 0, "wav"), false),
              Both(SelectionControls, ConversionControls));
    EXPECT_TRUE(Switched(ControlState(ControlMode::SelectionChanged, 0, "wav"), true).empty());
}

TEST(ControlStateTest, ALoadedListGreysWhatNeedsASelection) {
    const auto switches = ControlState(ControlMode::ListLoaded, 1, "wav");
    EXPECT_EQ(Switched(switches, false), (Names{"konvert", "mnuDetails", "mnuEditDelete", "mnuEditExchange",
                                                "mnuEditFilename", "mnuPlaylist", "plist"}));
    EXPECT_TRUE(Switched(switches, true).empty());
}

} // namespace quavernet::test
