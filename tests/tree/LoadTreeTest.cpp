#include "tree/LoadTree.h"

#include "library/SqlQuote.h"
#include "support/RecordingConnection.h"
#include "support/TestLibrary.h"
#include "tree/NodeKey.h"
#include "tree/TreeEvents.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;

class LoadTreeTest : public LibraryTest {
protected:
    LoadTreeTest() : connection(RecordingConnection::Install()) {}

    void AddFile(int id, const std::string& name, const std::string& length = "0") {
        Execute("Insert into Files (File_id, Name, Path, Length) values (" + std::to_string(id) + ", '" +
                name + "', '/m/" + name + "', " + length + ")");
    }
    void AddCategory(int id, const std::string& name) {
        Execute("Insert into Categories (Category_id, Category) values (" + std::to_string(id) + ", '" +
                name + "')");
    }
    void AddEntry(int id, int file, int category, int position, const std::string& parent,
                  const std::string& filename) {
        Execute("Insert into FileCategories (FileCategory_id, File_id, Category_id, [Position], Parent, "
                "Filename) "
                "values (" +
                std::to_string(id) + ", " + std::to_string(file) + ", " + std::to_string(category) + ", " +
                std::to_string(position) + ", '" + parent + "', '" + filename + "')");
    }
    /// Two categories; "Jazz" holds b.mp3 and a.mp3 in this order.
    void FillJazz() {
        AddFile(1, "a.mp3", "65");
        AddFile(2, "b.mp3", "60");
        AddCategory(1, "Jazz");
        AddCategory(2, "Blues");
        AddEntry(17, 1, 1, 2, "Jazz", "a.mp3");
        AddEntry(18, 2, 1, 1, "Jazz", "b.mp3");
    }
    void Load() { LoadTree(tree); }
    int FailureOfLoad() {
        try {
            Load();
        } catch (const RuntimeError& failure) {
            return failure.Number();
        }
        return 0;
    }
    /// Key and text of the node and all below it, indented.
    static std::vector<std::string> Lines(const TreeNode& node, const std::string& indent = "") {
        std::vector<std::string> lines{indent + node.Key + " | " + node.Text};
        for (const TreeNode* child : node.Children) {
            for (const std::string& line : Lines(*child, indent + "  ")) {
                lines.push_back(line);
            }
        }
        return lines;
    }
    std::vector<std::string> Lines() const { return Lines(tree.Node("Parent")); }

    RecordingConnection& connection;
    TreeModel tree;
};

TEST_F(LoadTreeTest, AnEmptyLibraryShowsTheRootAlone) {
    Load();
    EXPECT_THAT(Lines(), ElementsAre("Parent | Bibliothek"));
    const TreeNode& root = tree.Node("Parent");
    EXPECT_TRUE(root.Bold);
    EXPECT_TRUE(root.Expanded);
    EXPECT_STREQ(root.Image, "parent");
    EXPECT_STREQ(root.SelectedImage, "");
    EXPECT_EQ(root.Parent, nullptr);
    EXPECT_EQ(root.ForeColor, 0U);
    EXPECT_TRUE(mainModule.TreeLoaded);
    EXPECT_EQ(events.count, 1);
}

TEST_F(LoadTreeTest, TheStatementsAreSentInThisOrder) {
    Load();
    EXPECT_THAT(
        connection.statements,
        ElementsAre(
            "Select Category from Categories order By Category",
            "Select F.Name, C.Category, F.Path, F.File_id, [FC.Position], FC.FileCategory_id from Files F, "
            "Categories C, FileCategories FC  where F.File_id = FC.File_id and C.Category_id = "
            "FC.Category_id Order By [FC.Position]",
            "Select Sum(F.Length), FC.Parent from Files F Inner Join FileCategories FC on F.File_id = "
            "FC.File_id Group By FC.Parent"));
}

TEST_F(LoadTreeTest, CategoriesAreSortedByNameAndEntriesByPosition) {
    FillJazz();
    Load();
    EXPECT_THAT(Lines(),
                ElementsAre("Parent | Bibliothek", "  CAT_Blues | Blues", "  CAT_Jazz | Jazz (02:05)",
                            "    file18pos1 | b.mp3", "    file17pos2 | a.mp3"));
}

