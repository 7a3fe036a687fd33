#include "scanner/GetFilesCount.h"

#include "support/ScanTest.h"

#include <gtest/gtest.h>

namespace quavernet::test {
namespace {

class GetFilesCountTest : public ScanTest {
protected:
    GetFilesCountTest() {
        run.Recursive = true;
        run.texts.Initialise = "Initialisiere Ordner ";
        run.StatusDots = run.texts.Initialise;
        work.SetPanel(Panel::Scanning, run.StatusDots);
        calls.clear();
    }

    double CountFiles() {
        const auto walk = volumes.GetFolder(music.Path());
        GetFilesCount(run, *walk);
        return run.FilesTotal;
    }

    ScanRun run{work, view, log};
};

TEST_F(GetFilesCountTest, PlainFilesOfEveryKindCountAndHiddenOnesDoNot) {
    Write("a.mp3");
    Write("b.txt");
    Write(".c.mp3");
    Write("sub/d.jpg");
    Write(".hidden/e.mp3");
    Write(".hidden/.f.mp3");

    EXPECT_EQ(CountFiles(), 4);
    EXPECT_EQ(calls.size(), 4u) << "one dot for each";
}

TEST_F(GetFilesCountTest, WithoutSubfoldersOnlyTheFolderItselfCounts) {
    Write("a.mp3");
    Write("sub/b.mp3");
    run.Recursive = false;

    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(GetFilesCountTest, TheRestoreDataOfAnotherSystemAndAllBelowItAreLeftOut) {
    Write("a.mp3");
    Write("System Volume Information/b.mp3");
    Write("my SYSTEM volume informations/sub/c.mp3");

    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(GetFilesCountTest, EventsRunOnceAFolder) {
    Write("a.mp3");
    Write("b.mp3");
    Write("sub/c.mp3");
    Write("System Volume Information/d.mp3");
    CountFiles();

    EXPECT_EQ(events.count, 2);
}

TEST_F(GetFilesCountTest, ACancelLeavesTheRest) {
    Write("a.mp3");
    Write("sub/b.mp3");
    events.onDoEvents = [&] { run.work.SetCancelled(true); };

    EXPECT_EQ(CountFiles(), 1) << "the folder whose events set the flag is still counted";
}

TEST_F(GetFilesCountTest, TheDotsGrowToTheirLimitAndBeginAgain) {
    for (int i = 0; i < 85; ++i) {
        Write(std::to_string(i) + ".mp3");
    }
    CountFiles();

    EXPECT_EQ(calls[0], "panel 1: Initialisiere Ordner .");
    EXPECT_EQ(calls[1], "panel 1: Initialisiere Ordner ..");
    EXPECT_EQ(calls[80], "panel 1: Initialisiere Ordner " + std::string(81, '.')) << "102 characters";
    EXPECT_EQ(calls[81], "panel 1: Initialisiere Ordner ");
    EXPECT_EQ(calls[82], "panel 1: Initialisiere Ordner .");
}

TEST_F(GetFilesCountTest, ATextPutThereInBetweenGrowsOn) {
    Write("a.mp3");
    work.SetPanel(Panel::Scanning, "other");
    CountFiles();

    EXPECT_EQ(work.panels[1], "other.");
    EXPECT_EQ(run.StatusDots, "other");
}

TEST_F(GetFilesCountTest, UmlautsCountAsOneCharacter) {
    Write("a.mp3");
    std::string text;
    for (int i = 0; i < 100; ++i) {
        text += "ä";
    }
    run.StatusDots = text;
    work.SetPanel(Panel::Scanning, text);
    CountFiles();

    EXPECT_EQ(work.panels[1], text + ".");
}

} // namespace
} // namespace quavernet::test
