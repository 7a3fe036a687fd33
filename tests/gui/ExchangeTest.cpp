// Export and import of the tree by the real menus.
#include "gui/GuiTest.h"

#include "support/SmallAudio.h"
#include "support/TestFiles.h"
#include "tree/TreeModel.h"

namespace quavernet::test {

namespace {

class ExchangeTest : public GuiTest {
protected:
    ExchangeTest() {
        AddFile("Abba", "One");
        WriteFile(path, "#Categories\nJazz\n#Files\n3,Jazz,One.mp3,/music/One.mp3\n");
        dialogs.file = path;
    }
    std::size_t Categories() { return Form().Parts().Tree.Model().Node("Parent").Children.size(); }

    const std::string path = folder / "tree.qvn";
};

/// Does something in the middle of long work, each time when events are let run.
class MeddlingEvents : public QtEvents {
public:
    void DoEvents() override {
        QtEvents::DoEvents();
        if (meddle) {
            meddle();
        }
    }
    std::function<void()> meddle;
};

} // namespace

TEST_F(ExchangeTest, BothMenusImportAndTheTreeShowsIt) {
    Start();
    Action("mnuFileImport").trigger();
    EXPECT_EQ(Categories(), 1U);
    EXPECT_EQ(Form().Parts().Tree.Model().Node("CAT_Jazz").Children.front()->Key, "file1pos3");
    Action("mnuImport").trigger();
    EXPECT_EQ(Categories(), 2U);
    EXPECT_EQ(Form().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(ExchangeTest, BothMenusExport) {
    Start();
    Action("mnuFileImport").trigger();
    for (const char* name : {"mnuFileExport", "mnuExport"}) {
        dialogs.file = folder / name;
        Action(name).trigger();
        EXPECT_EQ(ReadFile(folder / name), ReadFile(path));
    }
}

TEST_F(ExchangeTest, WhileUnknownFilesAreInspectedNoCommandActs) {
    WriteBytes(folder / "new.mp3", Mp3Bytes("Song", "Blue", "Best"));
    WriteFile(path, "#Categories\nJazz\n#Files\n1,Jazz,new.mp3," + (folder / "new.mp3") + "\n");
    MeddlingEvents meddling;
    Start();
    services.events = &meddling;
    int rounds = 0;
    meddling.meddle = [&] {
        ++rounds;
        Action("mnuFileImport").trigger();
        Action("mnuFileExport").trigger();
        Action("mnuViewLanguageENG").trigger();
        EXPECT_FALSE(Action("mnuViewLanguageENG").isChecked());
    };
    Action("mnuFileImport").trigger();
    EXPECT_GT(rounds, 0);
    EXPECT_EQ(dialogs.shown.size(), 1U);
    EXPECT_EQ(mainModule.Language, "GER");
    EXPECT_EQ(Categories(), 1U);
    services.events = &realEvents;
}

TEST_F(ExchangeTest, NothingIsExportedOrImportedWhileAScanRuns) {
    Start();
    mainModule.ScanRunning = true;
    for (const char* name : {"mnuFileImport", "mnuImport", "mnuFileExport", "mnuExport"}) {
        EXPECT_FALSE(Form().Parts().Commands.Run(name));
    }
    mainModule.ScanRunning = false;
    EXPECT_TRUE(dialogs.shown.empty());
}

} // namespace quavernet::test
