// Faults of the tree: those of the start are passed over for the whole run, later ones are failures.
#include "app/Registry.h"
#include "platform/LibraryError.h"
#include "support/FailureNumber.h"
#include "support/TestLibrary.h"
#include "tree/LoadTree.h"
#include "tree/TreeModel.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;

class TreeFaultsTest : public LibraryTest {
protected:
    TreeFaultsTest() {
        Execute({"Insert into Files (File_id, Name, Path, Length) values (1, 'a.mp3', '/m/a.mp3', 65)",
                 "Insert into Files (File_id, Name, Path, Length) values (2, 'b.mp3', '/m/b.mp3', 60)",
                 "Insert into Categories (Category_id, Category) values (1, 'Blues')",
                 "Insert into Categories (Category_id, Category) values (2, 'Jazz')",
                 "Insert into FileCategories (FileCategory_id, File_id, Category_id, [Position], Parent, "
                 "Filename) values (1, 1, 1, 1, 'Blues', 'a.mp3')",
                 "Insert into FileCategories (FileCategory_id, File_id, Category_id, [Position], Parent, "
                 "Filename) values (2, 2, 2, 1, 'Jazz', 'b.mp3')"});
    }
    void Load() { LoadTree(tree); }
    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (const TreeNode* category : tree.Node("Parent").Children) {
            texts.push_back(category->Text);
        }
        return texts;
    }

    TreeModel tree;
};

TEST_F(TreeFaultsTest, ASoundTreeHasNone) {
    Load();
    EXPECT_EQ(mainModule.TreeFaults.Count(), 0U);
    EXPECT_EQ(TreeFaultsText(), "");
}

TEST_F(TreeFaultsTest, ACategoryThatIsTooLongAtTheStartShowsNoLengthInTheWholeRun) {
    Execute("Update Files Set Length = 1966080 where File_id = 1");
    for (int load = 0; load < 2; ++load) {
        Load();
        EXPECT_THAT(Texts(), ElementsAre("Blues", "Jazz (01:00)"));
    }
    EXPECT_EQ(TreeFaultsText(), "Fehler im Baum: Blues (6 - Overflow)");
}

TEST_F(TreeFaultsTest, ACategoryThatGetsTooLongInTheRunIsAFailureAndShowsNoLength) {
    Load();
    Execute("Update Files Set Length = 1966080 where File_id = 1");
    EXPECT_EQ(NumberOf([&] { Load(); }), 6);
    EXPECT_THAT(Texts(), ElementsAre("Blues", "Jazz"));
    EXPECT_EQ(mainModule.TreeFaults.Count(), 0U);
}

TEST_F(TreeFaultsTest, AFaultOfTheStartExcusesNoOtherCategoryAndNoOtherFault) {
    Execute("Update Files Set Length = 1966080 where File_id = 1");
    Load();
    Execute("Update Files Set Length = 1966080 where File_id = 2");
    EXPECT_EQ(NumberOf([&] { Load(); }), 6) << "of the other category";
    Execute("Update Files Set Length = 60 where File_id = 2");
    Execute("Update Files Set Length = null where File_id = 1");
    EXPECT_EQ(NumberOf([&] { Load(); }), ErrorNumber::InvalidUseOfNull) << "another fault of the same one";
}

TEST_F(TreeFaultsTest, AFaultThatWasFixedShowsTheLengthAgain) {
    Execute("Update Files Set Length = null where File_id = 1");
    Load();
    EXPECT_THAT(Texts(), ElementsAre("Blues", "Jazz (01:00)"));
    Execute("Update Files Set Length = 5 where File_id = 1");
    Load();
    EXPECT_THAT(Texts(), ElementsAre("Blues (00:05)", "Jazz (01:00)"));
}

TEST_F(TreeFaultsTest, EntriesOfNoCategoryAreNoHindranceAtTheStart) {
    Execute("Update FileCategories Set Parent = 'Gone' where FileCategory_id = 1");
    Load();
    EXPECT_THAT(Texts(), ElementsAre("Blues", "Jazz (01:00)"));
    EXPECT_EQ(tree.Node("CAT_Blues").Children.size(), 1U) << "it stands where its Category_id says";
    EXPECT_EQ(mainModule.TreeFaults.Count(), 1U);
    EXPECT_THAT(TreeFaultsText(), ::testing::StartsWith("Fehler im Baum: Gone (35601 - "));
}

