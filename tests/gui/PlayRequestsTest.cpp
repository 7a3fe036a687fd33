// The play requests in the real window, by their buttons, menu items and keys; the external player is the
// shell's recorder.
#include "app/MayAct.h"
#include "gui/GuiTest.h"

#include "browser/GridView.h"
#include "support/TestFiles.h"
#include "widgets/PictureButton.h"

#include <cstdlib>
#include <filesystem>
#include <utility>

namespace quavernet::test {

namespace {

class PlayRequestsTest : public GuiTest {
protected:
    PlayRequestsTest() {
        AddFile("Abba", "One");
        AddFile("Beatles", "Two");
        AddFile("Cure", "Three");
        for (const char* statement : {"Insert into Categories (Category) values ('Alpha')",
                                      "Insert into FileCategories (File_id, Category_id, [Position], Parent, "
                                      "Filename) values (2, 1, 1, "
                                      "'Alpha', 'Two.mp3')"}) {
            mainModule.Connection->Execute(statement);
        }
        ::setenv("TMPDIR", temporary.Path().c_str(), 1);
        Start();
        mainModule.UseExternalPlayer = true;
    }
    ~PlayRequestsTest() override { ::unsetenv("TMPDIR"); }

    void SelectTwoRows() {
        ClickRow(1);
        ClickRow(2, Qt::ShiftModifier);
    }
    Texts Hits() {
        Texts hits;
        const ADODB::RowBlock rows = mainModule.Connection->Query("Select Hits from Files order by File_id");
        for (std::size_t row = 0; row < rows.Rows(); ++row) {
            hits.push_back(rows.At(row, 0).Text());
        }
        return hits;
    }
    Texts Opened() { return std::exchange(shell.executed, {}); }
    std::string Temporary(const char* name) { return temporary / name; }

