#include "tree/CategoryEditor.h"

#include "app/LoadResString.h"
#include "support/TreeLibraryTest.h"
#include "tree/NameFilter.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CategoryEditorTest : public TreeLibraryTest {
protected:
    /// What is enabled: the field with its button, cmdNew, the two buttons for a category.
    static std::string Enabled(const CategoryEditor& editor) {
        return std::string(editor.CanType() ? "type " : "") + (editor.CanNew() ? "new " : "") +
               (editor.CanEditOrDelete() ? "change" : "");
    }
    /// An editor of the categories A, B and C; statements are noted from here on.
    CategoryEditor OfThree() {
        for (const char* name : {"A", "B", "C"}) {
            AddCategory(name);
        }
        CategoryEditor editor;
        connection.statements.clear();
        return editor;
    }
    static std::string Refusal(const std::optional<std::int32_t>& text) {
        return text ? LoadResString(*text) : std::string("none");
    }
};

TEST_F(CategoryEditorTest, TheListHoldsTheCategoriesAndBeginsIdle) {
    const CategoryEditor editor = OfThree();
    EXPECT_THAT(editor.Categories(), ElementsAre("A", "B", "C"));
    EXPECT_EQ(editor.ListIndex(), CategoryEditor::None);
    EXPECT_EQ(editor.ListText(), "");
    EXPECT_EQ(Enabled(editor), "new ");
    EXPECT_EQ(editor.EditText(), "");
}

TEST_F(CategoryEditorTest, TheListIsAskedForWithoutAnOrder) {
    connection.statements.clear();
    const CategoryEditor editor;
    EXPECT_THAT(connection.statements, ElementsAre("Select Category from Categories"));
}

TEST_F(CategoryEditorTest, ASelectedCategoryCanBeEditedAndDeleted) {
    CategoryEditor editor = OfThree();
    editor.ListClick(1);
    EXPECT_EQ(editor.ListText(), "B");
    EXPECT_EQ(Enabled(editor), "new change");
    editor.cmdEdit_Click();
    EXPECT_EQ(Enabled(editor), "type ");
    EXPECT_EQ(editor.EditText(), "B");
    editor.ListClick(2);
    EXPECT_EQ(Enabled(editor), "type change") << "a selection by the keyboard";
}

TEST_F(CategoryEditorTest, APressInTheListDropsWhatIsTyped) {
    CategoryEditor editor = OfThree();
    editor.ListClick(1);
    editor.cmdEdit_Click();
    editor.ListMouseDown();
    EXPECT_EQ(Enabled(editor), "new change");
    EXPECT_EQ(editor.EditText(), "");
    EXPECT_THAT(connection.statements, IsEmpty());
}

TEST_F(CategoryEditorTest, ANewCategoryIsStoredAndListed) {
    CategoryEditor editor = OfThree();
    editor.cmdNew_Click();
    EXPECT_EQ(Enabled(editor), "type ");
    editor.cmdSave_Click("Big Band 2");
    EXPECT_THAT(connection.statements, ElementsAre("Insert Into Categories (Category) values ('Big Band 2')",
                                                   "Select Category from Categories"));
    EXPECT_EQ(Enabled(editor), "new change");
    EXPECT_EQ(editor.EditText(), "");
    EXPECT_EQ(editor.ListIndex(), CategoryEditor::None);
    EXPECT_EQ(Categories().back(), "Big Band 2");
    EXPECT_EQ(editor.Categories().size(), 4U);
}

TEST_F(CategoryEditorTest, TheLastCategoryGetsTheNewNameWhicheverWasChosen) {
    CategoryEditor editor = OfThree();
    AddFile("a.mp3");
    AddEntry("1", "1", 1, "A", "a.mp3");
    AddEntry("1", "3", 1, "C", "a.mp3");
    connection.statements.clear();
    editor.ListClick(0);
    editor.cmdEdit_Click();
    EXPECT_EQ(editor.EditText(), "A");
    editor.cmdSave_Click("D");
    EXPECT_THAT(connection.statements,
                ElementsAre("Update FileCategories set Parent = 'D' where Parent = 'C'",
                            "Update Categories set Category = 'D' where Category = 'C'",
                            "Select Category from Categories"));
    EXPECT_THAT(Categories(), ElementsAre("A", "B", "D"));
    EXPECT_THAT(Entries(), ElementsAre("1|a.mp3|A", "1|a.mp3|D"));
}

TEST_F(CategoryEditorTest, AnEmptyNameIsRefusedBeforeTheListIsWalked) {
    CategoryEditor editor = OfThree();
    editor.cmdNew_Click();
    EXPECT_EQ(Refusal(editor.cmdSave_Click("")), "Bitte geben Sie einen Namen ein!");
    EXPECT_EQ(editor.ListIndex(), CategoryEditor::None);
    EXPECT_EQ(Enabled(editor), "type ");
    EXPECT_THAT(connection.statements, IsEmpty());
}

TEST_F(CategoryEditorTest, ANameThatExistsIsRefusedAndItsCategoryIsSelected) {
    CategoryEditor editor = OfThree();
    editor.cmdNew_Click();
    EXPECT_EQ(Refusal(editor.cmdSave_Click("B")), "Es dürfen keine doppelten Einträge vorhanden sein!");
    EXPECT_EQ(editor.ListIndex(), 1);
    EXPECT_EQ(Enabled(editor), "type ");
    EXPECT_THAT(connection.statements, IsEmpty());
}

