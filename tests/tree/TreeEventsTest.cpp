#include "tree/TreeEvents.h"

#include "support/AnsweringConnection.h"
#include "support/LogicTest.h"
#include "support/RecordingPlayer.h"

#include <gmock/gmock.h>

#include <map>
#include <set>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TreeEventsTest : public LogicTest {
protected:
    TreeEventsTest() {
        auto library = std::make_unique<AnsweringConnection>(calls);
        connection = library.get();
        mainModule.Connection = std::move(library);
        connection->Answer(IdStatement, {"7"});
        connection->Answer(PathStatement, {"/m/it's.mp3"});
        TreeNode& root = tree.Add(nullptr, "Parent", "Bibliothek", "parent", "");
        TreeNode& jazz = tree.Add(&root, "CAT_Jazz", "Jazz (01:05)", "close", "open");
        tree.Add(&jazz, "file17pos2", "it's.mp3", "file", "");
    }

    static std::set<std::string> Visible(NodeKind kind) {
        std::set<std::string> names;
        for (const TreeMenuItem& item : TreeMenuItems(kind)) {
            if (item.Visible) {
                names.insert(item.Name);
            }
        }
        return names;
    }

    static constexpr const char* IdStatement = "Select File_id from FileCategories where Parent = 'Jazz' and "
                                               "Filename = 'it''s.mp3' and [Position] = 2";
    static constexpr const char* PathStatement = "Select Path from Files where File_id = 7";
    static constexpr const char* NoHit = "Update Files Set Hits = Hits + 1 where Path = ''";
    static constexpr const char* Hit = "Update Files Set Hits = Hits + 1 where Path = '/m/it''s.mp3'";
    const ShownBox cannotPlay{"Die Datei konnte nicht geöffnet werden!", "Abspielen nicht möglich!",
                              MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok};

    std::vector<std::string> calls;
    AnsweringConnection* connection = nullptr;
    RecordingPlayer player{calls};
    TreeModel tree;
};

TEST_F(TreeEventsTest, TheRootsMenuOffersOnlyToDeleteContents) {
    EXPECT_THAT(Visible(NodeKind::Root), ElementsAre("mnuDeleteContent", "mnuSep2"));
}

TEST_F(TreeEventsTest, ACategorysMenuOffersEverything) {
    EXPECT_EQ(Visible(NodeKind::Category),
              (std::set<std::string>{"mnuPlay", "mnuTreeRandom", "mnuCreatePlaylist", "mnuNewCategory",
                                     "mnuEditCategory", "mnuDelete", "mnuDeleteContent", "mnuShowInGrid",
                                     "mnuSep12", "mnuSep2", "mnuSep3", "mnuSep11", "mnuSep15"}));
}

TEST_F(TreeEventsTest, AnEntrysMenuOffersPlayDeleteAndShow) {
    EXPECT_EQ(Visible(NodeKind::File), (std::set<std::string>{"mnuPlay", "mnuDelete", "mnuShowInGrid",
                                                              "mnuSep2", "mnuSep3", "mnuSep15"}));
}

TEST_F(TreeEventsTest, EveryMenuSetsAllItemsAndTouchesNoOther) {
    for (const NodeKind kind : {NodeKind::Root, NodeKind::Category, NodeKind::File}) {
        EXPECT_EQ(TreeMenuItems(kind).size(), 13U);
        for (const TreeMenuItem& item : TreeMenuItems(kind)) {
            EXPECT_THAT(item.Name,
                        ::testing::Not(::testing::AnyOf(std::string("mnuExport"), std::string("mnuImport"),
                                                        std::string("mnuEditTree"))));
        }
    }
}

TEST_F(TreeEventsTest, ARightPressSelectsTheNodeUnderTheMouse) {
    const auto items = TreeRightPress(tree, "CAT_Jazz");
    ASSERT_TRUE(items);
    EXPECT_EQ(items->size(), 13U);
    EXPECT_EQ(tree.SelectedItem().Key, "CAT_Jazz");
}

TEST_F(TreeEventsTest, ARightPressWhereNoNodeIsShowsNoMenuAndNoError) {
    tree.Select("CAT_Jazz");
    EXPECT_FALSE(TreeRightPress(tree, ""));
    EXPECT_EQ(tree.SelectedItem().Key, "CAT_Jazz");
}