    TemporaryFolder temporary;
};

const std::vector<std::string> none{"0", "0", "0"};

} // namespace

TEST_F(PlayRequestsTest, WhileAPlayIsCarriedOutNothingElseActs) {
    class AskingShell : public RecordingShell {
    public:
        int ShellExecute(const std::string& path) override {
            mayAct.push_back(MayAct());
            return RecordingShell::ShellExecute(path);
        }
        std::vector<bool> mayAct;
    };
    AskingShell asking;
    services.shell = &asking;
    ClickRow(1);
    QTest::keyClick(&Grid(), Qt::Key_Return);
    const QPoint place = Grid().visualRect(Grid().model()->index(0, 1)).center();
    QTest::mouseDClick(Grid().viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(asking.mayAct, (std::vector<bool>{false, false}));
    EXPECT_TRUE(MayAct());
    services.shell = &shell;
}

TEST_F(PlayRequestsTest, ThePlayButtonThePlayMenusAndEnterPlaySeveralRows) {
    const Texts playlist{Temporary("Playlist.m3u")};
    SelectTwoRows();
    ClickRow(2, Qt::ShiftModifier); // The controls follow the row that was the current one at the press.
    QTest::mouseClick(&Control<PictureButton>("cmdPlay"), Qt::LeftButton);
    EXPECT_EQ(Opened(), playlist);
    Action("mnuKontextPlay").trigger();
    EXPECT_EQ(Opened(), playlist);
    QTest::keyClick(&Grid(), Qt::Key_Return);
    EXPECT_EQ(Opened(), playlist);
    EXPECT_EQ(Hits(), none);
    Action("mnuPlaySelectedItems").trigger();
    EXPECT_EQ(Opened(), playlist);
    EXPECT_EQ(Hits(), (Texts{"1", "1", "0"}));
}

TEST_F(PlayRequestsTest, EnterWithOneRowPlaysItAlsoAfterARightPress) {
    ClickRow(2);
    Grid().Selection().MouseDown(2, GridButton::Right, {});
    QTest::keyClick(&Grid(), Qt::Key_Return);
    EXPECT_EQ(Opened(), (Texts{"/music/Two.mp3"}));
    EXPECT_EQ(Hits(), (Texts{"0", "1", "0"}));
}

TEST_F(PlayRequestsTest, DuringAScanNoRequestActs) {
    SelectTwoRows();
    mainModule.ScanRunning = true;
    QTest::keyClick(&Grid(), Qt::Key_Return);
    for (const char* name :
         {"mnuPlaySelectedItems", "mnuKontextPlay", "mnuPlaylist", "mnuKontextPlaylist", "mnuRandomPlay",
          "mnuKontextRandom", "mnuPlay", "mnuTreeRandom", "mnuCreatePlaylist", "plist", "mnuRandom"}) {
        EXPECT_FALSE(Form().Parts().Commands.Run(name)) << name;
    }
    mainModule.ScanRunning = false;
    EXPECT_EQ(Opened(), Texts{});
    EXPECT_TRUE(std::filesystem::is_empty(temporary.Path()));
    EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(PlayRequestsTest, WhileADialogOfARequestIsOpenNoOtherOneActs) {
    SelectTwoRows();
    int runs = 0;
    dialogs.onShow = [&] {
        for (const char* name : {"plist", "mnuPlaylist", "mnuPlaySelectedItems", "mnuRandomPlay"}) {
            runs += Form().Parts().Commands.Run(name) ? 1 : 0;
        }
        QTest::keyClick(&Grid(), Qt::Key_Return);
    };
    Action("mnuPlaylist").trigger();
    EXPECT_EQ(dialogs.shown.size(), 1U);
    EXPECT_EQ(runs, 0);
    EXPECT_EQ(Opened(), Texts{});
}

TEST_F(PlayRequestsTest, ThreeItemsSaveTheSelection) {
    SelectTwoRows();
    for (const char* name : {"mnuPlaylist", "mnuKontextPlaylist", "plist"}) {
        dialogs.file = folder / name;
        Action(name).trigger();
        EXPECT_TRUE(std::filesystem::exists(folder / name)) << name;
    }
    EXPECT_EQ(dialogs.shown, Texts(3, "save Playlist (*.m3u)|*.m3u " + folder.Path()));
    EXPECT_EQ(PanelText(Panel::Scanning), "");
    EXPECT_EQ(Form().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(PlayRequestsTest, WithNothingSelectedTheToolbarsItemSavesAHeaderAlone) {
    ASSERT_EQ(mainModule.SelectedRows.Count(), 0U);
    for (const char* name : {"plist", "mnuKontextPlaylist"}) {
        dialogs.file = folder / name;
        EXPECT_TRUE(Form().Parts().Commands.Run(name));
        EXPECT_EQ(ReadFile(folder / name), "#EXTM3U\r\n") << name;
    }
    dialogs.file = folder / "none";
    EXPECT_TRUE(Form().Parts().Commands.Run("mnuPlaylist"));
    EXPECT_FALSE(std::filesystem::exists(folder / "none"));
}

TEST_F(PlayRequestsTest, TheRandomButtonAndItsItemsPlayTheLibrary) {
    const Texts playlist{Temporary("Random.m3u")};
    QTest::mouseClick(&Control<PictureButton>("cmdRandomize"), Qt::LeftButton);
    EXPECT_EQ(Opened(), playlist);
    for (const char* name : {"mnuRandomPlay", "mnuKontextRandom"}) {
        Action(name).trigger();
        EXPECT_EQ(Opened(), playlist) << name;
    }
    EXPECT_EQ(Hits(), none);
}

TEST_F(PlayRequestsTest, TheTreesItemsPlayAndSaveACategory) {
    const auto run = [this](const char* name) { EXPECT_TRUE(Form().Parts().Commands.Run(name)) << name; };
    Form().Tree().Model().Select("CAT_Alpha");
    run("mnuPlay");
    EXPECT_EQ(Opened(), (Texts{Temporary("Alpha.m3u")}));
    run("mnuTreeRandom");
    EXPECT_EQ(Opened(), (Texts{Temporary("Random.m3u")}));
    dialogs.file = folder / "saved";
    run("mnuCreatePlaylist");
    EXPECT_TRUE(std::filesystem::exists(folder / "saved"));
    EXPECT_EQ(Hits(), none);
    Form().Tree().Model().Select("file1pos1");
    run("mnuPlay");
    EXPECT_EQ(Opened(), (Texts{"/music/Two.mp3"}));
    EXPECT_EQ(Hits(), (Texts{"0", "1", "0"}));
}

TEST_F(PlayRequestsTest, WhatPlaysASelectionIsGreyUntilARowIsClicked) {
    const Texts names{"mnuPlaySelectedItems", "mnuPlaylist", "plist", "mnuPlay"};
    for (const std::string& name : names) {
        EXPECT_FALSE(Action(name.c_str()).isEnabled()) << name;
    }
    EXPECT_FALSE(Control<PictureButton>("cmdPlay").isEnabled());
    EXPECT_TRUE(Control<PictureButton>("cmdRandomize").isEnabled());
    ClickRow(1);
    ClickRow(1);
    for (const std::string& name : names) {
        EXPECT_TRUE(Action(name.c_str()).isEnabled()) << name;
    }
    EXPECT_TRUE(Control<PictureButton>("cmdPlay").isEnabled());
}

} // namespace quavernet::test
