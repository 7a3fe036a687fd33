// Names and tags that look like markup, mnemonics or formats are shown as they are: in the list, the tree,
// the combos, the status bar, tool tips, boxes and the scan log.
#include "gui/GuiTest.h"

#include "gui/PaintedTexts.h"
#include "support/HostileTexts.h"

#include "adapters/qt/FileUris.h"
#include "adapters/qt/QtMsgBox.h"
#include "help/frmHelp.h"
#include "library/SqlQuote.h"
#include "scanner/frmRemind.h"
#include "scanner/frmScanLog.h"
#include "scanner/frmScanpath.h"

#include <memory>
#include <set>

#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QMimeData>
#include <QTextBrowser>
#include <QTimer>
#include <QToolTip>

#include <gmock/gmock.h>

namespace quavernet::test {

namespace {

using ::testing::HasSubstr;
using ::testing::IsSupersetOf;

class LiteralTextsTest : public GuiTest {
protected:
    static constexpr int Wide = 1600;

    /// One file for each text, which is its performer, title, album, drive, file name and category.
    void AddHostileFiles() {
        for (const std::string& text : HostileTexts()) {
            const std::string quoted = SqlQuote(text);
            AddFile(quoted, quoted);
            const std::string id = std::to_string(files);
            for (const std::string& statement :
                 {"Update Albums set Name = '" + quoted + "' where Album_id = " + id,
                  "Update Drive set Drive = '" + quoted + "' where Drive_id = " + id,
                  "Insert into Categories (Category_id, Category) values (" + id + ", '" + quoted + "')",
                  "Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (" +
                      id + ", " + id + ", 1, '" + quoted + "', '" + quoted + ".mp3')"}) {
                mainModule.Connection->Execute(statement);
            }
        }
    }
    void StartWide() {
        AddHostileFiles();
        Start();
        Form().resize(2 * Wide, 1200);
        Grid().resize(2 * Wide, 1200);
        for (const int column : {0, 1}) {
            Grid().setColumnWidth(column, Wide / 2);
        }
    }
    static std::string Bare(const std::string& text) { return WithoutBlanks(ToQString(text)); }

    /// Asks for the tool tip at a place, and gives what its window paints.
    static std::string PaintedToolTip(QWidget& widget, QPoint place) {
        QToolTip::hideText();
        QHelpEvent help(QEvent::ToolTip, place, widget.mapToGlobal(place));
        QCoreApplication::sendEvent(&widget, &help);
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->inherits("QTipLabel") && window->isVisible()) {
                window->resize(window->sizeHint().expandedTo(QSize(Wide, 200)));
                return PaintedTexts(*window);
            }
        }
        return "(no tool tip)";
    }
    static void ShowPopup(QComboBox& combo) {
        combo.resize(Wide, combo.height());
        combo.showPopup();
        combo.view()->window()->resize(Wide, 1000);
        QCoreApplication::processEvents();
    }
};

TEST_F(LiteralTextsTest, ALabelThatGuessesWouldSwallowMarkup) {
    // The recorder of painted texts sees what the guard of the application prevents.
    QLabel label(QStringLiteral("<b>bold</b> &File"));
    label.setTextFormat(Qt::RichText);
    label.resize(Wide, 40);
    label.show();
    EXPECT_THAT(PaintedTexts(label), ::testing::Not(HasSubstr("<b>")));
    QLabel guarded(QStringLiteral("<b>bold</b> &File"));
    guarded.resize(Wide, 40);
    guarded.show();
    EXPECT_EQ(PaintedTexts(guarded), "<b>bold</b>&File");
}

TEST_F(LiteralTextsTest, TheListPaintsThem) {
    StartWide();
    const std::string painted = PaintedTexts(*Grid().viewport());
    for (const std::string& text : HostileTexts()) {
        EXPECT_THAT(painted, HasSubstr(Bare(text) + Bare(text) + "01:05min")) << text;
    }
}

TEST_F(LiteralTextsTest, TheTreePaintsThem) {
    StartWide();
    auto& tree = Control<TreeView>("TreeView");
    tree.expandAll();
    tree.resize(Wide, 1200);
    QCoreApplication::processEvents();
    const std::string painted = PaintedTexts(*tree.viewport());
    for (const std::string& text : HostileTexts()) {
        EXPECT_THAT(painted, HasSubstr(Bare(text) + "(01:05)" + Bare(text) + ".mp3")) << text;
    }
}

