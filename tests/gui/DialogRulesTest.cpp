#include "gui/AllDialogs.h"

#include <QAbstractButton>
#include <QDialog>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QTimer>

#include <set>

#include <gmock/gmock.h>

namespace quavernet::test {

namespace {

/// What all dialogs have in common.
class DialogRulesTest : public AllDialogsTest {
protected:
    void Open(QDialog& dialog) {
        dialog.show();
        dialog.activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &dialog; }));
    }
    static std::string DefaultButton(const QDialog& dialog) {
        for (const QPushButton* button : dialog.findChildren<QPushButton*>()) {
            if (button->isDefault()) {
                return FromQString(button->objectName());
            }
        }
        return {};
    }
    /// Names of the controls that Tab reaches, from the first to the one before it comes round.
    static std::set<std::string> ReachedByTab(QDialog& dialog) {
        std::set<std::string> names;
        QWidget* focus = dialog.focusWidget();
        while (focus != nullptr && names.insert(FromQString(focus->objectName())).second) {
            QTest::keyClick(focus, Qt::Key_Tab);
            focus = dialog.focusWidget();
        }
        return names;
    }
    using Names = std::set<std::string>;
};

} // namespace

TEST_F(DialogRulesTest, ReturnMeansTheFirstButtonAndEscapeTheOther) {
    frmRemind remind(&Form());
    EXPECT_EQ(DefaultButton(remind), "cmdOK");
    frmScanpath scanpath(&Form());
    EXPECT_EQ(DefaultButton(scanpath), "cmdOK");
    frmAbout about(&Form());
    EXPECT_EQ(DefaultButton(about), "cmdOK");
    frmEditTree editTree(&Form());
    EXPECT_EQ(DefaultButton(editTree), "cmdOK");
    frmCategoryName categoryName(&Form(), {}, Form().Parts().Views);
    EXPECT_EQ(DefaultButton(categoryName), "cmdFinish");
    frmRandomPlay randomPlay(&Form());
    EXPECT_EQ(DefaultButton(randomPlay), "cmdOK");
    frmOptToplist toplist(&Form());
    EXPECT_EQ(DefaultButton(toplist), "cmdOK");
    frmFileName fileName(&Form(), Form().Parts().Work);
    EXPECT_EQ(DefaultButton(fileName), "cmsSave");
    frmFilesName filesName(&Form(), Form().Parts().Work);
    EXPECT_EQ(DefaultButton(filesName), "cmdSave");
    frmDetails details(Parts(), &Form());
    EXPECT_EQ(DefaultButton(details), "cmdOK");
    frmKonvertOptions konvertOptions(&Form());
    EXPECT_EQ(DefaultButton(konvertOptions), "cmdOK");
    frmCoverSearchOptions coverSearch(&Form());
    EXPECT_EQ(DefaultButton(coverSearch), "cmdOK");
    for (QDialog* dialog :
         std::initializer_list<QDialog*>{&remind, &scanpath, &editTree, &categoryName, &randomPlay, &toplist,
                                         &fileName, &filesName, &details, &konvertOptions, &coverSearch}) {
        Open(*dialog);
        QTest::keyClick(dialog, Qt::Key_Escape);
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_EQ(dialog->result(), QDialog::Rejected);
    }
}

TEST_F(DialogRulesTest, TheAboutBoxClosesByReturnAndByEscape) {
    frmAbout about(&Form());
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        Open(about);
        QTest::keyClick(&about, key);
        EXPECT_FALSE(about.isVisible());
    }
    EXPECT_TRUE(msgBox.shown.empty()) << "Return is not the button of the system information";
}

TEST_F(DialogRulesTest, TheAboutBoxNamesItsProductAndItsButtons) {
    for (const auto& [language, title, close] :
         {std::tuple{"GER", "Über Quavernet", "OK"}, std::tuple{"ENG", "About Quavernet", "OK"}}) {
        settings.values["Language"] = language;
        frmAbout about(&Form());
        EXPECT_EQ(FromQString(about.windowTitle()), title);
        EXPECT_EQ(Caption(about.findChild<QPushButton*>(QStringLiteral("cmdOK"))->text()), close);
        EXPECT_EQ(FromQString(about.findChild<QLabel*>(QStringLiteral("lblTitle"))->text()), "Quavernet");
        about.findChild<QPushButton*>(QStringLiteral("cmdSysInfo"))->click();
        EXPECT_EQ(msgBox.shown.back(),
                  (ShownBox{title, "Quavernet", MsgBox::Icon::None, MsgBox::Buttons::Ok}));
    }
}