TEST_F(TreeFaultsTest, AFaultIsTheSameInAnotherSpellingOfItsCategory) {
    Execute("Update FileCategories Set Parent = 'Gone' where FileCategory_id = 1");
    Load();
    Execute("Update FileCategories Set Parent = 'GONE' where FileCategory_id = 1");
    Load();
    Execute("Update FileCategories Set Parent = 'Lost' where FileCategory_id = 1");
    EXPECT_EQ(NumberOf([&] { Load(); }), ErrorNumber::ElementNotFound);
}

TEST_F(TreeFaultsTest, AnotherSpellingMayDifferInLettersBeyondAscii) {
    Execute("Update FileCategories Set Parent = 'Märchen' where FileCategory_id = 1");
    Load();
    Execute("Update FileCategories Set Parent = 'MÄRCHEN' where FileCategory_id = 1");
    Load();
    Execute("Update FileCategories Set Parent = 'Marchen' where FileCategory_id = 1");
    EXPECT_EQ(NumberOf([&] { Load(); }), ErrorNumber::ElementNotFound) << "another name to the library";
}

TEST_F(TreeFaultsTest, OfALongNameTheBeginningIsTold) {
    Execute("Update FileCategories Set Parent = '" + std::string(1 << 20, 'x') +
            "' where FileCategory_id = 1");
    Load();
    EXPECT_THAT(TreeFaultsText(), ::testing::StartsWith("Fehler im Baum: " + std::string(60, 'x') + "... ("));
    Execute("Update FileCategories Set Parent = '" + std::string(1 << 20, 'X') +
            "' where FileCategory_id = 1");
    Load();
    Execute("Update FileCategories Set Parent = '" + std::string(100, 'x') + "' where FileCategory_id = 1");
    EXPECT_EQ(NumberOf([&] { Load(); }), ErrorNumber::ElementNotFound) << "the whole name counts";
}

TEST_F(TreeFaultsTest, TwoCategoriesOfOneNameAreOneNodeAtTheStart) {
    Execute("Insert into Categories (Category_id, Category) values (3, 'Jazz')");
    Execute("Update FileCategories Set Category_id = 3, Parent = 'Jazz' where FileCategory_id = 1");
    Load();
    EXPECT_THAT(Texts(), ElementsAre("Blues", "Jazz (02:05)"));
    EXPECT_EQ(tree.Node("CAT_Jazz").Children.size(), 2U);
}

TEST_F(TreeFaultsTest, ASumBeyondAnyNumberLeavesAllLengthsOutAtTheStart) {
    Execute(
        "Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (2, 1, 2, "
        "'Blues', 'b.mp3')");
    Execute("Update Files Set Length = 9223372036854775807");
    Load();
    EXPECT_THAT(Texts(), ElementsAre("Blues", "Jazz"));
    EXPECT_THAT(TreeFaultsText(), ::testing::StartsWith("Fehler im Baum: Sum(F.Length) ("));
    Load();
    SaveSettingValue(SettingsApplication, SettingsSection, "Language", "ENG");
    Load(); // The root has another name now, the fault is the same.
    EXPECT_THAT(Texts(), ElementsAre("Blues", "Jazz"));
}

TEST_F(TreeFaultsTest, ALibraryThatCanNotBeReadIsNoFaultOfTheTree) {
    Record().onStatement = [](const std::string& statement) {
        if (statement.starts_with("Select Sum(")) {
            throw LibraryError(LibraryFault::Damaged, "Quavernet.db", 11, "malformed");
        }
    };
    EXPECT_THROW(Load(), LibraryError);
    EXPECT_EQ(mainModule.TreeFaults.Count(), 0U);
}

TEST_F(TreeFaultsTest, AnExpandedNodeThatIsGoneIsAFailureWhateverWasThereAtTheStart) {
    Execute("Update Files Set Length = null where File_id = 1");
    Load();
    mainModule.TreeNodeData.Add("CAT_Gone");
    EXPECT_EQ(NumberOf([&] { Load(); }), ErrorNumber::ElementNotFound);
}

TEST_F(TreeFaultsTest, OfManyFaultsTheFirstFiveAreNamed) {
    for (const char* name : {"A", "B", "C", "D", "E", "F", "G"}) {
        Execute("Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (1, "
                "1, 1, "
                "'" +
                std::string(name) + "', 'a.mp3')");
    }
    Load();
    const std::string text = TreeFaultsText();
    EXPECT_EQ(std::count(text.begin(), text.end(), '('), 5);
    EXPECT_THAT(text, ::testing::EndsWith("), ..."));
}

} // namespace
} // namespace quavernet::test
