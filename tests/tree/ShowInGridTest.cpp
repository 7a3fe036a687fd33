#include "tree/ShowInGrid.h"

#include "support/TreeLibraryTest.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Notes in which mode the list is loaded.
class ModeNotingViews : public LibraryViews {
public:
    void LoadDatabase(const std::string& list) override {
        loads.push_back(list + (mainModule.ShowInGridMode ? " given" : " filtered"));
        if (const auto inside = onLoad) {
            inside();
        }
        if (fail) {
            throw RuntimeError(1, "no such column");
        }
    }
    void LoadTree() override { loads.emplace_back("tree"); }

    std::vector<std::string> loads;
    std::function<void()> onLoad;
    bool fail = false;
};

class ShowInGridTest : public TreeLibraryTest {
protected:
    void Show() {
        mnuShowInGrid_Click(tree, list);
        EXPECT_FALSE(mainModule.ShowInGridMode);
    }
    ModeNotingViews list;
};

TEST_F(ShowInGridTest, ACategoryShowsAllItsFilesInTheLibrarysOrder) {
    AddCategory("Jazz", {"a.mp3", "b.mp3", "c.mp3"});
    Execute("Update FileCategories Set [Position] = 4 - [Position]");
    LoadAndSelect("CAT_Jazz");
    Show();
    EXPECT_THAT(connection.statements,
                ElementsAre("Select File_id from FileCategories where Parent = 'Jazz'"));
    EXPECT_THAT(list.loads, ElementsAre("1,2,3 given"));
}

TEST_F(ShowInGridTest, AFileThatIsTwiceInACategoryIsNamedTwice) {
    AddCategory("Jazz", {"a.mp3"});
    AddEntry("1", "1", 2, "Jazz", "a.mp3");
    LoadAndSelect("CAT_Jazz");
    Show();
    EXPECT_THAT(list.loads, ElementsAre("1,1 given"));
}

TEST_F(ShowInGridTest, AnEntryShowsItsFile) {
    AddCategory("Jazz", {"a.mp3", "b.mp3"});
    LoadAndSelect("file2pos2");
    Show();
    EXPECT_THAT(list.loads, ElementsAre("2 given"));
}

TEST_F(ShowInGridTest, AnEmptyCategoryLeavesTheListAsItIs) {
    AddCategory("Jazz");
    LoadAndSelect("CAT_Jazz");
    Show();
    EXPECT_THAT(list.loads, IsEmpty());
}

TEST_F(ShowInGridTest, AnEntryWhoseFileWasRenamedLeavesTheListAsItIs) {
    AddCategory("Jazz", {"a.mp3"});
    Execute("Update Files Set Name = 'new.mp3'");
    LoadAndSelect("file1pos1");
    Show();
    EXPECT_THAT(list.loads, IsEmpty());
}

TEST_F(ShowInGridTest, ACategoryWithAnApostropheIsAFailureAndSendsNothing) {
    AddCategory("it''''s");
    LoadAndSelect("CAT_it''s");
    EXPECT_THROW(Show(), RuntimeError);
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_FALSE(mainModule.ShowInGridMode);
}

TEST_F(ShowInGridTest, InsideItselfItLeavesTheOuterOneItsMode) {
    AddCategory("Jazz", {"a.mp3"});
    LoadAndSelect("CAT_Jazz");
    list.onLoad = [&] {
        list.onLoad = nullptr;
        mnuShowInGrid_Click(tree, list);
        EXPECT_TRUE(mainModule.ShowInGridMode);
    };
    Show();
    EXPECT_THAT(list.loads, ElementsAre("1 given", "1 given"));
}

TEST_F(ShowInGridTest, AFailingLoadLeavesTheModeOfTheTree) {
    AddCategory("Jazz", {"a.mp3"});
    LoadAndSelect("CAT_Jazz");
    list.fail = true;
    EXPECT_THROW(mnuShowInGrid_Click(tree, list), RuntimeError);
    EXPECT_FALSE(mainModule.ShowInGridMode);
}

TEST_F(ShowInGridTest, WithoutASelectionNothingHappens) {
    AddCategory("Jazz", {"a.mp3"});
    LoadTree(tree);
    Show();
    EXPECT_THAT(list.loads, IsEmpty());
}

} // namespace
} // namespace quavernet::test
