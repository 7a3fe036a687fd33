#include "gui/AllDialogs.h"

#include "widgets/Mnemonics.h"

#include <QCheckBox>
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>

#include <map>
#include <set>

namespace quavernet::test {

namespace {

class DialogMannersTest : public AllDialogsTest {
protected:
    /// Captions that the keyboard can reach by a letter: those of buttons and of labels that lead to a
    /// control.
    static std::vector<QString> Captions(const QWidget& window) {
        std::vector<QString> captions;
        for (const QWidget* child : window.findChildren<QWidget*>()) {
            const auto* button = qobject_cast<const QAbstractButton*>(child);
            const auto* label = qobject_cast<const QLabel*>(child);
            if (button != nullptr && !button->text().isEmpty()) {
                captions.push_back(button->text());
            } else if (label != nullptr && label->buddy() != nullptr) {
                captions.push_back(label->text());
            }
        }
        return captions;
    }
};

} // namespace

TEST_F(DialogMannersTest, InEachLanguageEveryCaptionOfADialogHasALetterOfItsOwn) {
    for (const char* language : {"GER", "ENG"}) {
        settings.values["Language"] = language;
        for (const auto& dialog : Dialogs()) {
            std::map<QChar, QString> taken;
            for (const QString& caption : Captions(*dialog)) {
                const qsizetype mark = caption.indexOf(u'&');
                ASSERT_GE(mark, 0) << language << " " << FromQString(dialog->objectName()) << ": "
                                   << FromQString(caption);
                const QString& other = taken.try_emplace(caption[mark + 1].toLower(), caption).first->second;
                EXPECT_EQ(FromQString(other), FromQString(caption)) << FromQString(dialog->objectName());
            }
            EXPECT_FALSE(taken.empty()) << FromQString(dialog->objectName());
        }
    }
}

TEST_F(DialogMannersTest, ALetterWithAltPressesItsButtonAndLeadsToItsField) {
    frmKonvertOptions options(&Form());
    options.show();
    options.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&options));
    auto& box = *options.findChild<QCheckBox*>(QStringLiteral("chkCombine"));
    const bool before = box.isChecked();
    const auto press = [&](const QString& caption) {
        const QChar letter = caption[caption.indexOf(u'&') + 1].toUpper();
        QTest::keyClick(options.windowHandle(), static_cast<Qt::Key>(letter.unicode()), Qt::AltModifier);
    };
    press(box.text());
    EXPECT_TRUE(QTest::qWaitFor([&] { return box.isChecked() != before; })) << "as a click that can be seen";
    press(options.findChild<QLabel*>(QStringLiteral("Label2"))->text());
    EXPECT_EQ(options.focusWidget(), options.findChild<QLineEdit*>(QStringLiteral("txtTarget")));
}

TEST_F(DialogMannersTest, LettersAreMarkedAgainWhenTheTextsChange) {
    QWidget window;
    QCheckBox first(QStringLiteral("Play"), &window);
    QCheckBox second(QStringLiteral("Pause && Stop"), &window);
    MarkMnemonics(window);
    EXPECT_EQ(first.text(), QStringLiteral("&Play"));
    EXPECT_EQ(second.text(), QStringLiteral("Pause && &Stop"));
    first.setText(QStringLiteral("Stop"));
    MarkMnemonics(window);
    EXPECT_EQ(first.text(), QStringLiteral("&Stop"));
    EXPECT_EQ(second.text(), QStringLiteral("&Pause && Stop"));
    first.setText(QStringLiteral("12 ÄÖÜ"));
    MarkMnemonics(window);
    EXPECT_EQ(first.text(), QStringLiteral("12 ÄÖÜ")) << "no letter that every keyboard has";
}

TEST_F(DialogMannersTest, EveryDialogIsWideEnoughForItsTitle) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::TitleFont);
    font.setBold(true);
    for (const char* language : {"GER", "ENG"}) {
        settings.values["Language"] = language;
        for (const auto& dialog : Dialogs()) {
            EXPECT_GE(dialog->width(), QFontMetrics(font).horizontalAdvance(dialog->windowTitle()) + 100)
                << language << " " << FromQString(dialog->windowTitle());
        }
        frmRemind remind(&Form());
        remind.show();
        remind.setWindowTitle(QString(120, u'W'));
        const int title = QFontMetrics(font).horizontalAdvance(remind.windowTitle());
        EXPECT_TRUE(QTest::qWaitFor([&] { return remind.width() >= title; })) << remind.width();
    }
}

TEST_F(DialogMannersTest, ADialogThatHoldsTheProgramCannotBeMinimised) {
    for (const auto& dialog : ModalDialogs()) {
        dialog->showMaximized();
        dialog->showMinimized();
        (void)QTest::qWaitFor([&] { return !dialog->isMinimized(); }, 1000);
        EXPECT_FALSE(dialog->isMinimized()) << FromQString(dialog->objectName());
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_TRUE(dialog->isMaximized()) << "as it was";
    }
}

TEST_F(DialogMannersTest, ADialogBesideTheMainWindowIsMinimisedTogetherWithItAlone) {
    int tried = 0;
    for (const auto& dialog : Dialogs()) {
        if (dialog->objectName() == QLatin1String("frmScanLog") ||
            dialog->objectName() == QLatin1String("frmChart")) {
            ++tried;
            dialog->showMinimized();
            EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog->isMinimized(); }, 1000));
            Form().showMinimized();
            dialog->showMinimized();
            QTest::qWait(150);
            EXPECT_TRUE(dialog->isMinimized()) << "or the main window would come back with it";
            Form().showNormal();
        }
    }
    EXPECT_EQ(tried, 2) << "the log and the chart";
}

TEST_F(DialogMannersTest, TabsHaveLettersOfTheirOwn) {
    for (const char* language : {"GER", "ENG"}) {
        settings.values["Language"] = language;
        frmCovers covers(&Form());
        covers.Form_Load();
        auto& tabs = *covers.findChild<QTabWidget*>(QStringLiteral("SSTab1"));
        std::set<QChar> taken;
        for (const QString& caption : Captions(covers)) {
            taken.insert(caption[caption.indexOf(u'&') + 1].toLower());
        }
        for (int tab = 0; tab < tabs.count(); ++tab) {
            const qsizetype mark = tabs.tabText(tab).indexOf(u'&');
            ASSERT_GE(mark, 0) << FromQString(tabs.tabText(tab));
            EXPECT_TRUE(taken.insert(tabs.tabText(tab)[mark + 1].toLower()).second)
                << FromQString(tabs.tabText(tab));
        }
    }
}

} // namespace quavernet::test
