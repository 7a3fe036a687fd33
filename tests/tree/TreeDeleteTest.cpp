#include "tree/TreeDelete.h"

#include "support/TreeLibraryTest.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TreeDeleteTest : public TreeLibraryTest {
protected:
    void Delete() { mnuDelete_Click(tree, views); }
    void DeleteContent() { mnuDeleteContent_Click(tree, views); }
    void AnswerYes() { msgBox.answers.push_back(MsgBox::Answer::Yes); }
    static ShownBox Question(const std::string& warning) {
        return {warning + "\nMöchten Sie fortfahren?", "Löschen bestätigen", MsgBox::Icon::Question,
                MsgBox::Buttons::YesNo};
    }
};

TEST_F(TreeDeleteTest, AnEntryGoesAndTheOnesAfterItMoveUp) {
    AddCategory("Jazz", {"a.mp3", "b.mp3", "c.mp3", "d.mp3"});
    LoadAndSelect("file2pos2");
    Delete();
    EXPECT_THAT(
        connection.statements,
        ElementsAre("Select File_id from FileCategories where Parent = 'Jazz' and Filename = 'b.mp3' and "
                    "[Position] = 2",
                    "Select C.Category_id from Files F, Categories C  where F.File_id = 2 and C.Category = "
                    "'Jazz'",
                    "Select File_id from FileCategories where Parent = 'Jazz' and Filename = 'b.mp3' and "
                    "[Position] = 2",
                    "Delete from FileCategories where File_id = 2 and Category_id = 1 and [Position] = 2",
                    "Update FileCategories set [Position] = [Position]- 1 where [Position] > 2  and "
                    "Category_id = 1"));
    EXPECT_THAT(calls, ElementsAre("tree"));
    EXPECT_THAT(Entries(), ElementsAre("1|a.mp3|Jazz", "2|c.mp3|Jazz", "3|d.mp3|Jazz"));
    EXPECT_EQ(Value("Select Count(*) from Files"), "4");
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(TreeDeleteTest, OtherCategoriesKeepTheirPositions) {
    AddCategory("Jazz", {"a.mp3", "b.mp3"});
    AddCategory("Rock", {"c.mp3", "d.mp3"});
    LoadAndSelect("file1pos1");
    Delete();
    EXPECT_THAT(Entries(), ElementsAre("1|b.mp3|Jazz", "1|c.mp3|Rock", "2|d.mp3|Rock"));
}

TEST_F(TreeDeleteTest, OneOfTwoEntriesOfAFileGoes) {
    AddCategory("Jazz", {"a.mp3", "b.mp3"});
    AddEntry("1", "1", 3, "Jazz", "a.mp3");
    LoadAndSelect("file1pos1");
    Delete();
    EXPECT_THAT(Entries(), ElementsAre("1|b.mp3|Jazz", "2|a.mp3|Jazz"));
}

TEST_F(TreeDeleteTest, AnEntryWithAnApostropheGoes) {
    AddFile("it''s.mp3");
    AddCategory("Jazz");
    AddEntry("1", "1", 1, "Jazz", "it''s.mp3");
    LoadAndSelect("file1pos1");
    Delete();
    EXPECT_THAT(Entries(), IsEmpty());
}

TEST_F(TreeDeleteTest, AnEntryWhoseFileWasRenamedStaysWithoutAWord) {
    AddCategory("Jazz", {"a.mp3", "b.mp3"});
    Execute("Update Files Set Name = 'new.mp3' where File_id = 1");
    LoadAndSelect("file1pos1");
    Delete();
    EXPECT_THAT(Entries(), ElementsAre("1|a.mp3|Jazz", "2|b.mp3|Jazz"));
    EXPECT_THAT(calls, IsEmpty()) << "nothing is built again after a failure";
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(TreeDeleteTest, APositionBeyond16BitsEndsTheCommandBeforeAnyStatement) {
    AddCategory("Jazz", {"a.mp3"});
    Execute("Update FileCategories Set [Position] = 32768");
    LoadAndSelect("file1pos32768");
    Delete();
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_THAT(calls, IsEmpty());
    Execute("Update FileCategories Set [Position] = 32767");
    LoadAndSelect("file1pos32767");
    Delete();
    EXPECT_THAT(Entries(), IsEmpty());
}

TEST_F(TreeDeleteTest, AnEntryWithoutAPositionEndsTheCommand) {
    AddCategory("Jazz", {"a.mp3", "b.mp3"});
    Execute("Update FileCategories Set [Position] = null where File_id = 1");
    LoadAndSelect("file1pos");
    Delete();
    EXPECT_THAT(connection.statements, IsEmpty());
}

TEST_F(TreeDeleteTest, AFailureAfterTheFirstStatementLeavesWhatWasWritten) {
    AddCategory("Jazz", {"a.mp3", "b.mp3"});
    LoadAndSelect("file1pos1");
    connection.failOn = "Update FileCategories";
    Delete();
    EXPECT_THAT(Entries(), ElementsAre("2|b.mp3|Jazz"));
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(TreeDeleteTest, ACategoryGoesWithItsEntriesAndIsNoLongerRememberedAsExpanded) {
    AddCategory("Jazz", {"a.mp3"});
    AddCategory("Rock", {"b.mp3"});
    mainModule.TreeNodeData.Add("CAT_Jazz");
    mainModule.TreeNodeData.Add("CAT_Rock");
    LoadAndSelect("CAT_Jazz");
    Delete();
    EXPECT_THAT(connection.statements,
                ElementsAre("Select Category_id from Categories where Category = 'Jazz'",
                            "Delete from FileCategories where Category_id = 1",
                            "Delete from Categories where Category_id = 1",
                            "Delete from Categories where Category_id = 1"));
    EXPECT_THAT(calls, ElementsAre("tree"));
    EXPECT_THAT(Categories(), ElementsAre("Rock"));
    EXPECT_THAT(Entries(), ElementsAre("1|b.mp3|Rock"));
    EXPECT_THAT(mainModule.TreeNodeData.Keys(), ElementsAre("CAT_Rock"));
    EXPECT_NO_THROW(LoadTree(tree));
    EXPECT_EQ(Value("Select Count(*) from Files"), "2");
}

TEST_F(TreeDeleteTest, TheMemoryOfAnExpandedCategoryGoesBeforeTheTreeIsBuilt) {
    AddCategory("Jazz", {"a.mp3"});
    mainModule.TreeNodeData.Add("CAT_Jazz");
    LoadAndSelect("CAT_Jazz");
    std::vector<std::string> remembered{"unasked"};
    views.onLoadTree = [&] { remembered = mainModule.TreeNodeData.Keys(); };
    Delete();
    EXPECT_THAT(remembered, IsEmpty());
}

TEST_F(TreeDeleteTest, ADeleteOfACategoryThatFailsHalfWayKeepsItRememberedAsExpanded) {
    AddCategory("Jazz", {"a.mp3"});
    mainModule.TreeNodeData.Add("CAT_Jazz");
    LoadAndSelect("CAT_Jazz");
    connection.failOn = "Delete from Categories";
    Delete();
    EXPECT_THAT(Entries(), IsEmpty());
    EXPECT_THAT(Categories(), ElementsAre("Jazz"));
    EXPECT_THAT(mainModule.TreeNodeData.Keys(), ElementsAre("CAT_Jazz"));
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(TreeDeleteTest, ACategoryThatIsGoneEndsTheCommandSilently) {
    AddCategory("Jazz", {"a.mp3"});
    LoadAndSelect("CAT_Jazz");
    Execute("Update Categories Set Category = 'Rock'");
    Delete();
    EXPECT_THAT(Entries(), ElementsAre("1|a.mp3|Jazz"));
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(TreeDeleteTest, ACategoryWithAnApostropheIsNeverSent) {
    AddCategory("it''s");
    AddCategory("it''''s");
    for (const char* key : {"CAT_it's", "CAT_it''s"}) {
        LoadAndSelect(key);
        Delete();
        EXPECT_THAT(connection.statements, IsEmpty()) << key;
    }
    EXPECT_EQ(Categories().size(), 2U);
}

TEST_F(TreeDeleteTest, NeitherTheRootNorNothingIsDeleted) {
    AddCategory("Jazz", {"a.mp3"});
    LoadAndSelect("Parent");
    Delete();
    tree = TreeModel();
    Delete();
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(TreeDeleteTest, AFailingLoadOfTheTreeEndsTheCommandSilentlyToo) {
    AddCategory("Jazz", {"a.mp3"});
    LoadAndSelect("CAT_Jazz");
    views.onLoadTree = [] { throw RuntimeError(35601, "Element not found"); };
    EXPECT_NO_THROW(Delete());
    AnswerYes();
    tree.Select("Parent");
    EXPECT_NO_THROW(DeleteContent());
}

TEST_F(TreeDeleteTest, TheContentOfACategoryWithALengthStaysAfterTheQuestion) {
    AddCategory("Jazz", {"a.mp3"});
    LoadAndSelect("CAT_Jazz");
    AnswerYes();
    DeleteContent();
    EXPECT_THAT(msgBox.shown, ElementsAre(Question("Der gesamte Inhalt dieser Kategorie wird gelöscht!")));
    EXPECT_THAT(connection.statements, IsEmpty()) << "the shown text is not the name";
    EXPECT_THAT(calls, ElementsAre("tree"));
    EXPECT_THAT(Entries(), ElementsAre("1|a.mp3|Jazz"));
}

TEST_F(TreeDeleteTest, TheContentOfACategoryShownWithItsBareNameIsSentEntryByEntry) {
    AddCategory("Rock", {"z.mp3"});
    AddCategory("Jazz", {"a.mp3", "it''s.mp3"});
    Execute("Update FileCategories Set Parent = 'Rock'"); // Their length counts there.
    LoadAndSelect("CAT_Jazz");
    AnswerYes();
    DeleteContent();
    EXPECT_THAT(connection.statements,
                ElementsAre("Delete from FileCategories where FileName = 'a.mp3' and Parent = 'Jazz'",
                            "Delete from FileCategories where FileName = 'it''s.mp3' and Parent = 'Jazz'"));
    EXPECT_THAT(calls, ElementsAre("tree"));
    EXPECT_EQ(Entries().size(), 3U);
}

TEST_F(TreeDeleteTest, TheNameOfTheEmptiedCategoryIsQuoted) {
    AddCategory("Rock", {"z.mp3"});
    AddCategory("it''s", {"a.mp3"});
    Execute("Update FileCategories Set Parent = 'Rock'");
    LoadAndSelect("CAT_it's");
    AnswerYes();
    DeleteContent();
    EXPECT_THAT(connection.statements,
                ElementsAre("Delete from FileCategories where FileName = 'a.mp3' and Parent = 'it''s'"));
}

TEST_F(TreeDeleteTest, ACategoryNamedLikeTheRootTakesTheCategoriesForItsEntries) {
    AddCategory("Bibliothek", {"a.mp3"});
    AddCategory("Rock");
    LoadAndSelect("CAT_Bibliothek");
    AnswerYes();
    DeleteContent();
    EXPECT_THAT(
        connection.statements,
        ElementsAre(
            "Delete from FileCategories where FileName = 'Bibliothek (01:00)' and Parent = 'Bibliothek'",
            "Delete from FileCategories where FileName = 'Rock' and Parent = 'Bibliothek'"));
    EXPECT_EQ(Entries().size(), 1U);
}

TEST_F(TreeDeleteTest, AnEmptyCategoryIsNotAskedAboutAndTheTreeIsBuiltAllTheSame) {
    AddCategory("Jazz");
    LoadAndSelect("CAT_Jazz");
    DeleteContent();
    EXPECT_THAT(msgBox.shown, IsEmpty());
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_THAT(calls, ElementsAre("tree"));
}

TEST_F(TreeDeleteTest, OnAnEntryNothingIsAskedAndTheTreeIsBuiltAllTheSame) {
    AddCategory("Jazz", {"a.mp3"});
    LoadAndSelect("file1pos1");
    DeleteContent();
    EXPECT_THAT(msgBox.shown, IsEmpty());
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_THAT(calls, ElementsAre("tree"));
}

TEST_F(TreeDeleteTest, ANoAboutACategoryStillBuildsTheTree) {
    AddCategory("Rock", {"z.mp3"});
    AddCategory("Jazz", {"a.mp3"});
    Execute("Update FileCategories Set Parent = 'Rock'");
    LoadAndSelect("CAT_Jazz");
    DeleteContent();
    EXPECT_EQ(msgBox.shown.size(), 1U);
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_THAT(calls, ElementsAre("tree"));
}

TEST_F(TreeDeleteTest, TheWholeTreeGoesAndItsExpandedCategoriesAreStillRemembered) {
    AddCategory("Jazz", {"a.mp3"});
    AddCategory("Rock");
    mainModule.TreeNodeData.Add("CAT_Jazz");
    LoadAndSelect("Parent");
    AnswerYes();
    DeleteContent();
    EXPECT_THAT(msgBox.shown, ElementsAre(Question("Der gesamte Inhalt des Baumes wird gelöscht!")));
    EXPECT_THAT(connection.statements, ElementsAre("Delete from FileCategories", "Delete from Categories"));
    EXPECT_THAT(calls, ElementsAre("tree"));
    EXPECT_THAT(Entries(), IsEmpty());
    EXPECT_THAT(Categories(), IsEmpty());
    EXPECT_EQ(Value("Select Count(*) from Files"), "1");
    EXPECT_THROW(LoadTree(tree), RuntimeError) << "Jazz is to be expanded";
}

TEST_F(TreeDeleteTest, ANoAboutTheWholeTreeChangesNothingAndBuildsNothing) {
    AddCategory("Jazz", {"a.mp3"});
    LoadAndSelect("Parent");
    DeleteContent();
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_EQ(msgBox.shown.size(), 1U);
}

TEST_F(TreeDeleteTest, AnEmptyTreeIsAskedAboutLikeAFullOne) {
    LoadAndSelect("Parent");
    AnswerYes();
    DeleteContent();
    EXPECT_EQ(msgBox.shown.size(), 1U);
    EXPECT_THAT(calls, ElementsAre("tree"));
}

TEST_F(TreeDeleteTest, AFailingStatementEndsTheEmptyingSilently) {
    AddCategory("Jazz", {"a.mp3"});
    LoadAndSelect("Parent");
    AnswerYes();
    connection.failOn = "Delete from Categories";
    DeleteContent();
    EXPECT_THAT(Entries(), IsEmpty()) << "what was written stays";
    EXPECT_THAT(Categories(), ElementsAre("Jazz"));
    EXPECT_THAT(calls, IsEmpty());
}

/// A user who does something else while the box is up.
class BusyMsgBox : public MsgBox {
public:
    explicit BusyMsgBox(std::function<void()> meanwhile) : m_meanwhile(std::move(meanwhile)) {}
    Answer Show(const std::string&, const std::string&, Icon, Buttons) override {
        m_meanwhile();
        return Answer::Yes;
    }

private:
    std::function<void()> m_meanwhile;
};

TEST_F(TreeDeleteTest, TheTreeMayBeBuiltAgainWhileTheQuestionIsUp) {
    AddCategory("Jazz", {"a.mp3", "b.mp3"});
    AddCategory("Rock", {"z.mp3"});
    Execute("Update FileCategories Set Parent = 'Rock'");
    LoadAndSelect("CAT_Jazz");
    BusyMsgBox busy([&] { LoadTree(tree); });
    services.msgBox = &busy;
    DeleteContent();
    EXPECT_EQ(connection.StatementsOf("Delete from FileCategories").size(), 2U);
    tree.Select("Parent");
    DeleteContent();
    EXPECT_THAT(Categories(), IsEmpty());
}

} // namespace
} // namespace quavernet::test
