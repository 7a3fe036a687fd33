#include "tree/TreeExport.h"

#include "support/FailureNumber.h"
#include "support/LongWorkDouble.h"
#include "support/RecordingConnection.h"
#include "support/TestFiles.h"
#include "support/TestLibrary.h"
#include "tree/LoadTree.h"
#include "tree/TreeModel.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TreeExportTest : public LibraryTest {
protected:
    TreeExportTest() : connection(Record()) {
        shell.documents = "/home/me/Documents";
        dialogs.file = path;
    }

    void AddFile(int id, const std::string& filePath) {
        Execute("Insert into Files (File_id, Name, Path, Length) values (" + std::to_string(id) +
                ", 'other.mp3', '" + filePath + "', 1)");
    }
    void AddCategory(const std::string& name) {
        Execute("Insert into Categories (Category) values ('" + name + "')");
    }
    void AddEntry(const std::string& fileId, int position, const std::string& parent,
                  const std::string& filename) {
        Execute("Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (" +
                fileId + ", 1, " + std::to_string(position) + ", '" + parent + "', '" + filename + "')");
    }
    void Export() {
        LoadTree(tree);
        connection.statements.clear();
        ExportTree(tree, work);
    }

    RecordingConnection& connection;
    CallList calls;
    LongWorkDouble work{calls};
    TreeModel tree;
    TemporaryFolder folder;
    const std::string path = folder / "tree.qvn";
};

