#include "gui/GuiTest.h"

#include "adapters/qt/QtDialogs.h"
#include "adapters/qt/QtMsgBox.h"
#include "app/LoadResString.h"
#include "help/QtHelpViewer.h"
#include "help/frmHelp.h"
#include "scanner/frmScanLog.h"
#include "support/RecordingConnection.h"

#include <QAbstractItemView>
#include <QFileDialog>
#include <QHeaderView>
#include <QMessageBox>
#include <QTimer>

#include <map>
#include <set>

namespace quavernet::test {

namespace {

/// Every text of a window by the control and property that shows it.
using ShownTexts = std::map<std::string, std::string>;

class Collector {
public:
    ShownTexts Take(const QWidget& form) {
        Add("window title", form.windowTitle());
        for (const QObject* object : form.findChildren<QObject*>()) {
            // What an open log, a dialog or the splash window shows is theirs.
            const auto* widget = qobject_cast<const QWidget*>(object);
            if (widget != nullptr && widget->window() != &form) {
                continue;
            }
            AddProperties(*object);
            if (widget != nullptr) {
                AddItems(*widget);
            }
        }
        return std::move(m_texts);
    }

private:
    void Add(const std::string& place, const QString& text) {
        if (!text.isEmpty()) {
            m_texts[place] = Caption(text);
        }
    }
    void AddProperties(const QObject& object) {
        if (object.objectName().isEmpty()) {
            return;
        }
        for (const char* property : {"text", "toolTip", "statusTip", "whatsThis", "placeholderText", "title",
                                     "accessibleName", "accessibleDescription"}) {
            const QVariant value = object.property(property);
            if (value.typeId() == QMetaType::QString) {
                Add(FromQString(object.objectName()) + "." + property, value.toString());
            }
        }
    }
    void AddItems(const QWidget& widget) {
        const std::string name = FromQString(widget.objectName());
        if (const auto* combo = qobject_cast<const QComboBox*>(&widget)) {
            for (int i = 0; i < combo->count(); ++i) {
                Add(name + " entry " + std::to_string(i), combo->itemText(i));
            }
        } else if (const auto* view = qobject_cast<const QAbstractItemView*>(&widget)) {
            if (name == "grdMp3" || name == "TreeView") {
                AddRows(name, *view->model(), {});
            }
        } else if (const auto* status = dynamic_cast<const MainStatusBar*>(&widget)) {
            for (const Panel panel :
                 {Panel::Scanning, Panel::Filecount, Panel::Interprets, Panel::Titles, Panel::Albums}) {
                const std::string place = "panel " + std::to_string(static_cast<int>(panel));
                Add(place, ToQString(status->Text(panel)));
                Add(place + " tip", status->ToolTip(panel));
            }
        }
    }
    void AddRows(const std::string& name, const QAbstractItemModel& model, const QModelIndex& parent) {
        for (int column = 0; column < model.columnCount(parent); ++column) {
            if (name == "grdMp3") {
                Add(name + " head " + std::to_string(column),
                    model.headerData(column, Qt::Horizontal).toString());
            }
            for (int row = 0; row < model.rowCount(parent); ++row) {
                const QModelIndex index = model.index(row, column, parent);
                Add(name + " " + std::to_string(m_row++), index.data().toString());
                if (column == 0) {
                    AddRows(name, model, index);
                }
            }
        }
    }

    ShownTexts m_texts;
    int m_row = 0;
};

/// The German text's numbers as English texts; empty if it is none of the program's texts.
std::set<std::string> EnglishOf(const std::string& german) {
    std::set<std::string> texts;
    // The tip of a menu item is its caption without dots.
    constexpr std::string_view Dots = "...";
    for (const auto& entry : QuavernetGER) {
        const std::string_view english = *QuavernetENG.GetResourceString(entry.id);
        if (entry.text == german) {
            texts.emplace(english);
        } else if (entry.text == german + std::string(Dots)) {
            texts.emplace(english.substr(0, english.size() - Dots.size()));
        }
    }
    return texts;
}

/// ShownTexts that are put together of several of the program's texts and of data.
const std::map<std::string, std::string> Composed = {
    {"Quavernet - letzter scan: -", "Quavernet - last scan: -"},
    {"2 Dateien / (2,00 MB)", "2 files / (2,00 MB)"},
    {"2 Interpreten", "2 performers"},
    {"2 Titel", "2 title(s)"},
    {"2 Alben", "2 albums"},
    {"2 Dateien / (2,00 MB) in der Datenbank gespeichert", "2 files / (2,00 MB) stored in the database"},
    {"2 Interpreten in der Datenbank gespeichert", "2 performers stored in the database"},
    {"2 Titel in der Datenbank gespeichert", "2 titles stored in the database"},
    {"2 Alben in der Datenbank gespeichert", "2 albums stored in the database"},
    {"Interpret", "Performer"},
    {"Titel", "Title"},
    {"Länge", "Length"},
    {"Grösse", "Size"},
    {"Qualität (Bit)", "Quality (bit)"},
    {"Format", "Format"},
};

class LanguageSwitchTest : public GuiTest {
protected:
    LanguageSwitchTest() {
        AddFile("Abba", "One");
        AddFile("Cure", "Two");
    }
    ShownTexts Shown() { return Collector().Take(Form()); }
    void SwitchTo(const char* item) {
        Action(item).trigger();
        // The title comes up with the next frame.
        (void)QTest::qWaitFor(
            [&] { return (Form().windowTitle().contains(u"letzter")) == (mainModule.Language == "GER"); },
            1000);
    }
};

/// Notes the pointer's shapes as they change.
class PointerWatch : public QObject {
public:
    explicit PointerWatch(QWidget& form) : m_form(form) { form.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::CursorChange &&
            (shapes.empty() || shapes.back() != m_form.cursor().shape())) {
            shapes.push_back(m_form.cursor().shape());
        }
        return false;
    }
    std::vector<Qt::CursorShape> shapes;

private:
    QWidget& m_form;
};

} // namespace