TEST_F(LoadTreeTest, EachKindOfNodeHasItsLook) {
    FillJazz();
    Load();
    const TreeNode& category = tree.Node("CAT_Jazz");
    EXPECT_TRUE(category.Bold);
    EXPECT_EQ(category.ForeColor, 0xC00000U);
    EXPECT_STREQ(category.Image, "close");
    EXPECT_STREQ(category.SelectedImage, "open");
    EXPECT_FALSE(category.Expanded);
    EXPECT_EQ(category.Parent, &tree.Node("Parent"));
    const TreeNode& entry = tree.Node("file17pos2");
    EXPECT_FALSE(entry.Bold);
    EXPECT_EQ(entry.ForeColor, 0U);
    EXPECT_STREQ(entry.Image, "file");
    EXPECT_STREQ(entry.SelectedImage, "");
    EXPECT_EQ(entry.Parent, &category);
    EXPECT_EQ(tree.Node("Parent").Index, 1U);
    EXPECT_EQ(tree.Node("CAT_Blues").Index, 2U);
}

TEST_F(LoadTreeTest, EventsRunAfterEachCategoryAndOnceBeforeTheNodesExpand) {
    FillJazz();
    std::vector<std::size_t> statementsSent;
    events.onDoEvents = [&] { statementsSent.push_back(connection.statements.size()); };
    connection.statements.clear();
    Load();
    EXPECT_THAT(statementsSent, ElementsAre(1U, 1U, 3U));
}

TEST_F(LoadTreeTest, ACategoryWithoutEntriesHasNoSuffix) {
    AddCategory(1, "Empty");
    Load();
    EXPECT_EQ(tree.Node("CAT_Empty").Text, "Empty");
}

TEST_F(LoadTreeTest, TheSuffixHasTwoDigitsAtLeastAndMoreMinutesIfNeeded) {
    AddFile(1, "short.mp3", "5");
    AddFile(2, "long.mp3", "7503");
    AddCategory(1, "Short");
    AddCategory(2, "Long");
    AddEntry(1, 1, 1, 1, "Short", "short.mp3");
    AddEntry(2, 2, 2, 1, "Long", "long.mp3");
    Load();
    EXPECT_EQ(tree.Node("CAT_Short").Text, "Short (00:05)");
    EXPECT_EQ(tree.Node("CAT_Long").Text, "Long (125:03)");
}

TEST_F(LoadTreeTest, TheLongestCategoryHas32767MinutesAndALongerOneIsAnOverflow) {
    AddFile(1, "long.mp3", "1966079");
    AddCategory(1, "Long");
    AddEntry(1, 1, 1, 1, "Long", "long.mp3");
    Load();
    EXPECT_EQ(tree.Node("CAT_Long").Text, "Long (32767:59)");
    Execute("Update Files Set Length = 1966080");
    EXPECT_EQ(FailureOfLoad(), 6);
}

TEST_F(LoadTreeTest, TheSumIsRoundedForTheSecondsButNotForTheMinutes) {
    AddFile(1, "half.mp3", "59.5");
    AddCategory(1, "Half");
    AddEntry(1, 1, 1, 1, "Half", "half.mp3");
    Load();
    EXPECT_EQ(tree.Node("CAT_Half").Text, "Half (00:00)");
}

TEST_F(LoadTreeTest, ACategoryWhoseLengthsAreAllNullIsAFailure) {
    Load();
    AddFile(1, "a.mp3", "null");
    AddCategory(1, "Jazz");
    AddEntry(1, 1, 1, 1, "Jazz", "a.mp3");
    EXPECT_EQ(FailureOfLoad(), 94);
}

TEST_F(LoadTreeTest, OrphanedEntriesShowNothing) {
    FillJazz();
    AddEntry(30, 99, 1, 3, "Jazz", "gone.mp3");
    AddEntry(31, 1, 99, 1, "Jazz", "a.mp3");
    Load();
    EXPECT_EQ(tree.Node("CAT_Jazz").Children.size(), 2U);
    EXPECT_EQ(tree.Node("CAT_Jazz").Text, "Jazz (03:10)") << "the sum goes by the entry's Parent alone";
}

TEST_F(LoadTreeTest, AnEntryWhoseParentNamesNoCategoryIsAFailure) {
    FillJazz();
    Load();
    Execute("Update FileCategories Set Parent = 'Gone' where FileCategory_id = 17");
    EXPECT_EQ(FailureOfLoad(), 35601);
}

TEST_F(LoadTreeTest, AnEntryStandsUnderItsCategoryAndItsLengthUnderItsParent) {
    FillJazz();
    Execute("Update FileCategories Set Parent = 'Blues' where FileCategory_id = 17");
    Load();
    EXPECT_EQ(tree.Node("CAT_Jazz").Children.size(), 2U);
    EXPECT_EQ(tree.Node("CAT_Jazz").Text, "Jazz (01:00)");
    EXPECT_EQ(tree.Node("CAT_Blues").Text, "Blues (01:05)");
}

