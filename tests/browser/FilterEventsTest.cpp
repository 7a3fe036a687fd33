#include "browser/FilterEvents.h"

#include "support/LogicTest.h"

#include <gmock/gmock.h>

namespace quavernet::test {

namespace {

using ::testing::ElementsAre;

using FilterEventsTest = LogicTest;

TEST_F(FilterEventsTest, AMousePickInAComboReloadsAtOnce) {
    EXPECT_EQ(ComboClick(), FilterAction::LoadDatabase);
}

TEST_F(FilterEventsTest, ArrowKeysInAComboDoNotReloadUntilEnter) {
    for (const int key : {37, 38, 39, 40}) {
        mainModule.SuppressComboClick = false;
        ComboKeyDown(key);
        EXPECT_TRUE(mainModule.SuppressComboClick) << key;
        EXPECT_EQ(ComboClick(), FilterAction::None) << key;
        ComboKeyUp(key);
        EXPECT_FALSE(mainModule.SuppressComboClick) << key;
    }
    EXPECT_EQ(ComboKeyPress(13), FilterAction::LoadDatabase);
    EXPECT_EQ(ComboKeyPress('a'), FilterAction::None);
}

TEST_F(FilterEventsTest, OtherKeysLeaveTheFlagOfTheCombosAlone) {
    for (const int key : {36, 41, 13, 112}) {
        ComboKeyDown(key);
        EXPECT_FALSE(mainModule.SuppressComboClick) << key;
    }
    mainModule.SuppressComboClick = true;
    for (const int key : {36, 41, 13, 112}) {
        ComboKeyUp(key);
        EXPECT_TRUE(mainModule.SuppressComboClick) << key;
    }
}

TEST_F(FilterEventsTest, AKeyReleasedOutsideTheComboBlocksItsClicksUntilTheNextArrowKeyComesUp) {
    ComboKeyDown(40);
    EXPECT_EQ(ComboClick(), FilterAction::None);
    EXPECT_EQ(ComboClick(), FilterAction::None);
    ComboKeyUp(39);
    EXPECT_EQ(ComboClick(), FilterAction::LoadDatabase);
}

TEST_F(FilterEventsTest, EnterInTheSearchBoxAndOnTheCheckBoxesSearches) {
    EXPECT_EQ(SearchKeyPress(13), FilterAction::Search);
    EXPECT_EQ(SearchKeyPress('x'), FilterAction::None);
    EXPECT_EQ(CheckBoxKeyPress(13), FilterAction::Search);
    EXPECT_EQ(CheckBoxKeyPress(' '), FilterAction::None);
}

TEST_F(FilterEventsTest, ABoxClearedWhileTheOtherIsCheckedIsStoredAsCleared) {
    EXPECT_FALSE(ClickInterpret(false, true));
    EXPECT_EQ(settings.values["SearchInterpret"], "0");
    EXPECT_FALSE(ClickTitle(false, true));
    EXPECT_EQ(settings.values["SearchTitle"], "0");
}

TEST_F(FilterEventsTest, TheLastCheckedBoxStaysCheckedAndIsStoredAsChecked) {
    EXPECT_TRUE(ClickInterpret(false, false));
    EXPECT_EQ(settings.values["SearchInterpret"], "1");
    EXPECT_EQ(settings.values.count("SearchTitle"), 0U);
    EXPECT_TRUE(ClickTitle(false, false));
    EXPECT_EQ(settings.values["SearchTitle"], "1");
}

TEST_F(FilterEventsTest, ACheckedBoxIsStoredAsChecked) {
    EXPECT_TRUE(ClickInterpret(true, false));
    EXPECT_EQ(settings.values["SearchInterpret"], "1");
    EXPECT_TRUE(ClickTitle(true, true));
    EXPECT_EQ(settings.values["SearchTitle"], "1");
}

TEST_F(FilterEventsTest, TheLoadOverSearchItemTogglesAndStoresNothing) {
    EXPECT_TRUE(mnuOptionsLoadOverSearch_Click(false));
    EXPECT_TRUE(mainModule.LoadOverSearch);
    EXPECT_FALSE(mnuOptionsLoadOverSearch_Click(true));
    EXPECT_FALSE(mainModule.LoadOverSearch);
    EXPECT_TRUE(settings.values.empty());
}

std::string BoldLabels(const LetterLabels& row) {
    std::string names;
    for (const LetterLabels::Label& label : row.Labels()) {
        names += label.Bold ? label.Name + " " : "";
    }
    return names;
}

TEST_F(FilterEventsTest, TheLetterRowHasTwentyEightLabels) {
    const LetterLabels row;
    std::string names;
    std::string values;
    for (const LetterLabels::Label& label : row.Labels()) {
        names += label.Name + " ";
        values += label.Value + " ";
        EXPECT_EQ(label.ForeColor, 0xC00000U);
    }
    EXPECT_EQ(names,
              "lblAll lblA lblB lblC lblD lblE lblF lblG lblH lblI lblJ lblK lblL lblM lblN lblO lblP lblQ "
              "lblR lblS lblT lblU lblV lblW lblX lblY lblZ lblOther ");
    EXPECT_EQ(values, "All A B C D E F G H I J K L M N O P Q R S T U V W X Y Z other ");
    EXPECT_EQ(BoldLabels(row), "lblAll ");
}

TEST_F(FilterEventsTest, AClickOnALetterMakesItBoldAndTheFilter) {
    LetterLabels row;
    EXPECT_EQ(row.Click(2), FilterAction::LoadDatabase);
    EXPECT_EQ(BoldLabels(row), "lblB ");
    EXPECT_EQ(mainModule.LetterFilter, "B");
    row.Click(27);
    EXPECT_EQ(BoldLabels(row), "lblOther ");
    EXPECT_EQ(mainModule.LetterFilter, "other");
    row.Click(0);
    EXPECT_EQ(mainModule.LetterFilter, "All");
}

TEST_F(FilterEventsTest, TheMouseLeavesOnlyTheLetterUnderItWhite) {
    LetterLabels row;
    row.MouseMove(3);
    row.MouseMove(4);
    for (std::size_t i = 0; i < LetterLabels::Count; ++i) {
        EXPECT_EQ(row.Labels()[i].ForeColor, i == 4 ? 0xFFFFFFU : 0xC00000U) << i;
    }
    row.ResetLetterColors();
    EXPECT_EQ(row.Labels()[4].ForeColor, 0xC00000U);
    EXPECT_EQ(BoldLabels(row), "lblAll ") << "a hover changes no font";
}

TEST_F(FilterEventsTest, NoLetterIsBoldAfterTheReset) {
    LetterLabels row;
    row.ResetLetterBold();
    EXPECT_EQ(BoldLabels(row), "");
}

TEST_F(FilterEventsTest, TheStatusBarExplainsTheScanWhileOneRuns) {
    mainModule.ScanRunning = true;
    EXPECT_THAT(StatusBarToolTips("1 Titel", "2 Interpreten", "3 Alben"),
                ElementsAre(PanelToolTip{Panel::Filecount, "Prozent des gesamten Scanvorganges"},
                            PanelToolTip{Panel::Interprets, "Geschätzte verbleibende Zeit"},
                            PanelToolTip{Panel::Titles, "Abgelaufene Zeit"}));
}

TEST_F(FilterEventsTest, TheStatusBarExplainsItsCountersOtherwise) {
    EXPECT_THAT(StatusBarToolTips("1 Titel", "2 Interpreten", "3 Alben"),
                ElementsAre(PanelToolTip{Panel::Titles, "1 Titel in der Datenbank gespeichert"},
                            PanelToolTip{Panel::Interprets, "2 Interpreten in der Datenbank gespeichert"},
                            PanelToolTip{Panel::Albums, "3 Alben in der Datenbank gespeichert"}));
}

} // namespace

} // namespace quavernet::test