TEST_F(CategoryEditorTest, AnUnchangedNameIsRefusedToo) {
    CategoryEditor editor = OfThree();
    editor.ListClick(2);
    editor.cmdEdit_Click();
    EXPECT_EQ(Refusal(editor.cmdSave_Click(editor.EditText())), LoadResString(338));
    EXPECT_THAT(connection.statements, IsEmpty());
}

TEST_F(CategoryEditorTest, AnotherSpellingByCaseIsAnotherName) {
    CategoryEditor editor = OfThree();
    editor.cmdNew_Click();
    EXPECT_EQ(Refusal(editor.cmdSave_Click("b")), "none");
    EXPECT_THAT(Categories(), ElementsAre("A", "B", "C", "b"));
}

TEST_F(CategoryEditorTest, ACategoryIsDeletedWithItsEntriesAndTheFirstOneIsSelected) {
    CategoryEditor editor = OfThree();
    AddFile("a.mp3");
    AddEntry("1", "2", 1, "B", "a.mp3");
    mainModule.TreeNodeData.Add("CAT_B");
    connection.statements.clear();
    editor.ListClick(1);
    editor.cmdDelete_Click();
    EXPECT_THAT(connection.statements, ElementsAre("Select Category_id from Categories where Category = 'B'",
                                                   "Delete from FileCategories where Category_id = 2",
                                                   "Delete from Categories where Category_id = 2",
                                                   "Select Category from Categories"));
    EXPECT_THAT(editor.Categories(), ElementsAre("A", "C"));
    EXPECT_EQ(editor.ListIndex(), 0);
    EXPECT_THAT(Entries(), IsEmpty());
    EXPECT_THAT(mainModule.TreeNodeData.Keys(), ElementsAre("CAT_B")) << "not the editor's business";
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(CategoryEditorTest, WithTheLastCategoryNothingIsLeftToDelete) {
    AddCategory("A");
    CategoryEditor editor;
    editor.ListClick(0);
    editor.cmdDelete_Click();
    EXPECT_THAT(editor.Categories(), IsEmpty());
    EXPECT_EQ(editor.ListIndex(), CategoryEditor::None);
    connection.statements.clear();
    editor.cmdDelete_Click();
    EXPECT_THAT(connection.statements, IsEmpty());
}

TEST_F(CategoryEditorTest, EditingWithoutASelectionBeginsWithAnEmptyField) {
    CategoryEditor editor = OfThree();
    editor.ListMouseDown();
    editor.cmdEdit_Click();
    EXPECT_EQ(editor.EditText(), "");
    EXPECT_EQ(Enabled(editor), "type ");
}

TEST_F(CategoryEditorTest, AnEditInAnEmptyListWritesNothing) {
    CategoryEditor editor;
    editor.ListMouseDown();
    editor.cmdEdit_Click();
    editor.cmdSave_Click("D");
    EXPECT_THAT(Categories(), IsEmpty());
}

TEST_F(CategoryEditorTest, TheTreesCategoryIsEditedByItsName) {
    CategoryEditor editor = OfThree();
    editor.EditCategory("B");
    EXPECT_EQ(editor.ListIndex(), 1);
    EXPECT_EQ(editor.EditText(), "B");
    EXPECT_EQ(Enabled(editor), "type ");
    editor.EditCategory("gone");
    EXPECT_EQ(editor.ListText(), "C") << "the walk ends on the last one";
}

TEST_F(CategoryEditorTest, ANameWithAnApostropheIsAFailureAndIsNeverSent) {
    AddCategory("it''''s");
    CategoryEditor editor;
    connection.statements.clear();
    editor.cmdNew_Click();
    EXPECT_THROW(editor.cmdSave_Click("it''s so"), RuntimeError);
    editor.ListClick(0);
    editor.cmdEdit_Click();
    EXPECT_THROW(editor.cmdSave_Click("Its"), RuntimeError) << "the old name goes in unquoted as well";
    EXPECT_THROW(editor.cmdDelete_Click(), RuntimeError);
    EXPECT_THAT(connection.statements, IsEmpty());
}

TEST_F(CategoryEditorTest, AFailingStatementIsAFailureOfTheProgram) {
    CategoryEditor editor = OfThree();
    connection.failOn = "Update Categories";
    editor.ListClick(0);
    editor.cmdEdit_Click();
    EXPECT_THROW(editor.cmdSave_Click("D"), RuntimeError);
    connection.failOn = "Delete from FileCategories";
    EXPECT_THROW(editor.cmdDelete_Click(), RuntimeError);
    EXPECT_THAT(Categories(), ElementsAre("A", "B", "C"));
    EXPECT_THAT(editor.Categories(), ElementsAre("A", "B", "C"));
}

TEST_F(CategoryEditorTest, DeletingACategoryThatIsGoneIsAFailure) {
    CategoryEditor editor = OfThree();
    editor.ListClick(0);
    Execute("Delete from Categories");
    EXPECT_THROW(editor.cmdDelete_Click(), RuntimeError);
}

TEST(NameFilterTest, OnlyBlankDigitsAsciiLettersAndCharactersAbove255Pass) {
    for (char32_t code = 0; code <= 255; ++code) {
        const bool passes = code == 32 || (code >= 48 && code <= 57) || (code >= 65 && code <= 90) ||
                            (code >= 97 && code <= 122);
        EXPECT_EQ(IsNameCharacter(code), passes) << static_cast<std::uint32_t>(code);
    }
    EXPECT_TRUE(IsNameCharacter(256));
    EXPECT_TRUE(IsNameCharacter(U'Ł'));
    EXPECT_TRUE(IsNameCharacter(0x1F3B5));
}

} // namespace
} // namespace quavernet::test
