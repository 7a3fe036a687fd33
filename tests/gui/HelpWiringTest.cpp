#include "gui/GuiTest.h"

#include "mainwindow/frmAbout.h"
#include "scanner/frmScanLog.h"

#include <QListView>

namespace quavernet::test {

namespace {
class HelpWiringTest : public GuiTest {
protected:
    using Pages = std::vector<std::string>;
    Pages Shown() {
        Pages pages;
        for (const auto& [file, page] : helpViewer.shown) {
            pages.push_back(page);
        }
        helpViewer.shown.clear();
        return pages;
    }
    static QWidget* Find(QWidget& form, const char* name) {
        return form.findChild<QWidget*>(QLatin1String(name));
    }
};
} // namespace

TEST_F(HelpWiringTest, TheMainWindowsControlsOpenTheirPages) {
    AddFile("Abba", "One");
    Start();
    for (const char* name : {"txtSearch", "cmdSearch", "chkInterpret", "chkTitle"}) {
        QTest::keyClick(&Control<QWidget>(name), Qt::Key_F1);
        EXPECT_EQ(Shown(), Pages{"HTML\\maindialoque.html"}) << name;
    }
    for (const char* name : {"cboDrive", "cboGenre", "cboAlbum"}) {
        QTest::keyPress(&Control<QWidget>(name), Qt::Key_F1);
        EXPECT_EQ(Shown(), Pages{}) << name;
        QTest::keyRelease(&Control<QWidget>(name), Qt::Key_F1);
        EXPECT_EQ(Shown(), Pages{"HTML\\maindialoque.html"}) << name;
    }
    QTest::keyClick(&Control<QWidget>("grdMp3"), Qt::Key_F1);
    EXPECT_EQ(Shown(), Pages{"HTML\\filewindow.html"});
    QTest::keyClick(&Control<QWidget>("TreeView"), Qt::Key_F1);
    EXPECT_EQ(Shown(), Pages{"HTML\\tree.html"});
}

TEST_F(HelpWiringTest, TheHelpMenuOpensTheFirstPage) {
    Start();
    EXPECT_EQ(Action("mnuHelp").shortcut(), QKeySequence(Qt::CTRL | Qt::Key_H));
    Action("mnuHelp").trigger();
    EXPECT_EQ(Shown(), Pages{"HTML\\start.html"});
}

TEST_F(HelpWiringTest, TheAboutBoxAndTheScanLogHaveTheirPages) {
    frmAbout about(nullptr);
    QTest::keyClick(Find(about, "cmdOK"), Qt::Key_F1);
    EXPECT_EQ(Shown(), Pages{"HTML\\start.html"});
    frmScanLog log(nullptr);
    QTest::keyClick(Find(log, "lstLog"), Qt::Key_F1);
    QTest::keyClick(Find(log, "cmdClose"), Qt::Key_F1);
    EXPECT_EQ(Shown(), (Pages{"HTML\\scanlog.html", "HTML\\scanreminder.html"}));
}

} // namespace quavernet::test
