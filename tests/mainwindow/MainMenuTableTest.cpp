#include "mainwindow/MainMenuTable.h"

#include "app/LoadResString.h"

#include <set>

#include <gtest/gtest.h>

namespace quavernet::test {

TEST(MainMenuTableTest, NamesAreUniqueAndParentsStandBeforeTheirItems) {
    std::set<std::string_view> menus;
    std::set<std::string_view> names;
    for (const MenuEntry& entry : MainMenuTable) {
        EXPECT_TRUE(names.insert(entry.Name).second) << entry.Name;
        if (!entry.Parent.empty() && entry.Parent != "popup") {
            EXPECT_TRUE(menus.contains(entry.Parent)) << entry.Name;
        }
        if (entry.Is(MenuEntry::Menu)) {
            menus.insert(entry.Name);
        }
    }
}

TEST(MainMenuTableTest, EveryTextExistsInBothLanguages) {
    for (const MenuEntry& entry : MainMenuTable) {
        if (entry.Text != 0) {
            EXPECT_TRUE(QuavernetGER.GetResourceString(entry.Text)) << entry.Name;
            EXPECT_TRUE(QuavernetENG.GetResourceString(entry.Text)) << entry.Name;
        }
    }
}

TEST(MainMenuTableTest, ShortcutsAreThoseOfTheProgram) {
    std::string shortcuts;
    for (const MenuEntry& entry : MainMenuTable) {
        if (entry.Shortcut != 0) {
            shortcuts += std::string(entry.Name) + "=" + entry.Shortcut + " ";
        }
    }
    EXPECT_EQ(shortcuts, "mnuScan=S mnuPlayer=P mnuPrint=D mnuCleanDatabase=C mnuExit=Q mnuShowGridlines=G "
                         "mnuManageCovers=L mnuEditTree2=B mnuDetails=I mnuPlaySelectedItems=A mnuPlaylist=E "
                         "mnuKonvert=K mnuRandomPlay=R mnuHelp=H ");
}

TEST(MainMenuTableTest, FiveItemsStartDisabled) {
    std::string disabled;
    for (const MenuEntry& entry : MainMenuTable) {
        if (entry.Is(MenuEntry::StartsDisabled)) {
            disabled += std::string(entry.Name) + " ";
        }
    }
    EXPECT_EQ(disabled, "mnuEditExchange mnuEditFilename mnuEditDelete mnuPlaylist mnuKonvert ");
}

} // namespace quavernet::test
