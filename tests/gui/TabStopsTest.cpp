// Every window is walked by Tab: each control that takes the keyboard is reached, and a screen reader has a
// name for it.
#include "gui/AllDialogs.h"

#include <QAccessible>
#include <QRadioButton>

#include <set>

namespace quavernet::test {

namespace {

class TabStopsTest : public AllDialogsTest {
protected:
    /// Walks once round; tells the stops, and those without a name.
    static std::set<const QWidget*> Walk(QWidget& window, Texts& nameless) {
        constexpr int MostStops = 100;
        std::set<const QWidget*> stops;
        window.activateWindow();
        QTest::keyClick(&window, Qt::Key_Tab);
        for (int step = 0; step < MostStops; ++step) {
            QWidget* stop = window.focusWidget();
            if (stop == nullptr || !stops.insert(stop).second) {
                break;
            }
            const QAccessibleInterface* access = QAccessible::queryAccessibleInterface(stop);
            if (access == nullptr || access->text(QAccessible::Name).trimmed().isEmpty()) {
                nameless.push_back(FromQString(stop->objectName()) + " " + stop->metaObject()->className());
            }
            QTest::keyClick(stop, Qt::Key_Tab);
        }
        return stops;
    }

    void ExpectNamedStops() {
        for (const auto& dialog : Dialogs()) {
            Texts nameless;
            const auto stops = Walk(*dialog, nameless);
            const std::string name = FromQString(dialog->objectName());
            EXPECT_EQ(nameless, Texts()) << name;
            EXPECT_FALSE(stops.empty()) << name;
            for (const QAbstractButton* button : dialog->findChildren<QAbstractButton*>()) {
                // Of a group of option buttons Tab reaches one; the arrow keys reach the others.
                const bool isOption = qobject_cast<const QRadioButton*>(button) != nullptr;
                if (button->isVisible() && button->isEnabled() && !isOption &&
                    button->focusPolicy() != Qt::NoFocus) {
                    EXPECT_TRUE(stops.contains(button)) << name << " " << FromQString(button->objectName());
                }
            }
        }
    }
};

} // namespace

TEST_F(TabStopsTest, EachStopOfEachDialogHasANameInGerman) {
    ExpectNamedStops();
}

TEST_F(TabStopsTest, EachStopOfEachDialogHasANameInEnglish) {
    settings.values["Language"] = "ENG";
    ExpectNamedStops();
}

} // namespace quavernet::test