TEST_F(LoadTreeTest, AnExpandedNodeThatIsGoneIsAFailure) {
    mainModule.TreeNodeData.Add("CAT_Gone");
    EXPECT_EQ(FailureOfLoad(), 35601);
    EXPECT_FALSE(mainModule.TreeLoaded);
}

TEST_F(LoadTreeTest, TwoCategoriesOfOneNameAreAFailure) {
    Load();
    AddCategory(1, "Jazz");
    AddCategory(2, "Jazz");
    EXPECT_EQ(FailureOfLoad(), 35602);
}

TEST_F(LoadTreeTest, AFailingStatementIsAFailureOfTheCallerAndLeavesWhatWasBuilt) {
    FillJazz();
    Load();
    Execute("Insert into Categories (Category) values ('Soul')");
    connection.failOn = "Select Sum(";
    EXPECT_EQ(FailureOfLoad(), 19);
    EXPECT_EQ(Lines().size(), 6U);
    connection.failOn = "Select F.Name";
    EXPECT_EQ(FailureOfLoad(), 19);
    EXPECT_EQ(Lines().size(), 4U) << "the categories alone";
}

TEST_F(LoadTreeTest, ExpandedCategoriesStayExpandedOverARebuildAndCollapsedOnesCollapsed) {
    FillJazz();
    Load();
    TreeExpand(tree, "CAT_Jazz");
    TreeExpand(tree, "CAT_Blues");
    TreeExpand(tree, "CAT_Jazz");
    EXPECT_THAT(mainModule.TreeNodeData.Keys(), ElementsAre("CAT_Jazz", "CAT_Blues"));
    EXPECT_TRUE(tree.Node("CAT_Jazz").Expanded);
    TreeCollapse(tree, "CAT_Blues");
    TreeCollapse(tree, "CAT_Blues");
    EXPECT_FALSE(tree.Node("CAT_Blues").Expanded);
    Load();
    EXPECT_TRUE(tree.Node("CAT_Jazz").Expanded);
    EXPECT_FALSE(tree.Node("CAT_Blues").Expanded);
}

TEST_F(LoadTreeTest, ACollapsedRootIsExpandedByTheRebuild) {
    Load();
    TreeCollapse(tree, "Parent");
    EXPECT_FALSE(tree.Node("Parent").Expanded);
    Load();
    EXPECT_TRUE(tree.Node("Parent").Expanded);
}

TEST_F(LoadTreeTest, ARebuildLosesSelectionAndDropMark) {
    Load();
    TreeNodeClick(tree, "Parent");
    EXPECT_EQ(tree.SelectedItem().Key, "Parent");
    EXPECT_EQ(tree.DropHighlight(), &tree.Node("Parent"));
    Load();
    EXPECT_FALSE(tree.HasSelection());
    EXPECT_EQ(tree.DropHighlight(), nullptr);
}

TEST_F(LoadTreeTest, TwoEntriesOfOneFileInOneCategoryAreTwoNodes) {
    FillJazz();
    AddEntry(19, 1, 1, 2, "Jazz", "a.mp3");
    Load();
    EXPECT_EQ(tree.Node("CAT_Jazz").Children.size(), 3U);
    EXPECT_TRUE(tree.Contains("file17pos2"));
    EXPECT_TRUE(tree.Contains("file19pos2"));
}

TEST_F(LoadTreeTest, GapsBetweenPositionsStay) {
    FillJazz();
    Execute("Update FileCategories Set [Position] = 9 where FileCategory_id = 17");
    Load();
    EXPECT_TRUE(tree.Contains("file17pos9"));
}

TEST_F(LoadTreeTest, ACategoryNamedLikeTheRootIsACategory) {
    AddCategory(1, "Parent");
    Load();
    EXPECT_EQ(tree.Node("CAT_Parent").Text, "Parent");
}

TEST_F(LoadTreeTest, TheFileOfAnEntryIsFoundByItsKeyOrAsTheSelectedNode) {
    FillJazz();
    Load();
    connection.statements.clear();
    EXPECT_EQ(GetFileIdFromNode(tree, "file18pos1"), "2");
    tree.Select("file17pos2");
    EXPECT_EQ(GetFileIdFromNode(tree, ""), "1");
    EXPECT_THAT(
        connection.statements,
        ElementsAre("Select File_id from FileCategories where Parent = 'Jazz' and Filename = 'b.mp3' and "
                    "[Position] = 1",
                    "Select File_id from FileCategories where Parent = 'Jazz' and Filename = 'a.mp3' and "
                    "[Position] = 2"));
}