TEST_F(LanguageSwitchTest, EveryTextOfTheWindowIsTheSameTextInTheOtherLanguage) {
    Start();
    const ShownTexts german = Shown();
    SwitchTo("mnuViewLanguageENG");
    const ShownTexts english = Shown();
    std::size_t translated = 0;
    for (const auto& [place, before] : german) {
        ASSERT_TRUE(english.contains(place)) << place;
        const std::string& after = english.at(place);
        const auto composed = Composed.find(before);
        const std::set<std::string> meanings = EnglishOf(before);
        if (composed != Composed.end()) {
            EXPECT_EQ(after, composed->second) << place;
        } else if (!meanings.empty()) {
            EXPECT_TRUE(meanings.contains(after)) << place << ": " << before << " became " << after;
        } else {
            EXPECT_EQ(after, before) << place << " holds no text of the program";
        }
        translated += before != after ? 1U : 0U;
    }
    EXPECT_EQ(german.size(), english.size());
    EXPECT_GE(translated, 50U);

    SwitchTo("mnuViewLanguageGER");
    EXPECT_EQ(Shown(), german) << "and back";
}

TEST_F(LanguageSwitchTest, EachControlHasItsOwnText) {
    Start();
    const std::tuple<const char*, const char*, int> texts[] = {
        {"cmdSearch", "text", 123},       {"lblAll", "text", 543},      {"lblOther", "text", 544},
        {"chkInterpret", "text", 545},    {"chkTitle", "text", 546},    {"cboDrive", "toolTip", 592},
        {"cboGenre", "toolTip", 593},     {"cboAlbum", "toolTip", 594}, {"cmdPlay", "toolTip", 595},
        {"cmdRandomize", "toolTip", 596}, {"scan", "toolTip", 597},     {"cancel", "toolTip", 598},
        {"print", "toolTip", 599},        {"plist", "toolTip", 600},    {"konvert", "toolTip", 601},
        {"top", "toolTip", 602},          {"date", "toolTip", 603}};
    for (const char* language : {"mnuViewLanguageGER", "mnuViewLanguageENG"}) {
        Action(language).trigger();
        for (const auto& [name, property, id] : texts) {
            const auto* control = Form().findChild<QObject*>(QLatin1String(name));
            // Buttons of commands that are not there yet are not there either.
            if (control != nullptr) {
                EXPECT_EQ(FromQString(control->property(property).toString()), LoadResString(id)) << name;
            }
        }
    }
    for (const char* name : {"cmdSearch", "lblAll", "lblOther", "chkInterpret", "chkTitle", "cboDrive",
                             "cboGenre", "cboAlbum", "cmdPlay", "cmdRandomize", "scan", "cancel"}) {
        EXPECT_NE(Form().findChild<QObject*>(QLatin1String(name)), nullptr) << name;
    }
}

TEST_F(LanguageSwitchTest, AStartInEnglishShowsWhatTheSwitchShows) {
    Start();
    SwitchTo("mnuViewLanguageENG");
    const ShownTexts switched = Shown();
    CloseMain();
    settings.values = {{"Language", "ENG"}};
    mainModule.TreeLoaded = false;
    Start();
    EXPECT_TRUE(Action("mnuViewLanguageENG").isChecked());
    EXPECT_FALSE(Action("mnuViewLanguageGER").isChecked());
    EXPECT_EQ(Shown(), switched);
}

