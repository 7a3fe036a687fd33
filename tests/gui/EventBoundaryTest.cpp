#include "gui/GuiTest.h"

#include "adapters/qt/Application.h"
#include "platform/LibraryError.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>

#include <QEventLoop>
#include <QTimer>

namespace quavernet::test {

namespace {

/// Prints a box to the error output, where the test of a process that ends can read it.
class PrintingMsgBox : public MsgBox {
public:
    Answer ShowWithDetails(const std::string& text, const std::string& details, const std::string& title,
                           Icon icon, Buttons buttons) override {
        (void)Show(text, title, icon, buttons);
        std::fprintf(stderr, "<%s>\n", details.c_str());
        return answer;
    }
    Answer Show(const std::string& text, const std::string& title, Icon icon, Buttons buttons) override {
        std::fprintf(stderr, "[%s] %s (%s)%s\n", title.c_str(), text.c_str(),
                     icon == Icon::Critical ? "critical" : "other",
                     buttons == Buttons::OkRestart ? "" : " no restart");
        return answer;
    }

    Answer answer = Answer::Ok;
};

class EndingShell : public RecordingShell {
public:
    void EndProcess(int exitCode) override { std::_Exit(exitCode); }
    void EndProcessAndStartAgain(int exitCode) override {
        std::fputs("(started again)", stderr);
        std::_Exit(exitCode);
    }
};

class EventBoundaryTest : public GuiTest {
protected:
    EventBoundaryTest() {
        ::testing::FLAGS_gtest_death_test_style = "threadsafe";
        services.msgBox = &box;
        services.shell = &endingShell;
        endingShell.documents = folder.Path();
        endingShell.programFolder = shell.programFolder;
    }
    const std::string entryOfNoCategory =
        "Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (1, 1, 1, "
        "'Gone', 'One.mp3')";

    static Application& App() { return *static_cast<Application*>(QCoreApplication::instance()); }

    PrintingMsgBox box;
    EndingShell endingShell;
};

} // namespace

TEST_F(EventBoundaryTest, AFailureInAnEventIsShownAndEndsTheProcess) {
    EXPECT_EXIT(
        {
            QTimer timer;
            timer.setObjectName(QStringLiteral("Timer1"));
            QObject::connect(&timer, &QTimer::timeout, [] { throw RuntimeError(6, "Overflow"); });
            timer.start(0);
            QTest::qWait(50);
        },
        ::testing::ExitedWithCode(1),
        "\\[Programm wird beendet\\] Fehler: 6 - Overflow\n\\(Timer1\\)\nDas Programm wird beendet. "
        ".critical");
}

TEST_F(EventBoundaryTest, TheBoxNamesWhatWasBeingDone) {
    EXPECT_EXIT(
        {
            Start();
            App().SetActivity([this] { return windows->Activity(); });
            mainModule.Connection->Execute("drop table Titel");
            QTest::mouseClick(&Control<QPushButton>("cmdSearch"), Qt::LeftButton);
        },
        ::testing::ExitedWithCode(1), "Titel\n\\(Lade Datenbank\\.\\.\\.\\)");
}

TEST_F(EventBoundaryTest, AFailureOfTheStartNamesTheStartAndNotThatTheProgramIsReady) {
    settings.values["SplitterPos"] = "wide";
    EXPECT_EXIT(
        {
            windows = std::make_unique<AppWindows>();
            App().SetActivity([this] { return windows->Activity(); });
            App().RunGuarded("Main", [this] { Main(*windows); });
        },
        ::testing::ExitedWithCode(1), "Type mismatch\n\\(Main\\)\nDas Programm wird beendet");
}

TEST_F(EventBoundaryTest, ALibraryThatGoesBadWhileTheProgramWorksIsToldWithTheWayBack) {
    ::testing::FLAGS_gtest_death_test_style = "fast";
    AddFile("Abba", "One");
    const std::string path = folder / "Quavernet Database/Quavernet.db";
    mainModule.Connection->Backup();
    EXPECT_EXIT(
        App().RunGuarded("Test",
                         [&path] { throw LibraryError(LibraryFault::Damaged, path, 11, "malformed"); }),
        ::testing::ExitedWithCode(1),
        "Fehler: 11 - malformed\n\\(Test\\)\nDas Programm wird beendet. .critical.\n"
        "<Die Datenbank ist beschädigt.\nDatenbank: .*Quavernet.db\n\nDaneben liegen Sicherungskopien, die "
        "neueste zuerst:\n.*Quavernet.backup1.db .*\n\nSo holen Sie");
}

TEST_F(EventBoundaryTest, WhatWasWrittenBeforeStaysWritten) {
    // Forked, so that the process that ends works in this test's own folder.
    ::testing::FLAGS_gtest_death_test_style = "fast";
    EXPECT_EXIT(
        {
            AddFile("Abba", "One");
            App().RunGuarded("Test", [] {
                mainModule.Connection->Execute("Insert into Categories (Category) values ('kept')");
                throw RuntimeError(5, "Invalid procedure call or argument");
            });
        },
        ::testing::ExitedWithCode(1), "Fehler: 5 - Invalid procedure call or argument\n\\(Test\\)");
    const auto library = services.createConnection();
    library->Open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" +
                  (folder / "Quavernet Database/Quavernet.db"));
    EXPECT_EQ(library->Query("Select Category from Categories").At(0, 0).Text(), "kept");
}

