#include "mainwindow/MenuMnemonics.h"

#include "app/LoadResString.h"
#include "mainwindow/MainMenuTable.h"
#include "platform/Ascii.h"
#include "support/LogicTest.h"

#include <map>
#include <string>

namespace quavernet::test {

namespace {

class MenuMnemonicsTest : public LogicTest {};

std::string Marked(const MenuEntry& entry, const char* language) {
    return WithMnemonic(LoadResString(entry.Text), MenuMnemonic(entry.Name, language));
}

} // namespace

TEST_F(MenuMnemonicsTest, InEachLanguageEveryCaptionHasALetterOfItsOwnWithinItsMenu) {
    for (const char* language : {"GER", "ENG"}) {
        settings.values["Language"] = language;
        std::map<std::string, std::string> taken; // Menu and letter, with the item that has them.
        for (const MenuEntry& entry : MainMenuTable) {
            if (entry.Text == 0) {
                continue;
            }
            const std::string marked = Marked(entry, language);
            const std::size_t mark = marked.find('&');
            ASSERT_NE(mark, std::string::npos) << language << " " << entry.Name << ": " << marked;
            const std::string key = std::string(entry.Parent) + " " + LowerAscii(marked.substr(mark + 1, 1));
            EXPECT_TRUE(taken.emplace(key, entry.Name).second)
                << language << ": " << entry.Name << " and " << taken[key] << " have one letter";
        }
    }
}

TEST_F(MenuMnemonicsTest, TheLetterIsMarkedWhereAWordBeginsWithIt) {
    EXPECT_EQ(WithMnemonic("Bauminhalt importieren...", 'I'), "Bauminhalt &importieren...");
    EXPECT_EQ(WithMnemonic("Import tree contents...", 'I'), "&Import tree contents...");
    EXPECT_EQ(WithMnemonic("Drucken...", 'U'), "Dr&ucken...");
    EXPECT_EQ(WithMnemonic("Über...", 'B'), "Ü&ber...");
}

TEST_F(MenuMnemonicsTest, ACaptionWithoutTheLetterStaysAndAnAmpersandShows) {
    EXPECT_EQ(WithMnemonic("Play", 'X'), "Play");
    EXPECT_EQ(WithMnemonic("R & B", '\0'), "R && B");
    EXPECT_EQ(WithMnemonic("R & B", 'B'), "R && &B");
    EXPECT_EQ(MenuMnemonic("mnuFile", ""), '\0') << "a language that there is not";
    EXPECT_EQ(MenuMnemonic("mnuSep2", "GER"), '\0');
}

} // namespace quavernet::test
