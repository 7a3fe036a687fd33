#include "library/DatabaseCheck.h"

#include "support/LongWorkDouble.h"
#include "support/TestLibrary.h"
#include "support/Texts.h"

#include "platform/RuntimeError.h"

namespace quavernet::test {
namespace {

class CheckDatabaseTest : public LibraryTest {
protected:
    void Check() { CheckDatabase(work); }
    void AddCategory(const std::string& name) {
        Execute("Insert into Categories (Category) values ('" + name + "')");
    }
    void AddEntry(int category, const std::string& file) {
        Execute(
            "Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (1, " +
            std::to_string(category) + ", 1, 'x', '" + file + "')");
    }
    Texts Categories() { return Rows("Select Category_id, Category from Categories Order By Category_id"); }

    Texts shown;
    LongWorkDouble work{shown};
};

TEST_F(CheckDatabaseTest, WithoutDoubledNamesNothingChangesAndThePanelKeepsTheFirstText) {
    AddCategory("Rock");
    AddCategory("Jazz");
    AddEntry(1, "a.mp3");
    Check();
    EXPECT_EQ(shown, Texts{"panel 1: Prüfe Datenbank..."});
    EXPECT_EQ(events.count, 1);
    EXPECT_EQ(Categories(), (Texts{"1|Rock", "2|Jazz"}));
    EXPECT_EQ(Value("Select Count(File_id) from FileCategories"), "1");
}

TEST_F(CheckDatabaseTest, AnEmptyLibraryPasses) {
    Check();
    EXPECT_EQ(shown, Texts{"panel 1: Prüfe Datenbank..."});
}

TEST_F(CheckDatabaseTest, TheYoungerRowOfADoubledNameGoesWithItsEntries) {
    AddCategory("Rock");
    AddCategory("Jazz");
    AddCategory("Rock");
    AddEntry(1, "older.mp3");
    AddEntry(2, "other.mp3");
    AddEntry(3, "younger.mp3");
    Check();
    EXPECT_EQ(shown, (Texts{"panel 1: Prüfe Datenbank...", "panel 1: Repariere Datenbank..."}));
    EXPECT_EQ(events.count, 2);
    EXPECT_EQ(Categories(), (Texts{"1|Rock", "2|Jazz"}));
    EXPECT_EQ(Rows("Select Filename from FileCategories Order By FileCategory_id"),
              (Texts{"older.mp3", "other.mp3"}));
}

TEST_F(CheckDatabaseTest, ANameThatIsThereThreeTimesLosesOneRowAtEachStart) {
    AddCategory("Rock");
    AddCategory("Rock");
    AddCategory("Rock");
    Check();
    EXPECT_EQ(Categories(), (Texts{"1|Rock", "2|Rock"}));
    Check();
    EXPECT_EQ(Categories(), Texts{"1|Rock"});
    shown.clear();
    Check();
    EXPECT_EQ(shown, Texts{"panel 1: Prüfe Datenbank..."});
}

TEST_F(CheckDatabaseTest, NamesThatDifferOnlyInCaseAreDoubled) {
    AddCategory("Österreich");
    AddCategory("ÖSTERREICH");
    AddCategory("Osterreich");
    Check();
    EXPECT_EQ(Categories(), (Texts{"1|Österreich", "3|Osterreich"}));
}

TEST_F(CheckDatabaseTest, SeveralDoubledNamesAreRepairedAtOnceAndApostrophesAreQuoted) {
    AddCategory("Rock ''n'' Roll");
    AddCategory("Jazz");
    AddCategory("Jazz");
    AddCategory("rock ''n'' roll");
    Check();
    EXPECT_EQ(Categories(), (Texts{"1|Rock 'n' Roll", "2|Jazz"}));
}

TEST_F(CheckDatabaseTest, TheStatementsAreSentInTheirOrder) {
    for (const char* name : {"b''s", "a", "B''S", "A", "a"}) {
        AddCategory(name);
    }
    const RecordingConnection& recording = Record();
    Check();
    EXPECT_EQ(recording.statements,
              (Texts{"Select count(Category), Category from Categories Group By Category",
                     "Select Category_id from Categories where Category = 'a' Order By Category_id",
                     "Select Category_id from Categories where Category = 'b''s' Order By Category_id",
                     "Delete from Categories where Category_id in (5, 3)",
                     "Delete from FileCategories where Category_id in (5, 3)"}));
}

TEST_F(CheckDatabaseTest, ThePanelNamesEachStepBeforeItsStatements) {
    AddCategory("a");
    AddCategory("a");
    Record().onStatement = [this](const std::string& statement) {
        shown.push_back(statement.substr(0, statement.find(' ', statement.find(' ') + 1)));
    };
    events.onDoEvents = [this] { shown.push_back("events"); };
    Check();
    EXPECT_EQ(shown, (Texts{"panel 1: Prüfe Datenbank...", "events", "Select count(Category),",
                            "panel 1: Repariere Datenbank...", "events", "Select Category_id", "Delete from",
                            "Delete from"}));
}

TEST_F(CheckDatabaseTest, ThePanelShowsTheRepairBeforeAnythingIsDeleted) {
    AddCategory("a");
    AddCategory("a");
    std::vector<long> rowsAtEvents;
    events.onDoEvents = [&] { rowsAtEvents.push_back(Count("Select * from Categories")); };
    Check();
    EXPECT_EQ(rowsAtEvents, (std::vector<long>{2, 2}));
}

TEST_F(CheckDatabaseTest, AFailureOfTheSecondDeleteLeavesTheFirstInForce) {
    AddCategory("Rock");
    AddCategory("Rock");
    Execute("Drop table FileCategories");
    EXPECT_THROW(Check(), RuntimeError);
    EXPECT_EQ(Categories(), Texts{"1|Rock"});
}

} // namespace
} // namespace quavernet::test