TEST_F(DialogRulesTest, TheAboutBoxTellsLicenceToolkitAndPlacesToBeCopied) {
    class PlacedSettings : public MapSettings {
    public:
        std::string Place() const override { return "/home/me/.config/Quavernet.conf"; }
    };
    PlacedSettings placed;
    services.settings = &placed;
    for (const auto& [language, licence, library] :
         {std::tuple{"GER", "GNU General Public License,\nVersion 3", "Datenbank: "},
          std::tuple{"ENG", "GNU General Public License,\nversion 3", "Library: "}}) {
        placed.values["Language"] = language;
        frmAbout about(&Form());
        Open(about);
        auto& facts = *about.findChild<QLabel*>(QStringLiteral("lblFacts"));
        const std::string text = FromQString(facts.text());
        EXPECT_THAT(text, ::testing::HasSubstr(licence));
        EXPECT_THAT(text, ::testing::HasSubstr(std::string("Qt ") + qVersion()));
        EXPECT_THAT(text, ::testing::HasSubstr(library + (folder / "Quavernet Database/Quavernet.db")));
        EXPECT_THAT(text, ::testing::HasSubstr("Quavernet.conf"));
        facts.setFocus();
        QTest::keyClick(&facts, Qt::Key_A, Qt::ControlModifier);
        EXPECT_EQ(FromQString(facts.selectedText().replace(QChar::ParagraphSeparator, u'\n')), text);
    }
}

TEST_F(DialogRulesTest, TheMenuOpensTheAboutBoxModalOverTheMainWindow) {
    bool seen = false;
    QTimer::singleShot(0, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        seen = modal != nullptr && modal->objectName() == QLatin1String("frmAbout") &&
               modal->parentWidget() == &Form();
        if (modal != nullptr) {
            modal->close();
        }
    });
    Action("mnuAbout").trigger();
    EXPECT_TRUE(seen);
}

