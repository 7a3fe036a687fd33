// What the list asks for, as it arrives in the real queue of the player's window.
#include "gui/PlayerWindowTest.h"

#include "browser/GridView.h"

namespace quavernet::test {

namespace {

class PlayIntoQueueTest : public PlayerWindowTest {
protected:
    PlayIntoQueueTest() {
        AddFile("Abba", "One");
        AddFile("Cure", "Two");
        AddFile("Eels", "Three");
        Start();
    }
    bool Run(const char* name) { return Form().Parts().Commands.Run(name); }
    void DoubleClickRow(int row) {
        QTest::mouseDClick(Grid().viewport(), Qt::LeftButton, {}, CellCentre(row));
    }
};

} // namespace

TEST_F(PlayIntoQueueTest, WithAlwaysAddADoubleClickStartsTheFirstFileAndAddsTheNext) {
    mainModule.AlwaysAddToPlaylist = true;
    ClickRow(1);
    DoubleClickRow(1);
    EXPECT_EQ(Entries(), Texts{"|> Abba - One"});
    EXPECT_TRUE(engine->IsPlaying());
    ClickRow(2);
    DoubleClickRow(2);
    EXPECT_EQ(Entries(), (Texts{"|> Abba - One", "Cure - Two"}));
    EXPECT_EQ(engine->FileName(), "/music/One.mp3");
    EXPECT_EQ(engine->Next(), "/music/Two.mp3");
    EXPECT_EQ(Calls("Play"), 1);
}

TEST_F(PlayIntoQueueTest, WithAlwaysAddTheListsPlayAddsAndThePlayButtonStartsTheFirstEntryAgain) {
    mainModule.AlwaysAddToPlaylist = true;
    ClickRow(1);
    ASSERT_TRUE(Run("mnuKontextPlay"));
    EXPECT_EQ(Entries(), Texts{"Abba - One"});
    EXPECT_FALSE(engine->IsPlaying());
    ClickRow(3);
    ASSERT_TRUE(Run("cmdPlay"));
    EXPECT_EQ(Entries(), (Texts{"|> Abba - One", "Eels - Three"}));
    EXPECT_EQ(engine->FileName(), "/music/One.mp3");
}

TEST_F(PlayIntoQueueTest, ARowThatWasDeselectedIsNotPlayed) {
    ClickRow(1);
    ClickRow(3, Qt::ShiftModifier);
    ClickRow(2, Qt::ControlModifier);
    ASSERT_TRUE(Run("mnuPlaySelectedItems"));
    EXPECT_EQ(Entries(), (Texts{"|> Abba - One", "Eels - Three"}));
    ClickRow(1, Qt::ControlModifier);
    ASSERT_TRUE(Run("cmdPlay"));
    EXPECT_EQ(Entries(), Texts{"|> Eels - Three"});
}

TEST_F(PlayIntoQueueTest, ARandomPlayOfNoFilesLeavesAnEmptyQueue) {
    DoubleClickRow(1);
    settings.values["CheckedRandomOpt"] = "FileCount";
    settings.values["FileCountRandomPlay"] = "0";
    ASSERT_TRUE(Run("cmdRandomize"));
    EXPECT_EQ(Entries(), Texts{});
    EXPECT_EQ(Queue().PathCount(), 0U);
    EXPECT_EQ(Selected(), -1);
    EXPECT_EQ(PanelText(Panel::Scanning), "");
}

} // namespace quavernet::test
