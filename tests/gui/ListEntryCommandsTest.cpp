// The commands on the selected rows of the list, in the real window.
#include "gui/GuiTest.h"

#include "tree/TreePane.h"

#include <QScrollBar>

namespace quavernet::test {

namespace {

class ListEntryCommandsTest : public GuiTest {
protected:
    ~ListEntryCommandsTest() override { services.events = &realEvents; }

    /// As many files, in the order of their performers.
    void StartWith(int count) {
        for (int i = 1; i <= count; ++i) {
            const std::string number = std::to_string(1000 + i);
            AddFile("P" + number, "T" + number);
        }
        Start();
    }
    std::string Value(const std::string& statement) {
        return mainModule.Connection->Query(statement).At(0, 0).Text();
    }
    bool IsEnabled(const char* name) { return Action(name).isEnabled(); }
};

} // namespace

TEST_F(ListEntryCommandsTest, TheItemsAreOnOnceARowIsClickedAndGreyAfterEachLoad) {
    StartWith(2);
    for (const char* name : {"mnuEditDelete", "mnuEditExchange"}) {
        EXPECT_FALSE(IsEnabled(name)) << name;
    }
    ClickRow(1);
    for (const char* name : {"mnuEditDelete", "mnuEditExchange", "mnuKontextDelete", "mnuKontextExchange"}) {
        EXPECT_TRUE(IsEnabled(name)) << name;
    }
    Action("mnuEditExchange").trigger();
    EXPECT_FALSE(IsEnabled("mnuEditDelete"));
    EXPECT_FALSE(IsEnabled("mnuEditExchange"));
}

TEST_F(ListEntryCommandsTest, ADeleteKeepsTheRowAndTheTopRow) {
    StartWith(300);
    Grid().SetTopRow(100);
    ASSERT_EQ(Grid().TopRow(), 100);
    ClickRow(102);
    Action("mnuEditDelete").trigger();
    EXPECT_EQ(Listed().size(), 299U);
    EXPECT_EQ(Grid().Selection().Row(), 102);
    EXPECT_EQ(Grid().TopRow(), 100);
    EXPECT_EQ(Listed()[101], "P1103");
    EXPECT_EQ(PanelText(Panel::Scanning), "/music/T1103.mp3");
    EXPECT_EQ(mainModule.SelectedRows.Rows(), std::vector<std::int32_t>{102});
    EXPECT_TRUE(Grid().Selection().IsPainted(102));
    EXPECT_FALSE(IsEnabled("mnuEditDelete")) << "until a row is clicked again";
}

TEST_F(ListEntryCommandsTest, ADeleteAtTheEndOfTheListStaysAtItsEnd) {
    StartWith(300);
    QTest::keyClick(&Grid(), Qt::Key_End);
    const std::int32_t topRow = Grid().TopRow();
    ASSERT_GT(topRow, 200);
    Action("mnuKontextDelete").trigger();
    EXPECT_EQ(Grid().Selection().Row(), 299);
    EXPECT_GE(Grid().TopRow(), topRow - 1) << "there is one row less to scroll by";
    EXPECT_TRUE(Grid().RowIsVisible(299));
}

TEST_F(ListEntryCommandsTest, SeveralRowsGoByTheContextMenuOutOfListAndTree) {
    AddFile("Abba", "One");
    AddFile("Cure", "Two");
    AddFile("Doors", "Three");
    for (const char* statement :
         {"Insert into Categories (Category) values ('Alpha')",
          "Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (1, 1, 1, "
          "'Alpha', 'One.mp3')",
          "Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (3, 1, 2, "
          "'Alpha', 'Three.mp3')"}) {
        mainModule.Connection->Execute(statement);
    }
    Start();
    ClickRow(1);
    ClickRow(2, Qt::ShiftModifier);
    Action("mnuKontextDelete").trigger();
    EXPECT_EQ(Listed(), Texts{"Doors"});
    EXPECT_TRUE(Form().Tree().Model().Contains("file2pos1"));
    EXPECT_EQ(Form().Tree().Model().Nodes().size(), 3U);
    EXPECT_TRUE(msgBox.shown.empty());
    ClickRow(1);
    Action("mnuKontextDelete").trigger();
    EXPECT_EQ(Listed(), Texts{});
    EXPECT_EQ(Grid().Selection().Row(), 0);
    EXPECT_EQ(PanelText(Panel::Filecount), "0 Dateien / (0,00 MB)");
}

TEST_F(ListEntryCommandsTest, TwoSwapsGiveTheOldListAgain) {
    AddFile("Abba", "One");
    AddFile("Cure", "Two");
    Start();
    ClickRow(1);
    Action("mnuKontextExchange").trigger();
    EXPECT_EQ(Listed(), (Texts{"Cure", "One"}));
    EXPECT_EQ(mainModule.SelectedRows.Count(), 0U);
    ClickRow(2);
    Action("mnuEditExchange").trigger();
    EXPECT_EQ(Listed(), (Texts{"Abba", "Cure"}));
    EXPECT_EQ(Value("Select Count(*) from Interpret"), "3");
}

TEST_F(ListEntryCommandsTest, ACommandInsideADeleteTakesOneRowAtMost) {
    StartWith(9);
    bool inside = false;
    for (const char* inner : {"mnuKontextDelete", "mnuKontextExchange"}) {
        services.events = &realEvents;
        ClickRow(2);
        std::size_t commands = 1;
        events.onDoEvents = [&] {
            if (!inside) {
                inside = true;
                ++commands;
                Action(inner).trigger();
                inside = false;
            }
        };
        services.events = &events;
        const std::size_t before = Listed().size();
        Action("mnuKontextDelete").trigger();
        EXPECT_GE(commands, 3U);
        EXPECT_LT(Listed().size(), before) << inner;
        EXPECT_GE(Listed().size() + commands, before) << inner;
    }
}

TEST_F(ListEntryCommandsTest, ARunningScanHoldsThemBack) {
    StartWith(2);
    ClickRow(1);
    mainModule.ScanRunning = true;
    for (const char* name : {"mnuKontextDelete", "mnuEditDelete", "mnuKontextExchange", "mnuEditExchange"}) {
        Action(name).trigger();
    }
    mainModule.ScanRunning = false;
    EXPECT_EQ(Listed().size(), 2U);
    EXPECT_EQ(Value("Select Count(*) from Interpret"), "2");
}

} // namespace quavernet::test