TEST_F(LiteralTextsTest, TheCombosPaintThemOpenAndClosed) {
    StartWide();
    mainModule.SuppressComboClick = true;
    for (const char* name : {"cboAlbum", "cboDrive"}) {
        auto& combo = Control<QComboBox>(name);
        ASSERT_EQ(combo.count(), static_cast<int>(HostileTexts().size()) + 1);
        for (const std::string& text : HostileTexts()) {
            combo.setCurrentIndex(combo.findText(ToLine(text)));
            combo.resize(Wide, combo.height());
            EXPECT_EQ(PaintedTexts(combo), Bare(text)) << name;
        }
        ShowPopup(combo);
        const std::string painted = PaintedTexts(*combo.view()->viewport());
        combo.hidePopup();
        for (const std::string& text : HostileTexts()) {
            EXPECT_THAT(painted, HasSubstr(Bare(text))) << name;
        }
    }
}

TEST_F(LiteralTextsTest, TheToolTipOfTheListShowsTheFileNameAsItStands) {
    StartWide();
    for (int row = 1; row <= files; ++row) {
        const std::string name = mainModule.FileNames.Item(row);
        QTest::mouseMove(Grid().viewport(), CellCentre(row));
        QMouseEvent move(QEvent::MouseMove, CellCentre(row), Grid().viewport()->mapToGlobal(CellCentre(row)),
                         Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Grid().viewport(), &move);
        EXPECT_EQ(PaintedToolTip(*Grid().viewport(), CellCentre(row)), Bare(name));
    }
}

TEST_F(LiteralTextsTest, TheStatusBarShowsThePathAsItStands) {
    StartWide();
    auto& status = Form().Panes().Status();
    status.resize(2 * Wide, status.height());
    for (int row = 1; row <= files; ++row) {
        ClickRow(row);
        const std::string path = mainModule.FilePaths.Item(row);
        EXPECT_EQ(PanelText(Panel::Scanning), path);
        EXPECT_THAT(PaintedTexts(status), HasSubstr(Bare(path)));
        EXPECT_EQ(PaintedToolTip(status, QPoint(5, 5)), Bare(path));
    }
}

TEST_F(LiteralTextsTest, TheScanLogPaintsThem) {
    mainModule.ScanLogEnabled = true;
    frmScanLog log(nullptr);
    log.Show();
    log.EnableClose(false);
    log.resize(Wide, 1200);
    std::vector<SkippedEntry> skipped;
    for (const std::string& text : HostileTexts()) {
        log.AddLine("Saved " + text);
        skipped.push_back({"/m/" + text, "why " + text, SkippedEntry::Kind::Unreadable});
    }
    log.AddSkipped(skipped);
    log.EnableClose(true);
    QCoreApplication::processEvents();
    auto& list = *log.findChild<QListView*>(QStringLiteral("lstLog"));
    list.resize(Wide, 2000);
    list.scrollToTop();
    const std::string painted = PaintedTexts(*list.viewport());
    for (const std::string& text : HostileTexts()) {
        EXPECT_THAT(painted, HasSubstr(Bare("Saved " + text)));
        EXPECT_THAT(painted, HasSubstr(Bare("/m/" + text)));
    }
}

TEST_F(LiteralTextsTest, BoxesPaintThemAndTakeNoMnemonicFromThem) {
    QtMsgBox boxes;
    for (const std::string& text : HostileTexts()) {
        std::string painted;
        QTimer::singleShot(0, [&painted] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            for (QLabel* label : box->findChildren<QLabel*>()) {
                painted += PaintedTexts(*label);
            }
            box->accept();
        });
        boxes.Show(text, "title", MsgBox::Icon::Critical, MsgBox::Buttons::Ok);
        EXPECT_THAT(painted, HasSubstr(Bare(text)));
    }
}

TEST_F(LiteralTextsTest, BoxesOfTheToolkitShowThemToo) {
    std::string painted;
    QTimer::singleShot(0, [&painted] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        painted = PaintedTexts(*box->findChild<QLabel*>(QStringLiteral("qt_msgbox_label")));
        box->accept();
    });
    QMessageBox::warning(nullptr, QString(),
                         QStringLiteral("<b>x</b><img src=http://127.0.0.1:9/x> not found"));
    EXPECT_EQ(painted, "<b>x</b><imgsrc=http://127.0.0.1:9/x>notfound");
}