TEST_F(TreeExportTest, AnEmptyTreeAsksForNoFile) {
    Export();
    EXPECT_THAT(dialogs.shown, IsEmpty());
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(TreeExportTest, ATreeThatWasNeverLoadedIsNoTree) {
    AddCategory("Jazz");
    ExportTree(tree, work);
    EXPECT_THAT(dialogs.shown, IsEmpty());
}

TEST_F(TreeExportTest, CategoriesAndEntriesAreWrittenInTheirOwnOrder) {
    AddFile(5, "/m/five.mp3");
    AddFile(7, "/m/seven, eight.mp3");
    AddCategory("Rock");
    AddCategory("Jazz # 1");
    AddEntry("7", 9, "Rock", "seven, eight.mp3");
    AddEntry("5", 2, "Jazz # 1", "old name.mp3");
    AddEntry("99", 1, "Jazz # 1", "gone.mp3");
    Export();
    EXPECT_EQ(ReadFile(path), "#Categories\nRock\nJazz # 1\n#Files\n"
                              "9,Rock,seven, eight.mp3,/m/seven, eight.mp3\n"
                              "2,Jazz # 1,old name.mp3,/m/five.mp3\n"
                              "1,Jazz # 1,gone.mp3,\n");
    EXPECT_THAT(connection.statements,
                ElementsAre("Select Category from Categories",
                            "Select [Position], Parent, Filename, File_id from FileCategories",
                            "Select Path from Files where File_id = 7",
                            "Select Path from Files where File_id = 5",
                            "Select Path from Files where File_id = 99"));
    EXPECT_THAT(calls, ElementsAre("pointer 11", "pointer 0"));
    EXPECT_THAT(dialogs.shown, ElementsAre("save Quavernet Biliothek (*.qvn)|*.qvn /home/me/Documents"));
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(TreeExportTest, TextsAreUtf8AndNamesOfFilesTheBytesThatTheyAre) {
    AddFile(5, "/m/M\xE4rchen.mp3");
    AddCategory("Märchen");
    AddEntry("5", 1, "Märchen", "M\xE4rchen.mp3");
    Export();
    EXPECT_EQ(ReadFile(path), "#Categories\nMärchen\n#Files\n1,Märchen,M\xE4rchen.mp3,/m/M\xE4rchen.mp3\n");
}

TEST_F(TreeExportTest, ACancelledDialogWritesNothing) {
    AddCategory("Jazz");
    dialogs.file.reset();
    Export();
    EXPECT_THAT(calls, ElementsAre("pointer 11", "pointer 0"));
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST_F(TreeExportTest, ADialogThatFailsCountsAsCancelled) {
    AddCategory("Jazz");
    dialogs.fails = true;
    Export();
    EXPECT_THAT(calls, ElementsAre("pointer 11", "pointer 0"));
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(TreeExportTest, CategoriesThatWereDeletedMeanwhileLeaveTheFirstLine) {
    AddCategory("Jazz");
    AddFile(5, "/m/five.mp3");
    AddEntry("5", 1, "Jazz", "five.mp3");
    dialogs.onShow = [this] { Execute("Delete from Categories"); };
    Export();
    EXPECT_EQ(ReadFile(path), "#Categories\n");
    EXPECT_THAT(calls, ElementsAre("pointer 11", "pointer 0"));
    EXPECT_THAT(connection.StatementsOf("Select [Position]"), IsEmpty());
}

TEST_F(TreeExportTest, ATreeThatIsLoadedAgainWhileTheDialogIsOpenDoesNoHarm) {
    AddCategory("Jazz");
    dialogs.onShow = [this] {
        AddCategory("Blues");
        LoadTree(tree);
    };
    Export();
    EXPECT_EQ(ReadFile(path), "#Categories\nJazz\nBlues\n#Files\n");
}

TEST_F(TreeExportTest, AnOldFileIsReplacedWithoutAQuestion) {
    WriteFile(path, std::string(100'000, 'x'));
    AddCategory("Jazz");
    Export();
    EXPECT_EQ(ReadFile(path), "#Categories\nJazz\n#Files\n");
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(TreeExportTest, NoExtensionIsAdded) {
    dialogs.file = folder / "tree";
    AddCategory("Jazz");
    Export();
    EXPECT_TRUE(std::filesystem::exists(folder / "tree"));
}

TEST_F(TreeExportTest, AFailureOnTheWayKeepsTheOldFile) {
    WriteFile(path, "old");
    AddCategory("Jazz");
    AddFile(5, "/m/five.mp3");
    AddEntry("5", 1, "Jazz", "five.mp3");
    connection.failOn = "Select Path from Files";
    LoadTree(tree);
    EXPECT_EQ(NumberOf([&] { ExportTree(tree, work); }), 19);
    EXPECT_EQ(ReadFile(path), "old");
    EXPECT_THAT(calls, ElementsAre("pointer 11")) << "the failure is the caller's";
}

TEST_F(TreeExportTest, AnEntryWithoutAFileNumberIsAFailure) {
    AddCategory("Jazz");
    AddEntry("null", 1, "Jazz", "five.mp3");
    LoadTree(tree);
    EXPECT_NE(NumberOf([&] { ExportTree(tree, work); }), 0);
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(TreeExportTest, AFileThatCanNotBeOpenedIsAFailureOfTheCaller) {
    AddCategory("Jazz");
    LoadTree(tree);
    dialogs.file = folder.Path();
    EXPECT_EQ(NumberOf([&] { ExportTree(tree, work); }), ErrorNumber::PathFileAccess);
    dialogs.file = folder / "missing/tree.qvn";
    EXPECT_EQ(NumberOf([&] { ExportTree(tree, work); }), ErrorNumber::PathNotFound);
}

TEST_F(TreeExportTest, RowsAreCountedInSixteenBits) {
    AddCategory("Jazz");
    AddFile(5, "/m/five.mp3");
    for (int i = 0; i < 32767; ++i) {
        AddEntry("5", 1, "Jazz", "five.mp3");
    }
    Export();
    const std::string whole = ReadFile(path);
    EXPECT_EQ(std::count(whole.begin(), whole.end(), '\n'), 32767 + 3);
    AddEntry("5", 1, "Jazz", "five.mp3");
    EXPECT_EQ(NumberOf([&] { ExportTree(tree, work); }), ErrorNumber::Overflow);
    EXPECT_EQ(ReadFile(path), whole);
}

TEST_F(TreeExportTest, CategoriesAreCountedInSixteenBitsToo) {
    AddCategory("Jazz");
    LoadTree(tree);
    for (int i = 0; i < 32767; ++i) {
        AddCategory("Jazz" + std::to_string(i));
    }
    EXPECT_EQ(NumberOf([&] { ExportTree(tree, work); }), ErrorNumber::Overflow);
    EXPECT_FALSE(std::filesystem::exists(path));
}

} // namespace
} // namespace quavernet::test
