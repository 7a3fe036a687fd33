#include "tree/TreeDropTest.h"

#include <functional>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(TreeDropTest, ADropOnTheRootLeavesTheFlagsAsTheyAre) {
    FillDense();
    const auto before = EveryEntry();
    for (const char* file : {"/m/x.mp3", "/m/x.M3U"}) {
        Press("file101pos1");
        EXPECT_FALSE(Drop({file}, "Parent").Rebuild);
        EXPECT_TRUE(drag.DragFromTree) << file;
        SelectRows({"j1"});
        EXPECT_FALSE(Drop({file}, "Parent").Rebuild);
        EXPECT_TRUE(drag.GridDragging) << file;
    }
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_EQ(EveryEntry(), before);
}

TEST_F(TreeDropTest, ADropWhereNoNodeIsEndsSilently) {
    FillDense();
    const auto before = EveryEntry();
    for (const char* file : {"/m/x.mp3", "/m/x.M3U"}) {
        Press("file101pos1");
        EXPECT_FALSE(Drop({file}, "").Rebuild);
        EXPECT_FALSE(drag.DragFromTree) << file;
        drag.GridDragging = true;
        EXPECT_FALSE(Drop({file}, "file999pos1").Rebuild);
        EXPECT_FALSE(drag.GridDragging) << "nor on a node that is gone";
    }
    EXPECT_EQ(EveryEntry(), before);
    EXPECT_THAT(calls, ElementsAre("pointer 0", "pointer 0", "pointer 0", "pointer 0"));
}

TEST_F(TreeDropTest, ADropThatIsDoneLeavesItsFlagsUntilTheRebuildIsOver) {
    FillDense();
    Press("file102pos2");
    ASSERT_TRUE(Drop({}, "CAT_Blues").Rebuild);
    EXPECT_TRUE(drag.DragFromTree);
    EXPECT_THAT(calls, IsEmpty());
    drag.GridDragging = true;
    EndTreeDrop(drag, work);
    EXPECT_FALSE(drag.DragFromTree);
    EXPECT_FALSE(drag.GridDragging);
    EXPECT_EQ(drag.DragText, "j2") << "texts stay until the next press";
    EXPECT_THAT(calls, ElementsAre("pointer 0"));
}

TEST_F(TreeDropTest, WhatThePointerRefusesWouldHaveChangedNothing) {
    FillDense();
    const std::vector<std::function<void()>> sources{
        [this] { drag = DragState(); },
        [this] {
            SelectRows({"j1", "b2"});
        },
        [this] { SelectRows({}); }, [this] { Press("file102pos2"); }, [this] { Press("CAT_Blues"); }};
    const std::vector<std::vector<std::string>> fileLists{
        {}, {KnownPath("j3")}, {"/m/notes.txt", "/m/album"}, {"/m/list.M3U"}, {"/m/a.mp3"}};
    std::size_t refused = 0;
    std::size_t changed = 0;
    for (const auto& begin : sources) {
        for (const auto& files : fileLists) {
            for (const char* key : {"", "Parent", "CAT_Jazz", "CAT_Empty", "file102pos2", "file201pos1"}) {
                for (const bool control : {false, true}) {
                    begin();
                    if (files.empty() && drag.GridDragging) {
                        continue; // Rows are never dragged without their files.
                    }
                    const auto before = EveryEntry();
                    const bool would = WouldDrop({files, key, control}, drag, tree);
                    IgnoreFailure([&] { Drop(files, key, control); });
                    changed += EveryEntry() != before ? 1 : 0;
                    refused += would ? 0 : 1;
                    if (!would) {
                        ASSERT_EQ(EveryEntry(), before) << key << " " << control;
                    }
                    for (const char* table : {"FileCategories", "Categories", "Files"}) {
                        Execute(std::string("Delete from ") + table);
                    }
                    mainModule.FilePaths.Clear();
                    mainModule.SelectedRows.Clear();
                    FillDense();
                }
            }
        }
    }
    EXPECT_GT(refused, 100U);
    EXPECT_GT(changed, 30U);
}