TEST_F(LanguageSwitchTest, TheSwitchReadsTheThreeCombosAndNothingElse) {
    Start();
    RecordingConnection& recorder = RecordingConnection::Install();
    std::vector<std::string> heads;
    recorder.onStatement = [&](const std::string&) {
        EXPECT_TRUE(mainModule.SuppressComboClick);
        EXPECT_EQ(Form().cursor().shape(), Qt::WaitCursor);
        EXPECT_EQ(FromQString(Control<QLabel>("lblAll").text()), "{alle}")
            << "captions come after the combos";
        heads.push_back(FromQString(Grid().model()->headerData(0, Qt::Horizontal).toString()));
    };
    Action("mnuViewLanguageENG").trigger();
    ASSERT_EQ(recorder.statements.size(), 3U);
    EXPECT_NE(recorder.statements[0].find("from Drive D"), std::string::npos) << recorder.statements[0];
    EXPECT_NE(recorder.statements[1].find("from Genres G"), std::string::npos) << recorder.statements[1];
    EXPECT_NE(recorder.statements[2].find("from Albums A"), std::string::npos) << recorder.statements[2];
    EXPECT_EQ(heads, std::vector<std::string>(3, "Performer")) << "the head comes before the combos";
    EXPECT_FALSE(mainModule.SuppressComboClick);
}

TEST_F(LanguageSwitchTest, TheHourglassIsShownWhileTheTextsChange) {
    Start();
    PointerWatch pointer(Form());
    Action("mnuViewLanguageENG").trigger();
    EXPECT_EQ(pointer.shapes, (std::vector<Qt::CursorShape>{Qt::WaitCursor, Qt::ArrowCursor}));
}

TEST_F(LanguageSwitchTest, AllThreeCombosGoBackToTheirFirstEntry) {
    Start();
    for (const char* name : {"cboDrive", "cboAlbum"}) {
        Control<QComboBox>(name).setCurrentIndex(1);
    }
    const std::vector<std::string> listed = Listed();
    Action("mnuViewLanguageENG").trigger();
    for (const char* name : {"cboDrive", "cboGenre", "cboAlbum"}) {
        EXPECT_EQ(Control<QComboBox>(name).currentIndex(), 0) << name;
    }
    EXPECT_EQ(Listed(), listed);
}

TEST_F(LanguageSwitchTest, AllSixColumnsTakeTheirStoredWidthsOrTheirDefaults) {
    for (const char* stored : {"ColWidth(0)", "ColWidth(3)", "ColWidth(5)"}) {
        settings.values[stored] = "1500";
    }
    Start();
    for (int column = 0; column < 6; ++column) {
        Grid().setColumnWidth(column, 33);
    }
    Action("mnuViewLanguageENG").trigger();
    const int widths[] = {100, 220, 73, 100, 110, 100};
    for (int column = 0; column < 6; ++column) {
        EXPECT_NEAR(Grid().columnWidth(column), widths[column], 1) << column;
    }
}

TEST_F(LanguageSwitchTest, AClickOnTheActiveLanguageLeavesItsMark) {
    Start();
    Action("mnuViewLanguageGER").trigger();
    EXPECT_TRUE(Action("mnuViewLanguageGER").isChecked());
    EXPECT_FALSE(Action("mnuViewLanguageENG").isChecked());
    EXPECT_EQ(settings.values["Language"], "GER");
    EXPECT_EQ(PanelText(Panel::Scanning), "Bereit!");
}

TEST_F(LanguageSwitchTest, AnOpenScanLogKeepsItsLanguageUntilItLoadsAgain) {
    Start();
    frmScanLog log(&Form());
    log.Show();
    Action("mnuViewLanguageENG").trigger();
    log.Show();
    const auto label = [&] { return FromQString(log.findChild<QLabel*>(QStringLiteral("Label1"))->text()); };
    EXPECT_EQ(label(), "Dateien gefunden");
    log.close();
    log.Show();
    EXPECT_EQ(label(), "file(s) found");
}

TEST_F(LanguageSwitchTest, BoxesAndDialogsOfTheToolkitFollow) {
    Start();
    std::vector<std::string> seen;
    const auto look = [&] {
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            for (const QAbstractButton* button : box->buttons()) {
                seen.push_back(FromQString(button->text()));
            }
            box->reject();
        });
        QtMsgBox().Show("", "", MsgBox::Icon::None, MsgBox::Buttons::YesNo);
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            for (const auto part : {QFileDialog::LookIn, QFileDialog::Reject}) {
                seen.push_back(FromQString(dialog->labelText(part)));
            }
            dialog->reject();
        });
        QtDialogs().BrowseForFolder("");
        return std::exchange(seen, {});
    };
    const std::vector<std::string> german = {"&Ja", "&Nein", "Suchen in:", "Abbrechen"};
    const std::vector<std::string> english = {"&Yes", "&No", "Look in:", "Cancel"};
    EXPECT_EQ(look(), german);
    Action("mnuViewLanguageENG").trigger();
    EXPECT_EQ(look(), english);
    Action("mnuViewLanguageGER").trigger();
    EXPECT_EQ(look(), german);
}

} // namespace quavernet::test
