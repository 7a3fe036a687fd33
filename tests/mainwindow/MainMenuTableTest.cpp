// What the menus hold; the tests of the real menus compare them with this table.
#include "mainwindow/MainMenuTable.h"

#include "app/LoadResString.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

namespace quavernet::test {

namespace {

// The items of one menu with their text numbers, in order.
std::string ItemsOf(const std::string& parent) {
    std::string items;
    for (const MenuEntry& entry : MainMenuTable) {
        if (entry.Parent == parent) {
            items += std::string(entry.Name) + " " + std::to_string(entry.Text) + ", ";
        }
    }
    return items;
}

} // namespace

TEST(MainMenuTableTest, TheMenuBarHoldsSixMenus) {
    EXPECT_EQ(ItemsOf(""),
              "mnuFile 201, mnuView 202, mnuEdit 203, mnuExtras 204, mnuOptions 205, mnuUpperHelp 206, ");
    EXPECT_EQ(ItemsOf("popup"), "mnuKontext 0, mnuTree 0, ");
}

TEST(MainMenuTableTest, TheFileAndViewMenusHoldTheirItemsInOrder) {
    EXPECT_EQ(ItemsOf("mnuFile"),
              "mnuScan 207, mnuPlayer 208, mnuPrint 209, mnuFileExport 210, mnuFileImport 211, "
              "mnuCleanDatabase 212, mnuExit 213, ");
    EXPECT_EQ(ItemsOf("mnuView"),
              "mnump3 214, mnuogg 215, mnuwav 216, mnuShowGridlines 217, mnuViewLanguage 248, ");
    EXPECT_EQ(ItemsOf("mnuViewLanguage"), "mnuViewLanguageGER 249, mnuViewLanguageENG 250, ");
}

TEST(MainMenuTableTest, TheEditAndExtrasMenusHoldTheirItemsInOrder) {
    EXPECT_EQ(ItemsOf("mnuEdit"),
              "mnuEditExchange 218, mnuEditFilename 219, mnuEditDelete 220, mnuManageCovers 221, "
              "mnuEditTree2 222, ");
    EXPECT_EQ(
        ItemsOf("mnuExtras"),
        "mnuDetails 223, mnuPlaySelectedItems 224, mnuPlaylist 225, mnuKonvert 226, mnuRandomPlay 227, ");
}

TEST(MainMenuTableTest, TheOptionsAndHelpMenusHoldTheirItemsInOrder) {
    EXPECT_EQ(ItemsOf("mnuOptions"),
              "mnuScanOptions 228, mnuKonvertoptions 229, mnuToplists 230, mnuCoverOnlineSearch 231, "
              "mnuStandardScanningPath 251, mnuRandom 232, mnuRemind 233, mnuPlayerOptions 234, "
              "mnuOptionsLoadOverSearch 235, ");
    EXPECT_EQ(ItemsOf("mnuScanOptions"),
              "mnuQuickscan 239, mnuRecursive 240, mnuScanMp3 214, mnuScanWav 216, "
              "mnuScanOgg 215, mnuOptionsScanLog 241, ");
    EXPECT_EQ(ItemsOf("mnuPlayerOptions"), "mnuAddToPlaylist 242, mnuExternalPlayer 243, ");
    EXPECT_EQ(ItemsOf("mnuUpperHelp"), "mnuHelp 236, mnuAbout 238, ");
}

TEST(MainMenuTableTest, ThePopupMenusHoldTheirItemsInOrder) {
    EXPECT_EQ(ItemsOf("mnuKontext"),
              "mnuKontextDetails 223, mnuKontextPlay 224, mnuKontextKonvert 226, mnuKontextExchange 218, "
              "mnuKontextFilename 219, mnuKontextDelete 220, mnuKontextPlaylist 225, mnuKontextRandom 227, "
              "mnuKontextPrint 209, mnuKontextCopyPaths 812, mnuKontextAnsicht 202, ");
    EXPECT_EQ(ItemsOf("mnuKontextAnsicht"),
              "mnuKontextMp3 214, mnuKontextOgg 215, mnuKontextWav 216, mnuKontextShowGridlines 217, ");
    EXPECT_EQ(ItemsOf("mnuTree"),
              "mnuPlay 224, mnuTreeRandom 227, mnuSep12 0, mnuCreatePlaylist 225, mnuSep3 0, "
              "mnuNewCategory 245, mnuEditCategory 246, mnuSep11 0, mnuDelete 220, mnuDeleteContent 247, "
              "mnuSep15 0, mnuShowInGrid 244, mnuSep2 0, mnuExport 210, mnuImport 211, mnuEditTree 222, ");
}

TEST(MainMenuTableTest, ExactlyTheTogglesCarryACheckMark) {
    std::set<std::string_view> checkable;
    for (const MenuEntry& entry : MainMenuTable) {
        if (entry.Is(MenuEntry::Checkable)) {
            checkable.insert(entry.Name);
        }
    }
    EXPECT_EQ(checkable, (std::set<std::string_view>{
                             "mnump3", "mnuogg", "mnuwav", "mnuShowGridlines", "mnuViewLanguageGER",
                             "mnuViewLanguageENG", "mnuQuickscan", "mnuRecursive", "mnuScanMp3", "mnuScanWav",
                             "mnuScanOgg", "mnuOptionsScanLog", "mnuAddToPlaylist", "mnuExternalPlayer",
                             "mnuOptionsLoadOverSearch", "mnuKontextMp3", "mnuKontextOgg", "mnuKontextWav",
                             "mnuKontextShowGridlines"}));
}

TEST(MainMenuTableTest, ShortcutsAreGivenOnce) {
    std::set<std::pair<char, bool>> shortcuts; // With Shift or without.
    for (const MenuEntry& entry : MainMenuTable) {
        if (entry.Shortcut != 0) {
            EXPECT_TRUE(shortcuts.emplace(entry.Shortcut, entry.Is(MenuEntry::Shifted)).second) << entry.Name;
        }
    }
}

TEST(MainMenuTableTest, NamesAreUniqueAndParentsComeBeforeTheirItems) {
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
            shortcuts += std::string(entry.Name) + (entry.Is(MenuEntry::Shifted) ? "=Shift+" : "=") +
                         entry.Shortcut + " ";
        }
    }
    EXPECT_EQ(shortcuts, "mnuScan=S mnuPlayer=P mnuPrint=D mnuCleanDatabase=C mnuExit=Q mnuShowGridlines=G "
                         "mnuManageCovers=L mnuEditTree2=B mnuDetails=I mnuPlaySelectedItems=A mnuPlaylist=E "
                         "mnuKonvert=K mnuRandomPlay=R mnuHelp=H mnuKontextCopyPaths=Shift+C ");
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