TEST_F(DialogRulesTest, EveryControlIsReachedByTheKeyboardAlone) {
    frmRemind remind(&Form());
    Open(remind);
    // The arrow keys go on among the options.
    EXPECT_EQ(ReachedByTab(remind), (Names{"chkRemind", "optDaily", "cmdOK", "cmdCancel"}));
    frmScanpath scanpath(&Form());
    Open(scanpath);
    EXPECT_EQ(ReachedByTab(scanpath),
              (Names{"chkScanPath", "txtScanpath", "cmdBrowse", "cmdOK", "cmdCancel"}));
    frmAbout about(&Form());
    Open(about);
    EXPECT_EQ(ReachedByTab(about), (Names{"cmdSysInfo", "cmdOK", "lblFacts"}));
    frmEditTree editTree(&Form());
    Open(editTree);
    EXPECT_EQ(ReachedByTab(editTree), (Names{"lstCategories", "cmdNew", "cmdOK"}));
    editTree.cmdNew_Click();
    EXPECT_EQ(ReachedByTab(editTree), (Names{"txtEdit", "cmdSave", "cmdOK", "lstCategories"}));
    frmCategoryName categoryName(&Form(), {}, Form().Parts().Views);
    Open(categoryName);
    EXPECT_EQ(ReachedByTab(categoryName), (Names{"txtCategoryName", "cmdFinish", "cmdCancel"}));
    frmRandomPlay randomPlay(&Form());
    Open(randomPlay);
    EXPECT_EQ(ReachedByTab(randomPlay), (Names{"optAllFiles", "cmdOK"}));
    frmOptToplist toplist(&Form());
    Open(toplist);
    EXPECT_EQ(ReachedByTab(toplist), (Names{"txtFileCount", "chkResetStatistik", "cmdOK"}));
    frmFileName fileName(&Form(), Form().Parts().Work);
    Open(fileName);
    EXPECT_EQ(ReachedByTab(fileName),
              (Names{"txtFileName", "cmdChangeUmlaute", "cmdRemoveBrakets", "cmdRemoveNumbers",
                     "cmdReplaceUnderscore", "cmsSave", "cmdCancel"}));
    frmFilesName filesName(&Form(), Form().Parts().Work);
    Open(filesName);
    EXPECT_EQ(ReachedByTab(filesName),
              (Names{"lstFileNames", "txtChangeName", "cmdChangeName", "cmdChangeUmlauts", "cmdRemoveBrakets",
                     "cmdRemoveNumbers", "cmdReplaceUnderscore", "cmdSave", "cmdCancel"}));
    frmDetails details(Parts(), &Form());
    Open(details);
    const Names shown{"txtPath",    "cmdPlay",      "txtInterpret", "txtTitle",   "txtAlbum",     "txtYear",
                      "txtComment", "txtPublisher", "txtLanguage",  "txtQuality", "txtFrequency", "txtSize",
                      "txtLength",  "txtMode",      "txtLayer",     "txtVersion"};
    const auto with = [&](std::initializer_list<const char*> more) {
        Names names = shown;
        names.insert(more.begin(), more.end());
        return names;
    };
    EXPECT_EQ(ReachedByTab(details), with({"txtGenre", "cmdEdit", "cmdOK"}));
    details.findChild<QPushButton*>(QStringLiteral("cmdEdit"))->click();
    EXPECT_EQ(ReachedByTab(details), with({"cboGenre", "optID3V1", "cmdSave", "cmdCancel"}));
    frmKonvertOptions konvertOptions(&Form());
    Open(konvertOptions);
    EXPECT_EQ(ReachedByTab(konvertOptions),
              (Names{"txtTarget", "cmdBrowse", "cboBitrates", "optStereo", "chkCombine", "chkNoGap",
                     "chkDelete", "chkShowKonvert", "cmdOK"}));
    frmScanLog log(&Form());
    log.Show();
    Open(log);
    EXPECT_EQ(ReachedByTab(log), (Names{"lstLog", "cmdClose"}));
    frmCoverSearchOptions coverSearch(&Form());
    Open(coverSearch);
    EXPECT_EQ(ReachedByTab(coverSearch), (Names{"txtSearchString", "cmdOK", "cmdCancel"}));
    frmCovers covers(&Form());
    covers.Form_Load();
    Open(covers);
    EXPECT_EQ(ReachedByTab(covers), (Names{"lstAlbums", "qt_tabwidget_tabbar", "cmdBrowseFront",
                                           "cmdFrontOnlineSearch", "cdmDeleteFront", "cmdClose"}));
}

TEST_F(DialogRulesTest, TheScanLogClosesByReturnOnceTheScanIsOver) {
    frmScanLog log(&Form());
    log.Show();
    Open(log);
    log.EnableClose(false);
    QTest::keyClick(&log, Qt::Key_Return);
    EXPECT_TRUE(log.isVisible());
    log.EnableClose(true);
    QTest::keyClick(&log, Qt::Key_Return);
    EXPECT_FALSE(log.isVisible());
}

TEST_F(DialogRulesTest, NoDialogButTheCoversOffersToBeMinimised) {
    for (const auto& dialog : Dialogs()) {
        const bool isCovers = dialog->objectName() == QLatin1String("frmCovers");
        EXPECT_EQ(dialog->windowFlags().testFlag(Qt::WindowMinimizeButtonHint), isCovers);
        EXPECT_EQ(dialog->windowType(), isCovers ? Qt::Window : Qt::Dialog);
        EXPECT_EQ(dialog->parentWidget(), &Form()) << "it stays over the main window";
    }
}

TEST_F(DialogRulesTest, TheScanPathsWrappedTextTakesNoMoreRoomThanItsLines) {
    frmScanpath scanpath(&Form());
    Open(scanpath);
    const auto& text = *scanpath.findChild<QLabel*>(QStringLiteral("Label2"));
    EXPECT_LE(text.height(), text.heightForWidth(text.width()) + 1);
}

} // namespace quavernet::test
