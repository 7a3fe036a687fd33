#include "gui/GuiTest.h"

#include "app/LoadResString.h"
#include "scanner/frmRemind.h"
#include "support/TestLibrary.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <algorithm>

namespace quavernet::test {

namespace {

class RemindTest : public GuiTest {
protected:
    RemindTest() { Start(); }

    void SetReminder(const std::string& flag, const std::string& date, const std::string& period) {
        mainModule.Connection->Execute("Insert Into Reminder (RemindFlag, RemindDate, ScanPeriode) values (" +
                                       flag + ", '" + date + "', '" + period + "')");
    }
    Texts Stored() {
        return RowTextsOf(*mainModule.Connection, "Select RemindFlag, RemindDate, ScanPeriode from Reminder");
    }
    void Open() {
        dialog = std::make_unique<frmRemind>(&Form());
        dialog->show();
        dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == dialog.get(); }));
    }
    template <typename T> T& Part(const char* name) { return *dialog->findChild<T*>(QLatin1String(name)); }
    std::string Text(const char* name) { return Caption(Part<QAbstractButton>(name).text()); }
    std::string Label(const char* name) { return Caption(Part<QLabel>(name).text()); }
    std::string CheckedOption() {
        for (const char* name : {"optDaily", "optWeekly", "optMonthly", "optYearly"}) {
            if (Part<QRadioButton>(name).isChecked()) {
                return name;
            }
        }
        return {};
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QWidget* focus = dialog->focusWidget();
        QTest::keyClick(focus != nullptr ? focus : dialog.get(), key, modifiers);
    }

    std::unique_ptr<frmRemind> dialog;
};

} // namespace

TEST_F(RemindTest, TheChoicesStandAndFollowEachOtherInReadingOrder) {
    Open();
    std::vector<std::pair<int, int>> places;
    for (const char* name : {"optDaily", "optWeekly", "optMonthly", "optYearly"}) {
        const QPoint place = Part<QRadioButton>(name).pos();
        places.emplace_back(place.y(), place.x());
    }
    EXPECT_TRUE(std::is_sorted(places.begin(), places.end()));
    Part<QRadioButton>("optDaily").setFocus();
    Texts visited;
    for (int i = 0; i < 4; ++i) {
        visited.push_back(FromQString(dialog->focusWidget()->objectName()));
        Press(Qt::Key_Down);
    }
    EXPECT_EQ(visited, (Texts{"optDaily", "optWeekly", "optMonthly", "optYearly"}));
}

TEST_F(RemindTest, AFlagOtherThanOneLeavesTheBoxCleared) {
    SetReminder("2", "01.02.2027", "m");
    Open();
    EXPECT_EQ(Part<QCheckBox>("chkRemind").checkState(), Qt::Unchecked);
    EXPECT_EQ(Label("lblDate"), "Erinnerung nicht aktiviert!");
    EXPECT_EQ(CheckedOption(), "optMonthly");
}

TEST_F(RemindTest, TheCaptionsAreThoseOfTheLanguage) {
    Open();
    EXPECT_EQ(FromQString(dialog->windowTitle()), "Scan Erinnerung");
    EXPECT_EQ(Text("cmdOK"), "Speichern");
    EXPECT_EQ(Text("cmdCancel"), "Abbrechen");
    EXPECT_EQ(Text("chkRemind"), "Aktivieren");
    EXPECT_EQ(Label("Label1"), "Wann?");
    EXPECT_EQ(Text("optDaily"), "Täglich");
    EXPECT_EQ(Text("optMonthly"), "Monatlich");
    EXPECT_EQ(Text("optWeekly"), "Wöchentlich");
    EXPECT_EQ(Text("optYearly"), "Jährlich");

    settings.values["Language"] = "ENG";
    Open();
    const std::pair<const char*, int> buttons[] = {{"cmdOK", 110},    {"cmdCancel", 102},  {"chkRemind", 571},
                                                   {"optDaily", 573}, {"optMonthly", 574}, {"optWeekly", 575},
                                                   {"optYearly", 576}};
    for (const auto& [name, id] : buttons) {
        EXPECT_EQ(Text(name), QuavernetENG.GetResourceString(id)) << name;
    }
    EXPECT_EQ(FromQString(dialog->windowTitle()), QuavernetENG.GetResourceString(577));
    EXPECT_EQ(Label("lblDate"), QuavernetENG.GetResourceString(408));
}