TEST_F(TreeEventsTest, TheDeleteKeyWorksOnAnyNodeButTheRoot) {
    EXPECT_EQ(TreeKeyDown(tree, 46), TreeKeyAction::None) << "nothing is selected";
    tree.Select("Parent");
    EXPECT_EQ(TreeKeyDown(tree, 46), TreeKeyAction::None);
    tree.Select("CAT_Jazz");
    EXPECT_EQ(TreeKeyDown(tree, 46), TreeKeyAction::Delete);
    tree.Select("file17pos2");
    EXPECT_EQ(TreeKeyDown(tree, 46), TreeKeyAction::Delete);
    EXPECT_EQ(TreeKeyDown(tree, 13), TreeKeyAction::None);
}

TEST_F(TreeEventsTest, TheExternalPlayerGetsTheEntrysPathAndThePlayIsCounted) {
    mainModule.UseExternalPlayer = true;
    tree.Select("file17pos2");
    TreeDblClick(tree, player);
    EXPECT_THAT(shell.executed, ElementsAre("/m/it's.mp3"));
    EXPECT_THAT(calls, ElementsAre(IdStatement, PathStatement, Hit));
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(TreeEventsTest, AMissingFileIsToldAndCountedAllTheSame) {
    mainModule.UseExternalPlayer = true;
    shell.executeResult = 2;
    tree.Select("file17pos2");
    TreeDblClick(tree, player);
    EXPECT_THAT(msgBox.shown,
                ElementsAre(ShownBox{"Die Datei konnte nicht gefunden werden!", "Öffnen nicht möglich",
                                     MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok}));
    EXPECT_EQ(calls.back(), Hit);
}

TEST_F(TreeEventsTest, OtherResultsOfTheShellCountAsSuccess) {
    mainModule.UseExternalPlayer = true;
    tree.Select("file17pos2");
    for (const int result : {0, 3, 5, 31}) {
        shell.executeResult = result;
        TreeDblClick(tree, player);
    }
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(TreeEventsTest, TheInternalPlayerTakesTheEntryAndNothingIsCounted) {
    tree.Select("file17pos2");
    TreeDblClick(tree, player);
    EXPECT_THAT(calls, ElementsAre("Show", "FillPlaylistFromTree 1", "PlayFileFromTree 1", NoHit));
    EXPECT_THAT(shell.executed, IsEmpty());
}

TEST_F(TreeEventsTest, WithAlwaysAddTheEntryIsOnlyQueued) {
    mainModule.AlwaysAddToPlaylist = true;
    player.queueCount = 1;
    tree.Select("file17pos2");
    TreeDblClick(tree, player);
    EXPECT_THAT(calls, ElementsAre("Show", "FillPlaylistFromTree 1", NoHit));
}

TEST_F(TreeEventsTest, ADoubleClickOnACategoryOrTheRootOnlyRunsTheCountOfNothing) {
    for (const bool external : {false, true}) {
        mainModule.UseExternalPlayer = external;
        for (const char* key : {"Parent", "CAT_Jazz"}) {
            calls.clear();
            tree.Select(key);
            TreeDblClick(tree, player);
            EXPECT_THAT(calls, ElementsAre(NoHit)) << key;
        }
    }
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(TreeEventsTest, ADoubleClickWithoutASelectionIsSilent) {
    TreeDblClick(tree, player);
    EXPECT_THAT(calls, ElementsAre(NoHit));
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(TreeEventsTest, AnObjectThatIsNotThereIsNotTold) {
    class NoWindow : public RecordingPlayer {
    public:
        using RecordingPlayer::RecordingPlayer;
        void Show() override { throw RuntimeError(ErrorNumber::ObjectNotSet, "Object variable not set"); }
    };
    NoWindow noWindow(calls);
    tree.Select("file17pos2");
    TreeDblClick(tree, noWindow);
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(TreeEventsTest, AnEntryThatIsNotFoundIsToldAndTheCountRuns) {
    mainModule.UseExternalPlayer = true;
    connection->answers.clear();
    connection->failing = "File_id = ";
    tree.Select("file17pos2");
    TreeDblClick(tree, player);
    EXPECT_THAT(calls, ElementsAre(IdStatement, "Select Path from Files where File_id = ", NoHit));
    EXPECT_THAT(msgBox.shown, ElementsAre(cannotPlay));
}

TEST_F(TreeEventsTest, AFileWithoutARowIsToldAndTheCountRuns) {
    mainModule.UseExternalPlayer = true;
    connection->answers.erase(PathStatement);
    tree.Select("file17pos2");
    TreeDblClick(tree, player);
    EXPECT_EQ(calls.back(), NoHit);
    EXPECT_THAT(msgBox.shown, ElementsAre(cannotPlay));
    EXPECT_THAT(shell.executed, IsEmpty());
}

TEST_F(TreeEventsTest, AFailingPlayerIsToldAndTheCountRuns) {
    player.fillFails = true;
    tree.Select("file17pos2");
    TreeDblClick(tree, player);
    EXPECT_THAT(calls, ElementsAre("Show", "FillPlaylistFromTree 1", NoHit));
    EXPECT_THAT(msgBox.shown, ElementsAre(cannotPlay));
}

TEST_F(TreeEventsTest, AFailureIsToldOnceEvenIfTheCountFailsToo) {
    player.fillFails = true;
    connection->failing = "Update";
    tree.Select("file17pos2");
    TreeDblClick(tree, player);
    EXPECT_THAT(msgBox.shown, ElementsAre(cannotPlay));
}

TEST_F(TreeEventsTest, AFailingCountIsTold) {
    connection->failing = "Update";
    tree.Select("file17pos2");
    TreeDblClick(tree, player);
    EXPECT_THAT(msgBox.shown, ElementsAre(cannotPlay));
}

TEST_F(TreeEventsTest, ADragMarksTheNodeUnderItAndTheSelectedOneAtTheVeryEdge) {
    const auto target = [&] { return tree.DropHighlight() == nullptr ? "" : tree.DropHighlight()->Key; };
    TreeDragOver(tree, "CAT_Jazz", 15, 15);
    EXPECT_EQ(target(), "CAT_Jazz");
    TreeDragOver(tree, "CAT_Jazz", 0, 15);
    EXPECT_EQ(target(), "") << "nothing is selected";
    tree.Select("file17pos2");
    TreeDragOver(tree, "CAT_Jazz", 15, 0);
    EXPECT_EQ(target(), "file17pos2");
    TreeDragOver(tree, "", 15, 15);
    EXPECT_EQ(target(), "");
    EXPECT_EQ(tree.SelectedItem().Key, "file17pos2");
}

TEST_F(TreeEventsTest, ADragScrollsInTheUpper300AndTheLower500Twips) {
    constexpr int Height = 6000;
    std::map<int, int> directions;
    for (const int y : {-1, 0, 1, 299, 300, 5500, 5501, 5999, 6000}) {
        directions[y] = TreeScrollDirection(y, Height);
    }
    EXPECT_EQ(
        directions,
        (std::map<int, int>{
            {-1, 0}, {0, 0}, {1, -1}, {299, -1}, {300, 0}, {5500, 0}, {5501, 1}, {5999, 1}, {6000, 0}}));
    EXPECT_EQ(TreeScrollDirection(100, 200), -1) << "in a low tree the upper band goes first";
}

TEST_F(TreeEventsTest, AKeyOfNoNodeIsRememberedLikeAnyOther) {
    TreeExpand(tree, "CAT_Unknown");
    EXPECT_THAT(mainModule.TreeNodeData.Keys(), ElementsAre("CAT_Unknown"));
    TreeCollapse(tree, "CAT_Unknown");
    EXPECT_THAT(mainModule.TreeNodeData.Keys(), IsEmpty());
}

TEST_F(TreeEventsTest, ATakenKeyAndAMissingNodeAreFailures) {
    EXPECT_THROW(tree.Add(nullptr, "CAT_Jazz", "Jazz", "close", "open"), RuntimeError);
    EXPECT_EQ(tree.Nodes().size(), 3U);
    EXPECT_THROW(tree.Node("CAT_Blues"), RuntimeError);
    EXPECT_THROW(tree.Select("CAT_Blues"), RuntimeError);
    EXPECT_THROW(tree.SetDropHighlight("CAT_Blues"), RuntimeError);
    tree.SetDropHighlight("CAT_Jazz");
    tree.ClearDropHighlight();
    EXPECT_EQ(tree.DropHighlight(), nullptr);
}

} // namespace
} // namespace quavernet::test