TEST_F(TreeDropTest, ThePointerTakesWhatADropWouldWrite) {
    FillDense();
    const auto takes = [this](const std::vector<std::string>& files, const std::string& key,
                              bool control = false) {
        return WouldDrop({files, key, control}, drag, tree);
    };
    EXPECT_TRUE(takes({"/m/notes.txt", "/m/a.MP3"}, "CAT_Empty"));
    EXPECT_TRUE(takes({"/m/list.m3u"}, "Parent")) << "a playlist may be dropped anywhere";
    EXPECT_TRUE(takes({"/m/list.m3u"}, ""));
    EXPECT_FALSE(takes({"/m/a.mp3"}, "Parent"));
    EXPECT_FALSE(takes({"/m/a.mp3", "/m/list.m3u"}, "")) << "beside all nodes";
    EXPECT_TRUE(takes({"/m/notes.txt"}, "CAT_Empty")) << "the tree is built again";
    Press("file102pos2");
    EXPECT_TRUE(takes({}, "CAT_Blues")) << "the entry's file may have gone";
    EXPECT_TRUE(takes({"/m/j2"}, "file103pos3"));
    EXPECT_FALSE(takes({"/m/j2"}, "file102pos2")) << "onto itself";
    Press("CAT_Jazz");
    EXPECT_FALSE(takes({"/m/j1"}, "CAT_Blues")) << "a category can't be moved";
    SelectRows({"j1"});
    EXPECT_TRUE(takes({"/m/j1"}, "CAT_Jazz"));
    EXPECT_FALSE(takes({"/m/j1"}, "Parent"));
}

TEST_F(TreeDropTest, WhileAScanRunsADropActsOnNothing) {
    FillDense();
    const auto before = EveryEntry();
    mainModule.ScanRunning = true;
    Press("file102pos2");
    EXPECT_FALSE(Drop({"/m/j2"}, "CAT_Blues").Rebuild);
    EXPECT_FALSE(Drop({"/m/list.m3u"}, "").Rebuild);
    EXPECT_THAT(statements, IsEmpty());
    EXPECT_EQ(EveryEntry(), before);
    EXPECT_TRUE(drag.DragFromTree);
}

TEST_F(TreeDropTest, AnEntryAsTargetAsksForTheTextAndACategoryForTheFlag) {
    FillDense();
    SelectRows({"b1"});
    // A press on the tree before one on the list, whose flag has gone but whose text has stayed.
    drag.DragText = "j2";
    drag.DragPosition = "2";
    drag.DragCategory = "Jazz";
    tree.Select("file102pos2");
    Drop({"/m/b1"}, "CAT_Empty");
    EXPECT_THAT(Entries("Empty"), ElementsAre("1 b1")) << "without the flag the rows go in";
    drag.GridDragging = true;
    Drop({"/m/b1"}, "file103pos3");
    EXPECT_EQ(Entries("Jazz")[2], "3 j2") << "with a text the entry moves";
    EXPECT_EQ(Entries("Jazz").size(), 6U);
    LoadTree(tree);
    drag = DragState();
    drag.DragFromTree = true;
    Drop({"/m/b1"}, "file103pos2");
    EXPECT_EQ(Entries("Jazz")[1], "2 b1") << "without a text the rows go in, whatever the flag";
}

TEST_F(TreeDropTest, AnUpperCasePlaylistFromOutsideActsOnTheListsRows) {
    FillDense();
    SelectRows({"b1"});
    drag = DragState();
    EXPECT_TRUE(Drop({"/m/LIST.M3U"}, "CAT_Empty").Rebuild);
    EXPECT_THAT(Entries("Empty"), ElementsAre("1 b1"));
    EXPECT_TRUE(Drop({"/m/LIST.M3U"}, "file102pos2").Rebuild);
    EXPECT_EQ(Entries("Jazz")[1], "2 b1");
    EXPECT_EQ(Rows("Select * from Categories").size(), 3U) << "it is no playlist";
}

TEST_F(TreeDropTest, AnUpperCasePlaylistOnAnEntryMovesWhatTheLastPressRemembered) {
    FillDense();
    Press("file102pos2");
    TreeRelease(drag);
    EXPECT_TRUE(Drop({"/m/LIST.M3u"}, "file104pos4").Rebuild);
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j3", "3 j4", "4 j2", "5 j5", "6 j6"));
}

