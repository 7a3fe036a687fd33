#include "gui/AllDialogs.h"

#include "app/IdleTitle.h"
#include "app/LoadResString.h"
#include "mainwindow/MainMenuTable.h"
#include "playback/frmPlayer.h"
#include "support/ScriptedPlayer.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTableView>

#include <set>

namespace quavernet::test {

namespace {

/// In each language all windows and menus are walked, and no text of the other one is met.
class OneLanguageTest : public AllDialogsTest {
protected:
    OneLanguageTest() {
        services.createMediaPlayer = [this] { return std::make_unique<ScriptedPlayer>(m_calls); };
    }
    ~OneLanguageTest() override { windows.reset(); }

    /// All that a window and what is in it say.
    static void Read(const QWidget& window, Texts& texts) {
        ReadOne(window, texts);
        for (const QWidget* child : window.findChildren<QWidget*>()) {
            ReadOne(*child, texts);
        }
        for (const QAction* action : window.findChildren<QAction*>()) {
            texts.push_back(Caption(action->text()));
            texts.push_back(FromQString(action->toolTip()));
        }
    }
    static void ReadOne(const QWidget& widget, Texts& texts) {
        for (const QString& text : {widget.toolTip(), widget.windowTitle(), widget.accessibleName(),
                                    widget.accessibleDescription(), widget.statusTip(), widget.whatsThis()}) {
            texts.push_back(FromQString(text));
        }
        if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
            texts.push_back(Caption(button->text()));
        } else if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
            texts.push_back(Caption(label->text()));
        } else if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) {
            texts.push_back(Caption(group->title()));
        } else if (const auto* field = qobject_cast<const QLineEdit*>(&widget)) {
            texts.push_back(FromQString(field->text()));
            texts.push_back(FromQString(field->placeholderText()));
        } else if (const auto* tabs = qobject_cast<const QTabWidget*>(&widget)) {
            for (int i = 0; i < tabs->count(); ++i) {
                texts.push_back(Caption(tabs->tabText(i)));
            }
        } else if (const auto* combo = qobject_cast<const QComboBox*>(&widget);
                   // The genres of the details are data: they read as the library has them.
                   combo != nullptr && combo->window()->objectName() != QLatin1String("frmDetails")) {
            for (int i = 0; i < combo->count(); ++i) {
                texts.push_back(FromQString(combo->itemText(i)));
            }
        } else if (const auto* table = qobject_cast<const QTableView*>(&widget)) {
            for (int i = 0; i < table->model()->columnCount(); ++i) {
                texts.push_back(FromQString(table->model()->headerData(i, Qt::Horizontal).toString()));
            }
        }
    }

    static std::set<std::string> Table(const clsResources& resources) {
        std::set<std::string> texts;
        for (const clsResources::Entry& entry : resources) {
            texts.emplace(entry.text);
        }
        return texts;
    }

    Texts AllTexts() {
        Texts texts;
        Read(Form(), texts);
        for (const auto& dialog : Dialogs()) {
            Read(*dialog, texts);
        }
        windows->Player().Show();
        Read(*windows->Player().Form(), texts);
        for (const Panel panel :
             {Panel::Scanning, Panel::Filecount, Panel::Interprets, Panel::Titles, Panel::Albums}) {
            texts.push_back(PanelText(panel));
        }
        return texts;
    }

    /// Parts of texts of the other language in texts that are put together: those long enough to be words
    /// that this language does not have.
    static bool Holds(const std::string& text, const std::string& piece) {
        constexpr std::size_t AWord = 6;
        return piece.size() >= AWord && text.find(piece) != std::string::npos;
    }

private:
    Texts m_calls; ///< Of the engine.
};

} // namespace

TEST_F(OneLanguageTest, NoWindowAndNoMenuShowsATextOfTheOtherLanguage) {
    for (const bool german : {true, false}) {
        Action(german ? "mnuViewLanguageGER" : "mnuViewLanguageENG").trigger();
        ExpectTitle(IdleTitle()); // It comes up with the next frame.
        const std::set<std::string> own = Table(german ? QuavernetGER : QuavernetENG);
        const std::set<std::string> foreign = Table(german ? QuavernetENG : QuavernetGER);
        std::size_t known = 0;
        for (const std::string& text : AllTexts()) {
            known += own.contains(text) ? 1 : 0;
            if (own.contains(text) || text.empty()) {
                continue;
            }
            for (const std::string& piece : foreign) {
                const bool isOwnToo = std::ranges::any_of(
                    own, [&](const std::string& mine) { return mine.find(piece) != std::string::npos; });
                EXPECT_FALSE(!isOwnToo && (text == piece || Holds(text, piece)))
                    << (german ? "German: " : "English: ") << text;
            }
        }
        EXPECT_GT(known, 150U) << "the walk has seen the program";
    }
}

// By design these are German in English, too; all others are one language.
TEST_F(OneLanguageTest, TheScanPathsFolderDialogIsGermanInBothLanguages) {
    settings.values["Language"] = "ENG";
    frmScanpath scanpath(&Form());
    scanpath.findChild<QPushButton*>(QStringLiteral("cmdBrowse"))->click();
    EXPECT_EQ(dialogs.titles, Texts{"Wählen Sie einen Ordner"});
    EXPECT_NE(LoadResString(342), "Wählen Sie einen Ordner") << "every other folder dialog is English";
}

TEST_F(OneLanguageTest, NoPanelShowsAUnitWithoutANumber) {
    CloseMain();
    settings.values["LoadOverSearch"] = "1";
    Start();
    for (const Panel panel : {Panel::Filecount, Panel::Interprets, Panel::Titles, Panel::Albums}) {
        EXPECT_EQ(PanelText(panel).front(), '0') << PanelText(panel);
    }
    EXPECT_EQ(PanelText(Panel::Filecount), "0 Dateien / (0,00 MB)");
}

} // namespace quavernet::test