TEST_F(LoadTreeTest, TheFileNameIsQuotedInTheLookup) {
    FillJazz();
    Execute("Update Files Set Name = 'it''s.mp3' where File_id = 1");
    Execute("Update FileCategories Set Filename = 'it''s.mp3' where File_id = 1");
    Load();
    EXPECT_EQ(GetFileIdFromNode(tree, "file17pos2"), "1");
}

TEST_F(LoadTreeTest, NeitherACategoryNorAPositionBecomesACondition) {
    AddFile(1, "a.mp3");
    AddFile(2, "b.mp3");
    AddCategory(1, "Jazz");
    AddEntry(17, 1, 1, 1, "Jazz", "a.mp3");
    AddEntry(18, 2, 1, 2, "Jazz", "b.mp3");
    Execute("Update FileCategories Set [Position] = '2 or 1' where FileCategory_id = 18");
    Load();
    EXPECT_THROW(GetFileIdFromNode(tree, "file18pos2 or 1"), RuntimeError);
    for (const char* name : {"it''s", "x' or '1' = '1"}) {
        Execute("Update Categories Set Category = '" + SqlQuote(name) + "'");
        Execute("Update FileCategories Set Parent = '" + SqlQuote(name) + "'");
        Load();
        EXPECT_THROW(GetFileIdFromNode(tree, "file17pos1"), RuntimeError) << name;
    }
}

TEST_F(LoadTreeTest, ARenamedFileIsShownWithItsNewNameAndNotFound) {
    FillJazz();
    Execute("Update Files Set Name = 'new.mp3' where File_id = 1");
    Load();
    EXPECT_EQ(tree.Node("file17pos2").Text, "new.mp3");
    EXPECT_EQ(GetFileIdFromNode(tree, "file17pos2"), "");
}

TEST_F(LoadTreeTest, WithoutASelectionOrParentTheLookupIsAFailure) {
    Load();
    EXPECT_THROW(GetFileIdFromNode(tree, ""), RuntimeError);
    EXPECT_THROW(GetFileIdFromNode(tree, "Parent"), RuntimeError);
    EXPECT_THROW(GetFileIdFromNode(tree, "file1pos1"), RuntimeError);
}

TEST_F(LoadTreeTest, ManyEntriesAreLoadedInTheirOrder) {
    AddCategory(1, "All");
    for (int i = 1; i <= 500; ++i) {
        AddFile(i, std::to_string(i) + ".mp3", "1");
        AddEntry(i, i, 1, 501 - i, "All", std::to_string(i) + ".mp3");
    }
    Load();
    const TreeNode& category = tree.Node("CAT_All");
    ASSERT_EQ(category.Children.size(), 500U);
    EXPECT_EQ(category.Children.front()->Key, "file500pos1");
    EXPECT_EQ(category.Children.back()->Key, "file1pos500");
    EXPECT_EQ(category.Text, "All (08:20)");
}

TEST(NodeKeyTest, AKeyTellsTheKindOfItsNode) {
    EXPECT_EQ(KindOfKey("Parent"), NodeKind::Root);
    EXPECT_EQ(KindOfKey("CAT_Parent"), NodeKind::Category);
    EXPECT_EQ(KindOfKey("CAT_file"), NodeKind::Category);
    EXPECT_EQ(KindOfKey("file17pos3"), NodeKind::File);
    EXPECT_EQ(KindOfKey(""), NodeKind::Category);
}

TEST(NodeKeyTest, KeysAreBuiltAndReadByOneGrammar) {
    EXPECT_EQ(FileKey("17", "3"), "file17pos3");
    EXPECT_EQ(GetFileCategoryIdFromKey("file17pos3"), "17");
    EXPECT_EQ(PositionFromKey("file17pos3"), "3");
    EXPECT_EQ(CategoryKey("Jazz & Co"), "CAT_Jazz & Co");
    EXPECT_EQ(CategoryFromKey("CAT_Jazz & Co"), "Jazz & Co");
    EXPECT_EQ(CategoryFromKey("CAT_Märsche"), "Märsche");
    EXPECT_EQ(CategoryFromKey("CAT_"), "");
    EXPECT_EQ(CategoryFromKey("CA"), "");
}

TEST(NodeKeyTest, AKeyWithoutAPositionHasNoEntryId) {
    EXPECT_THROW(GetFileCategoryIdFromKey("CAT_Jazz"), RuntimeError);
    EXPECT_THROW(GetFileCategoryIdFromKey("pos"), RuntimeError);
    EXPECT_EQ(PositionFromKey("CAT_Jazz"), "");
}

} // namespace
} // namespace quavernet::test
