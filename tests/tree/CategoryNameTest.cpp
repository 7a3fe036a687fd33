#include "tree/CategoryName.h"

#include "support/TreeLibraryTest.h"

#include "platform/LibraryError.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CategoryNameTest : public TreeLibraryTest {
protected:
    CategoryNameTest() {
        AddFile("a.mp3");
        AddFile("it''s.mp3");
        AddCategory("Jazz");
        connection.statements.clear();
    }
    CategoryFinish Finish(const std::string& name, const std::vector<std::string>& files = {"/m/a.mp3"}) {
        return FinishCategory(name, files, views);
    }
};

TEST_F(CategoryNameTest, TheFilesBecomeEntriesInTheirOrder) {
    EXPECT_EQ(Finish("Party", {"/m/it's.mp3", "/m/a.mp3"}), CategoryFinish::Made);
    EXPECT_THAT(
        connection.statements,
        ElementsAre(
            "Select Category_id, Category from Categories where Category = 'Party'",
            "Insert into Categories (Category) values ('Party')",
            "Select Category_id, Category from Categories Order by Category_id",
            "Select File_id, Name from Files where Path = '/m/it''s.mp3'",
            "Insert Into FileCategories (File_id, Category_ID, Filename, [Position], Parent) values (2, 2, "
            "'it''s.mp3', 1, 'Party')",
            "Select File_id, Name from Files where Path = '/m/a.mp3'",
            "Insert Into FileCategories (File_id, Category_ID, Filename, [Position], Parent) values (1, 2, "
            "'a.mp3', 2, 'Party')"));
    EXPECT_THAT(calls, ElementsAre("tree"));
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(CategoryNameTest, AFileThatTheLibraryDoesNotKnowLeavesAGap) {
    Finish("Party", {"/m/a.mp3", "/m/unknown.mp3", "/m/it's.mp3"});
    EXPECT_THAT(Entries(), ElementsAre("1|a.mp3|Party", "3|it's.mp3|Party"));
}

TEST_F(CategoryNameTest, AnEmptyListMakesAnEmptyCategory) {
    EXPECT_EQ(Finish("Party", {}), CategoryFinish::Made);
    EXPECT_THAT(Categories(), ElementsAre("Jazz", "Party"));
    EXPECT_THAT(calls, ElementsAre("tree"));
}

TEST_F(CategoryNameTest, AnEmptyNameIsRefused) {
    EXPECT_EQ(Finish(""), CategoryFinish::NameMissing);
    EXPECT_THAT(msgBox.shown, ElementsAre(ShownBox{"Bitte geben Sie einen Namen für die Kategorie ein!",
                                                   "Fertigstellen nicht möglich", MsgBox::Icon::Information,
                                                   MsgBox::Buttons::Ok}));
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(CategoryNameTest, ANameThatExistsIsRefusedInAnySpellingByCase) {
    for (const char* name : {"Jazz", "JAZZ"}) {
        msgBox.shown.clear();
        EXPECT_EQ(Finish(name), CategoryFinish::Duplicate);
        EXPECT_THAT(msgBox.shown, ElementsAre(ShownBox{"Es dürfen keine doppelten Einträge vorhanden sein!",
                                                       "Speichern abgebrochen", MsgBox::Icon::Critical,
                                                       MsgBox::Buttons::Ok}));
    }
    EXPECT_THAT(Categories(), ElementsAre("Jazz"));
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(CategoryNameTest, ANameWithAnApostropheIsLookedUpAndThenRefusedWithTheReason) {
    for (const char* name : {"it's", "it''s"}) {
        msgBox.shown.clear();
        connection.statements.clear();
        EXPECT_EQ(Finish(name), CategoryFinish::NameRefused);
        EXPECT_EQ(connection.statements.size(), 1U);
        ASSERT_EQ(msgBox.shown.size(), 1U);
        EXPECT_EQ(msgBox.shown[0].text,
                  "Fehler: 1 - Syntax error: an apostrophe in an unquoted text: " + std::string(name));
        EXPECT_EQ(msgBox.shown[0].title, "Speichern abgebrochen");
        EXPECT_EQ(msgBox.shown[0].icon, MsgBox::Icon::Critical);
    }
    EXPECT_THAT(connection.statements,
                ElementsAre("Select Category_id, Category from Categories where Category = 'it''''s'"));
    EXPECT_THAT(Categories(), ElementsAre("Jazz"));
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(CategoryNameTest, ATroubleOfTheLibraryIsNoRefusal) {
    connection.onStatement = [](const std::string&) {
        throw LibraryError(LibraryFault::DiskFull, "Quavernet.db", 13, "full");
    };
    EXPECT_THROW(Finish("Party"), LibraryError);
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(CategoryNameTest, AFailureToReadTheNewRowIsNoRefusalEither) {
    connection.failOn = "Select Category_id, Category from Categories Order by Category_id";
    EXPECT_THROW(Finish("Party"), RuntimeError);
    EXPECT_THAT(msgBox.shown, IsEmpty());
    EXPECT_THAT(Categories(), ElementsAre("Jazz", "Party"));
}

TEST_F(CategoryNameTest, TheNewRowHasTheHighestKeyAlsoAfterTheHighestOneWasDeleted) {
    AddCategory("Gone");
    Execute("Delete from Categories where Category = 'Gone'");
    EXPECT_EQ(Finish("Party"), CategoryFinish::Made);
    EXPECT_EQ(Value("Select Category_id from FileCategories"), "3");
    EXPECT_EQ(Value("Select Category_id from Categories where Category = 'Party'"), "3");
}

TEST_F(CategoryNameTest, AFailureAfterTheNameIsOneOfTheProgramAndKeepsWhatWasWritten) {
    connection.failOn = "Insert Into FileCategories";
    EXPECT_THROW(Finish("Party"), RuntimeError);
    EXPECT_THAT(Categories(), ElementsAre("Jazz", "Party"));
    EXPECT_THAT(calls, IsEmpty());
}

} // namespace
} // namespace quavernet::test