TEST_F(RemindTest, WithoutARowTheReminderIsOff) {
    Open();
    EXPECT_FALSE(Part<QCheckBox>("chkRemind").isChecked());
    EXPECT_EQ(Label("lblDate"), "Erinnerung nicht aktiviert!");
    EXPECT_EQ(CheckedOption(), "optDaily");
}

TEST_F(RemindTest, TheStoredReminderIsShown) {
    SetReminder("1", "24.12.2026", "m");
    Open();
    EXPECT_TRUE(Part<QCheckBox>("chkRemind").isChecked());
    EXPECT_EQ(CheckedOption(), "optMonthly");
    EXPECT_EQ(Label("lblDate"), "Nächste Erinnerung am 24.12.2026");
}

TEST_F(RemindTest, EachStoredPeriodHasItsOption) {
    SetReminder("0", "24.12.2026", "d");
    const std::pair<const char*, const char*> periods[] = {
        {"d", "optDaily"}, {"w", "optWeekly"}, {"m", "optMonthly"}, {"y", "optYearly"}};
    for (const auto& [letter, option] : periods) {
        mainModule.Connection->Execute("Update Reminder set ScanPeriode = '" + std::string(letter) + "'");
        Open();
        EXPECT_EQ(CheckedOption(), option);
    }
}

TEST_F(RemindTest, TheKeyboardAloneSetsAReminder) {
    Open();
    EXPECT_EQ(dialog->focusWidget(), &Part<QCheckBox>("chkRemind"));
    Press(Qt::Key_Space);
    Press(Qt::Key_Tab);
    EXPECT_EQ(dialog->focusWidget(), &Part<QRadioButton>("optDaily"));
    Press(Qt::Key_Down);
    EXPECT_EQ(CheckedOption(), "optWeekly");
    Press(Qt::Key_Return);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Stored(), Texts{"1|27.11.2026|w"});
}

TEST_F(RemindTest, TabsGoThroughTheOptionsToTheButtons) {
    Open();
    Press(Qt::Key_Tab);
    Press(Qt::Key_Tab);
    EXPECT_EQ(dialog->focusWidget(), &Part<QPushButton>("cmdOK"));
    Press(Qt::Key_Tab);
    EXPECT_EQ(dialog->focusWidget(), &Part<QPushButton>("cmdCancel"));
}

TEST_F(RemindTest, EachOptionIsStoredWithItsDate) {
    const std::pair<const char*, const char*> cases[] = {{"optDaily", "0|21.11.2026|d"},
                                                         {"optWeekly", "0|27.11.2026|w"},
                                                         {"optMonthly", "0|20.12.2026|m"},
                                                         {"optYearly", "0|20.11.2027|y"}};
    for (const auto& [option, stored] : cases) {
        Open();
        Part<QRadioButton>(option).click();
        Part<QPushButton>("cmdOK").click();
        EXPECT_EQ(Stored(), Texts{stored});
    }
}

TEST_F(RemindTest, EscapeAndCancelChangeNothing) {
    SetReminder("1", "24.12.2026", "m");
    Open();
    Part<QRadioButton>("optYearly").click();
    Press(Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
    Open();
    Part<QCheckBox>("chkRemind").click();
    Part<QPushButton>("cmdCancel").click();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(Stored(), Texts{"1|24.12.2026|m"});
}

TEST_F(RemindTest, F1OnEachControlOpensItsHelpPage) {
    Open();
    for (const char* name :
         {"chkRemind", "optDaily", "optWeekly", "optMonthly", "optYearly", "cmdOK", "cmdCancel"}) {
        helpViewer.shown.clear();
        QTest::keyClick(&Part<QWidget>(name), Qt::Key_F1);
        ASSERT_EQ(helpViewer.shown.size(), 1U) << name;
        EXPECT_EQ(helpViewer.shown[0].second, "HTML\\scanreminder.html") << name;
    }
}

TEST_F(RemindTest, TheMenuOpensItModalOverTheMainWindow) {
    bool seen = false;
    QTimer::singleShot(0, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        seen = modal != nullptr && modal->objectName() == QLatin1String("frmRemind") &&
               modal->parentWidget() == &Form();
        if (modal != nullptr) {
            modal->close();
        }
    });
    Action("mnuRemind").trigger();
    EXPECT_TRUE(seen);
    EXPECT_EQ(Stored(), Texts{});
}

} // namespace quavernet::test
