#include "mainwindow/CloseGuard.h"

#include "support/LogicTest.h"

namespace quavernet::test {

namespace {

class CloseGuardTest : public LogicTest {
protected:
    /// The exit code, or -1 if the process lives on.
    int Finish() {
        try {
            FinishMainUnload();
        } catch (const ProcessEnded& end) {
            return end.exitCode;
        }
        return -1;
    }
};

} // namespace

TEST_F(CloseGuardTest, ARunningScanRefusesTheClose) {
    mainModule.ScanRunning = true;
    EXPECT_EQ(QueryCloseMain(), CloseAnswer::Stay);
    EXPECT_EQ(msgBox.shown, (std::vector<ShownBox>{
                                {"Der Scanvorgang ist noch nicht beendet! Bitte brechen Sie diesen vor dem "
                                 "Schliessen des Programmes ab.",
                                 "Programm beenden", MsgBox::Icon::Information, MsgBox::Buttons::Ok}}));
}

TEST_F(CloseGuardTest, WithoutAScanTheWindowClosesSilently) {
    EXPECT_EQ(QueryCloseMain(), CloseAnswer::Close);
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(CloseGuardTest, TheWindowClosesLaterThanACommandThatActsAlone) {
    mainModule.ActsAlone = true;
    EXPECT_EQ(QueryCloseMain(), CloseAnswer::Later);
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(CloseGuardTest, TheLastWindowEndsTheProcess) {
    mainModule.MainOpen = true;
    EXPECT_EQ(Finish(), 0);
    EXPECT_FALSE(mainModule.MainOpen);
    EXPECT_EQ(events.count, 1);
}

TEST_F(CloseGuardTest, AnOpenPlayerKeepsTheProcessAlive) {
    mainModule.MainOpen = true;
    mainModule.PlayerOpen = true;
    EXPECT_EQ(Finish(), -1);
    EXPECT_FALSE(mainModule.MainOpen);
}

TEST_F(CloseGuardTest, PendingEventsRunWhileTheWindowStillCountsAsOpen) {
    mainModule.MainOpen = true;
    mainModule.PlayerOpen = true;
    bool openDuringEvents = false;
    events.onDoEvents = [&] {
        openDuringEvents = mainModule.MainOpen;
        mainModule.PlayerOpen = false; // The player closes in between: nobody else would end the process.
    };
    EXPECT_EQ(Finish(), 0);
    EXPECT_TRUE(openDuringEvents);
}

} // namespace quavernet::test