TEST_F(EventBoundaryTest, ASettingThatIsNoNumberIsNamedWithItsText) {
    settings.values["WindowWidth"] = "99999999999999";
    EXPECT_EXIT(App().RunGuarded("Start", [this] { Start(); }), ::testing::ExitedWithCode(1),
                "Fehler: 6 - Overflow\n\\(Start\\)\nDas Programm wird beendet. .critical.\n"
                "<Diese Einstellung ist keine Zahl, mit der das Programm arbeiten kann: "
                "WindowWidth=99999999999999>");
}

TEST_F(EventBoundaryTest, WhatWasWrittenIsInTheFileBeforeTheProgramWaitsForItsUser) {
    AddFile("Abba", "One");
    mainModule.Connection->Commit();
    const auto inTheFile = [this] {
        const auto reader = services.createConnection();
        reader->Open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" +
                     (folder / "Quavernet Database/Quavernet.db"));
        return reader->Query("Select Category from Categories").Rows();
    };
    mainModule.Connection->Execute("Insert into Categories (Category) values ('new')");
    ASSERT_EQ(inTheFile(), 0U) << "commits are gathered";
    QEventLoop waiting;
    QTimer::singleShot(50, &waiting, &QEventLoop::quit);
    waiting.exec();
    EXPECT_EQ(inTheFile(), 1U);
}

TEST_F(EventBoundaryTest, TheBoxOffersToStartAgainAndTheProcessEndsWithItsCodeAllTheSame) {
    box.answer = MsgBox::Answer::Restart;
    EXPECT_EXIT(App().RunGuarded("Test", [] { throw RuntimeError(6, "Overflow"); }),
                ::testing::ExitedWithCode(1), "wird beendet. .critical.\n<>\n.started again.$");
}

TEST_F(EventBoundaryTest, AFaultOfTheTreeThatArisesInTheRunEndsTheProgram) {
    EXPECT_EXIT(
        {
            AddFile("Abba", "One");
            Start();
            App().RunGuarded("Test", [this] {
                mainModule.Connection->Execute(entryOfNoCategory);
                Form().Parts().Views.LoadTree();
            });
        },
        ::testing::ExitedWithCode(1), "Fehler: 35601");
}

TEST_F(EventBoundaryTest, TheNextStartComesUpAndNamesTheFaultOnce) {
    AddFile("Abba", "One");
    mainModule.Connection->Execute(entryOfNoCategory);
    Start();
    EXPECT_THAT(PanelText(Panel::Scanning), ::testing::StartsWith("Bereit! Fehler im Baum: Gone (35601 - "));
    EXPECT_EQ(windows->Activity(), "") << "it is no work that goes on";
    Form().Parts().Views.LoadTree();
}

TEST_F(EventBoundaryTest, AForeignExceptionEndsTheProcessToo) {
    EXPECT_EXIT(App().RunGuarded("Test", [] { throw std::runtime_error("strange"); }),
                ::testing::ExitedWithCode(1), "Fehler: strange");
}

TEST_F(EventBoundaryTest, ClosingTheLastWindowEndsTheProcessWithoutAFailureCode) {
    EXPECT_EXIT(
        {
            Start();
            Form().close();
        },
        ::testing::ExitedWithCode(0), "");
}

} // namespace quavernet::test