TEST_F(LiteralTextsTest, EveryLabelOfEveryWindowIsToldToShowWhatItWasGiven) {
    StartWide();
    frmScanLog log(&Form());
    log.Show();
    frmRemind remind(&Form());
    remind.show();
    frmHelp help;
    help.ShowPage("help.chm", "HTML\\start.html");
    int labels = 0;
    for (QWidget* widget : QApplication::allWidgets()) {
        if (const auto* label = qobject_cast<QLabel*>(widget); label != nullptr && label->isVisible()) {
            ++labels;
            EXPECT_EQ(label->textFormat(), Qt::PlainText) << FromQString(label->objectName());
        }
    }
    EXPECT_GT(labels, 30);
}

TEST_F(LiteralTextsTest, NoFieldOfAnyWindowTakesANul) {
    StartWide();
    frmScanpath scanpath(&Form());
    scanpath.show();
    frmRemind remind(&Form());
    remind.show();
    frmHelp help;
    help.ShowPage("help.chm", "HTML\\start.html");
    QFileDialog folders;
    folders.setOption(QFileDialog::DontUseNativeDialog);
    folders.show();
    QGuiApplication::clipboard()->setText(QString::fromLatin1("1\0"
                                                              "2",
                                                              3));
    std::set<std::string> fields;
    for (QWidget* widget : QApplication::allWidgets()) {
        if (auto* field = qobject_cast<QLineEdit*>(widget); field != nullptr && field->isVisible()) {
            field->paste();
            EXPECT_EQ(field->text().count(QChar::Null), 0) << FromQString(field->objectName());
            fields.insert(FromQString(field->objectName()));
        }
    }
    EXPECT_THAT(fields,
                IsSupersetOf({"txtSearch", "txtScanpath", "txtFind", "txtSearchAll", "fileNameEdit"}));
    EXPECT_EQ(FromQString(help.findChild<QLineEdit*>(QStringLiteral("txtFind"))->text()), "12");
}

TEST_F(LiteralTextsTest, TheHelpTakesThemForWordsAndPages) {
    frmHelp help;
    help.ShowPage("help.chm", "HTML\\start.html");
    auto& page = *help.findChild<QTextBrowser*>(QStringLiteral("txtPage"));
    const QUrl start = page.source();
    auto& search = *help.findChild<QLineEdit*>(QStringLiteral("txtSearchAll"));
    auto& find = *help.findChild<QLineEdit*>(QStringLiteral("txtFind"));
    for (const std::string& text : HostileTexts()) {
        help.ShowPage("help.chm", text);
        help.ShowPage("help.chm", "HTML\\" + text);
        EXPECT_EQ(page.source(), start) << text;
        search.setText(ToQString(text));
        find.setText(ToQString(text));
        find.setFocus();
        QTest::keyClick(&help, Qt::Key_F3);
        EXPECT_EQ(page.source(), start) << text;
    }
}

TEST_F(LiteralTextsTest, DraggedPathsArriveAsTheyLeft) {
    std::vector<std::string> paths{"/m/no utf-8 \xFF\xFE.mp3", "/m/%41%00.mp3"};
    for (const std::string& text : HostileTexts()) {
        paths.push_back("/m/" + AsFileName(text) + ".mp3");
    }
    const std::unique_ptr<QMimeData> data(FilesToOffer(paths));
    EXPECT_EQ(LocalFiles(*data), paths);
    EXPECT_EQ(data->formats(), QStringList{QStringLiteral("text/uri-list")})
        << "no text and no markup beside it";
    const QByteArray list = data->data(QStringLiteral("text/uri-list"));
    EXPECT_EQ(list.count('\n'), static_cast<qsizetype>(paths.size()));
    EXPECT_EQ(list.count("file:///m/"), static_cast<qsizetype>(paths.size()));
}

TEST_F(LiteralTextsTest, TheTitleOfTheWindowTakesNoTextFromFiles) {
    StartWide();
    const QString before = Form().windowTitle();
    for (int row = 1; row <= files; ++row) {
        ClickRow(row);
        EXPECT_EQ(Form().windowTitle(), before);
    }
}

} // namespace
} // namespace quavernet::test
