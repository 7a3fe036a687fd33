// The box with which the program ends, or ends and starts again.
#include "gui/GuiTest.h"

#include "adapters/qt/QtMsgBox.h"
#include "adapters/qt/QtShell.h"

#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <functional>
#include <iostream>

namespace quavernet::test {

namespace {

class RestartTest : public GuiTest {
protected:
    /// What the box with both buttons gives after an action on it.
    MsgBox::Answer After(const std::function<void(QMessageBox&)>& action) {
        QTimer::singleShot(0, [action] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            action(*box);
        });
        return boxes.Show("text", "title", MsgBox::Icon::Critical, MsgBox::Buttons::OkRestart);
    }

    QtMsgBox boxes;
};

} // namespace

TEST_F(RestartTest, TheSecondButtonRestartsAndTheFirstIsTheDefault) {
    QStringList captions;
    EXPECT_EQ(After([&](QMessageBox& box) {
                  for (const QAbstractButton* button : box.buttons()) {
                      captions.append(button->text().remove(u'&'));
                  }
                  EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::Ok));
                  box.findChild<QPushButton*>(QStringLiteral("cmdRestart"))->click();
              }),
              MsgBox::Answer::Restart);
    captions.sort();
    EXPECT_EQ(FromQString(captions.join(u'|')), "Neu starten|OK");
    EXPECT_EQ(After([](QMessageBox& box) { box.button(QMessageBox::Ok)->click(); }), MsgBox::Answer::Ok);
}

TEST_F(RestartTest, TheButtonIsThereInEnglish) {
    settings.values["Language"] = "ENG";
    (void)After([](QMessageBox& box) {
        EXPECT_EQ(FromQString(box.findChild<QPushButton*>(QStringLiteral("cmdRestart"))->text()), "Restart");
        box.close();
    });
}

TEST_F(RestartTest, ReturnEscapeAndAClosedBoxDoNotRestart) {
    EXPECT_EQ(After([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); }), MsgBox::Answer::Ok);
    EXPECT_EQ(After([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); }), MsgBox::Answer::Ok);
    EXPECT_EQ(After([](QMessageBox& box) { box.close(); }), MsgBox::Answer::Ok);
}

TEST_F(RestartTest, AProgramThatCanNotBeStartedAgainIsTold) {
    class PrintedBox : public ScriptedMsgBox {
    public:
        Answer Show(const std::string& text, const std::string& title, Icon, Buttons) override {
            std::cerr << title << ": " << text << "\n";
            return Answer::Ok;
        }
    };
    const QString missing = ToQString(folder / "gone");
    EXPECT_EXIT(
        {
            PrintedBox box;
            services.msgBox = &box;
            QtShell([] {}, missing).EndProcessAndStartAgain(1);
        },
        ::testing::ExitedWithCode(1),
        "Programm wird beendet: Quavernet konnte nicht wieder gestartet werden.");
}

} // namespace quavernet::test