TEST_F(TreeDropTest, AnUpperCasePlaylistOnTheRememberedTextIsLeftAlone) {
    FillDense();
    Press("file102pos2");
    TreeRelease(drag);
    EXPECT_FALSE(Drop({"/m/LIST.M3U"}, "file102pos2").Rebuild);
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(TreeDropTest, FilesFromOutsideAreNotHeldBackByTheRememberedText) {
    FillDense();
    AddFile(900, "x.mp3");
    Press("file102pos2");
    TreeRelease(drag);
    EXPECT_TRUE(Drop({"/m/x.mp3"}, "file102pos2").Rebuild);
    EXPECT_EQ(Entries("Jazz")[1], "2 x.mp3");
}

TEST_F(TreeDropTest, ADropFromOutsideWithoutFilesActsLikeOneFromInside) {
    FillDense();
    SelectRows({"b1"});
    drag = DragState();
    EXPECT_TRUE(Drop({}, "CAT_Empty").Rebuild);
    EXPECT_THAT(Entries("Empty"), ElementsAre("1 b1"));
}

TEST_F(TreeDropTest, ADropFromInsideTakesNoFilesFromItsPayload) {
    FillDense();
    AddFile(900, "x.mp3");
    SelectRows({"b1"});
    Drop({"/m/x.mp3", "/m/x.mp3"}, "CAT_Empty");
    EXPECT_THAT(Entries("Empty"), ElementsAre("1 b1"));
}

TEST_F(TreeDropTest, WhatWasWrittenIsInTheFileWhenTheDropIsOver) {
    FillDense();
    Connection().Commit();
    Press("file102pos2");
    Drop({}, "CAT_Empty");
    const auto other = OpenLibrary(libraryPath);
    EXPECT_THAT(RowTextsOf(*other, "Select Filename from FileCategories where Parent = 'Empty'"),
                ElementsAre("j2"));
}

/// A library on a disk that has no room left for a commit.
class FailingCommits : public ADODB::Connection {
public:
    explicit FailingCommits(std::unique_ptr<ADODB::Connection> real, int allowed)
        : m_real(std::move(real)), m_allowed(allowed) {}
    void Open(std::string_view) override {}
    void Execute(std::string_view statement) override { m_real->Execute(statement); }
    ADODB::RowBlock Query(std::string_view statement) override { return m_real->Query(statement); }
    ADODB::RowBlock QueryFirst(std::string_view statement, std::size_t most) override {
        return m_real->QueryFirst(statement, most);
    }
    void Commit() override {
        if (m_allowed-- <= 0) {
            throw RuntimeError(ErrorNumber::DiskFull, "the disk");
        }
        m_real->Commit();
    }
    std::int64_t ChangesOfOthers() override { return m_real->ChangesOfOthers(); }

private:
    std::unique_ptr<ADODB::Connection> m_real;
    int m_allowed;
};

TEST_F(TreeDropTest, AFailingCommitEndsTheDropSilentlyUntilAFileWasStored) {
    FillDense();
    Press("file102pos2");
    mainModule.Connection = std::make_unique<FailingCommits>(std::move(mainModule.Connection), 0);
    EXPECT_FALSE(TreeDrop({{}, "CAT_Empty", false}, drag, tree, driver, work).Rebuild);
    EXPECT_FALSE(drag.DragFromTree);
    WriteMp3("x.mp3");
    EXPECT_FALSE(TreeDrop({{music / "x.mp3"}, "CAT_Empty", false}, drag, tree, driver, work).Rebuild);
    mainModule.Connection.reset();
    mainModule.Connection = std::make_unique<FailingCommits>(OpenLibrary(libraryPath), 1);
    EXPECT_THROW(TreeDrop({{music / "x.mp3"}, "CAT_Empty", false}, drag, tree, driver, work), RuntimeError);
}

TEST_F(TreeDropTest, AnEmptyListOnAnEntryMovesWhatIsDragged) {
    FillDense();
    Press("file102pos2");
    EXPECT_TRUE(Drop({}, "file104pos4").Rebuild);
    EXPECT_EQ(Entries("Jazz")[3], "4 j2");
}

} // namespace
} // namespace quavernet::test
