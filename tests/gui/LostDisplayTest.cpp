// What the toolkit says before it ends the process for the loss of a Wayland display is heard, whoever says
// it.
#include "gui/GuiTest.h"

#include "adapters/qt/LostDisplay.h"

#include <QDebug>
#include <QThread>

#include <atomic>
#include <memory>

namespace quavernet::test {

namespace {

constexpr const char* LastWords = "The Wayland connection broke. Did the Wayland compositor die?";

class LostDisplayTest : public GuiTest {
protected:
    int calls = 0;
    QThread* caller = nullptr;
    LostDisplay display{[this] {
        ++calls;
        caller = QThread::currentThread();
    }};
};

} // namespace

TEST_F(LostDisplayTest, TheWordsOfTheMainThreadAreHeardBeforeTheyReturn) {
    qWarning("%s", LastWords);
    EXPECT_EQ(calls, 1);
    qWarning("%s", LastWords);
    EXPECT_EQ(calls, 1) << "once only";
}

TEST_F(LostDisplayTest, AnotherThreadsWordsWaitForTheMainThread) {
    std::atomic<int> callsSeen = -1;
    const std::unique_ptr<QThread> other(QThread::create([&] {
        qWarning("%s", LastWords);
        callsSeen = calls;
    }));
    other->start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return callsSeen >= 0; }));
    other->wait();
    EXPECT_EQ(callsSeen, 1);
    EXPECT_EQ(caller, QThread::currentThread());
}

TEST_F(LostDisplayTest, OtherWordsAreNotMeant) {
    qWarning("The connection broke");
    qWarning("A file is named \"The Wayland connection broke\"");
    EXPECT_EQ(calls, 0);
}

} // namespace quavernet::test
