#include "tree/TreeDropTest.h"

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using TreeDragTest = TreeDropTest;

TEST_F(TreeDragTest, APressOnAnEntryRemembersIt) {
    FillDense();
    drag.GridDragging = true;
    connection.statements.clear();
    EXPECT_TRUE(TreePress(tree, "file102pos2", false, drag));
    EXPECT_TRUE(drag.DragFromTree);
    EXPECT_FALSE(drag.GridDragging);
    EXPECT_EQ(drag.DragText, "j2");
    EXPECT_EQ(drag.DragPosition, "2");
    EXPECT_EQ(drag.DragCategory, "Jazz");
    EXPECT_EQ(drag.DragFilePath, "/m/j2");
    EXPECT_EQ(tree.SelectedItem().Key, "file102pos2");
    EXPECT_THAT(
        connection.statements,
        ElementsAre("Select File_id from FileCategories where Parent = 'Jazz' and Filename = 'j2' and "
                    "[Position] = 2",
                    "Select Path from Files where File_id = 102"));
}

TEST_F(TreeDragTest, APressOnACategoryRemembersAPositionThatIsNone) {
    FillDense();
    drag.DragFilePath = "/m/before";
    EXPECT_TRUE(TreePress(tree, "CAT_Jazz", false, drag));
    EXPECT_EQ(drag.DragText, "Jazz (06:00)");
    EXPECT_EQ(drag.DragPosition, "T_Jazz");
    EXPECT_EQ(drag.DragCategory, "nt");
    EXPECT_EQ(drag.DragFilePath, "/m/before");
}

TEST_F(TreeDragTest, ACategoryWhoseNameHoldsTheMarkRemembersNoPositionEither) {
    AddCategory(1, "12pos3", "c", {});
    LoadTree(tree);
    TreePress(tree, "CAT_12pos3", false, drag);
    EXPECT_EQ(drag.DragPosition, "T_12pos3");
}

TEST_F(TreeDragTest, TheRootCanNotBeDragged) {
    FillDense();
    drag.DragCategory = "before";
    EXPECT_FALSE(TreePress(tree, "Parent", false, drag));
    EXPECT_TRUE(drag.DragFromTree);
    EXPECT_EQ(drag.DragText, "Bibliothek");
    EXPECT_EQ(drag.DragPosition, "rent");
    EXPECT_EQ(drag.DragCategory, "before") << "it has no parent";
    EXPECT_FALSE(TreeStartDrag(tree, drag));
}

TEST_F(TreeDragTest, ARightPressMarksTheTreeAndArmsNoDrag) {
    FillDense();
    Press("file101pos1");
    drag.GridDragging = true;
    EXPECT_FALSE(TreePress(tree, "file102pos2", true, drag));
    EXPECT_TRUE(drag.DragFromTree);
    EXPECT_FALSE(drag.GridDragging);
    EXPECT_EQ(drag.DragText, "j1");
    EXPECT_EQ(tree.SelectedItem().Key, "file101pos1");
    TreeRelease(drag);
    EXPECT_FALSE(drag.DragFromTree);
    EXPECT_EQ(drag.DragText, "j1");
}

TEST_F(TreeDragTest, APressWhereNoNodeIsKeepsWhatWasRemembered) {
    FillDense();
    EXPECT_FALSE(TreePress(tree, "", false, drag)) << "nothing is selected";
    Press("file101pos1");
    EXPECT_TRUE(TreePress(tree, "", false, drag));
    EXPECT_EQ(drag.DragText, "j1");
    EXPECT_EQ(tree.SelectedItem().Key, "file101pos1");
}

TEST_F(TreeDragTest, AnEntryWhoseFileIsNotFoundKeepsThePathBefore) {
    FillDense();
    Execute("Update Files Set Name = 'new' where File_id = 102");
    LoadTree(tree);
    Press("file101pos1");
    EXPECT_TRUE(TreePress(tree, "file102pos2", false, drag));
    EXPECT_EQ(drag.DragFilePath, "/m/j1");
    EXPECT_EQ(drag.DragText, "new");
    const auto payload = TreeStartDrag(tree, drag);
    ASSERT_TRUE(payload);
    EXPECT_THAT(payload->Files, IsEmpty()) << "the drag goes on without a file";
    EXPECT_EQ(payload->Text, "file102pos2");
}

TEST_F(TreeDragTest, AnEntryOffersItsKeyAndItsFile) {
    FillDense();
    Press("file102pos2");
    connection.statements.clear();
    const auto payload = TreeStartDrag(tree, drag);
    ASSERT_TRUE(payload);
    EXPECT_EQ(payload->Text, "file102pos2");
    EXPECT_THAT(payload->Files, ElementsAre("/m/j2"));
    EXPECT_THAT(
        connection.statements,
        ElementsAre("Select File_id from FileCategories where Parent = 'Jazz' and Filename = 'j2' and "
                    "[Position] = 2",
                    "Select Path from Files where File_id = 102"));
}

TEST_F(TreeDragTest, ACategoryOffersItsFilesInTheOrderOfItsEntries) {
    FillGapped();
    Press("CAT_Blues");
    const auto payload = TreeStartDrag(tree, drag);
    ASSERT_TRUE(payload);
    EXPECT_EQ(payload->Text, "");
    EXPECT_THAT(payload->Files, ElementsAre("/m/b1", "/m/b2", "/m/b3"));
    EXPECT_EQ(drag.DragFilePath, "/m/b3");
}

TEST_F(TreeDragTest, AnEmptyCategoryOffersNoFile) {
    FillDense();
    Press("CAT_Empty");
    const auto payload = TreeStartDrag(tree, drag);
    ASSERT_TRUE(payload);
    EXPECT_THAT(payload->Files, IsEmpty());
}

TEST_F(TreeDragTest, ACategoryPassesOverEntriesWhoseFileIsNotFound) {
    FillDense();
    Execute("Update Files Set Name = 'new' where File_id = 202");
    LoadTree(tree);
    Press("CAT_Blues");
    EXPECT_THAT(TreeStartDrag(tree, drag)->Files, ElementsAre("/m/b1", "/m/b3"));
}

TEST_F(TreeDragTest, ACategoryThatShowsAnothersTextOffersItsFilesToo) {
    AddCategory(1, "Jazz", "j", {1});
    AddCategory(2, "Jazz (01:00)", "e", {});
    LoadTree(tree);
    Press("CAT_Jazz (01:00)");
    EXPECT_THAT(TreeStartDrag(tree, drag)->Files, ElementsAre("/m/j1"));
}

TEST_F(TreeDragTest, ACategoryNamedLikeTheRootOffersNoFileOfOthers) {
    AddCategory(1, "Bibliothek", "x", {});
    AddCategory(2, "Jazz", "j", {1});
    LoadTree(tree);
    Press("CAT_Bibliothek");
    EXPECT_THAT(TreeStartDrag(tree, drag)->Files, IsEmpty());
}

TEST_F(TreeDragTest, NoDragStartsWithoutASelectionOrWhileAScanRuns) {
    FillDense();
    EXPECT_FALSE(TreeStartDrag(tree, drag));
    Press("file102pos2");
    mainModule.ScanRunning = true;
    EXPECT_FALSE(TreeStartDrag(tree, drag));
}

} // namespace
} // namespace quavernet::test
