#include "gui/GuiTest.h"

#include "app/LoadResString.h"
#include "app/MayAct.h"
#include "app/SettingFailure.h"
#include "output/frmKonvertOptions.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

namespace quavernet::test {

namespace {

using ::testing::ElementsAre;

class KonvertOptionsTest : public GuiTest {
protected:
    void Open() {
        if (!windows) {
            Start();
        }
        dialog = std::make_unique<frmKonvertOptions>(&Form());
        dialog->show();
        dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == dialog.get(); }));
    }
    template <typename T> T& Part(const char* name) { return *dialog->findChild<T*>(QLatin1String(name)); }
    QLineEdit& Target() { return Part<QLineEdit>("txtTarget"); }
    QComboBox& Rates() { return Part<QComboBox>("cboBitrates"); }
    bool Checked(const char* name) { return Part<QAbstractButton>(name).isChecked(); }
    std::string Stored(const std::string& name) {
        return settings.values.contains(name) ? settings.values[name] : "(nothing)";
    }
    /// What a conversion finds after the dialog.
    Texts AllStored() {
        Texts all;
        for (const char* name : {"KonvertBitrate", "KonvertTarget", "KonvertMonoStereo", "KonvertCombine",
                                 "KonvertNoGap", "KonvertDelete", "ShowKonvert"}) {
            all.push_back(Stored(name));
        }
        return all;
    }
    /// Acts on the modal dialog that the next command opens.
    void WhenModal(std::function<void(QWidget&)> act) {
        QTimer::singleShot(0, &Form(), [this, act = std::move(act)] {
            QWidget* modal = QApplication::activeModalWidget();
            ASSERT_NE(modal, nullptr);
            opened.push_back(FromQString(modal->objectName()));
            act(*modal);
        });
    }
    /// A list of three files, the first two selected, the second one the current row.
    void SelectTwo() {
        AddFile("Abba", "One", "wav");
        AddFile("Beck", "Two", "wav");
        AddFile("Cher", "Three", "mp3");
        Start();
        ClickRow(1);
        ClickRow(2, Qt::ControlModifier);
    }
    Texts Arguments() { return shell.started.empty() ? Texts{"(nothing)"} : shell.started.back().Arguments; }

    std::unique_ptr<frmKonvertOptions> dialog;
    Texts opened;
};

} // namespace

TEST_F(KonvertOptionsTest, TheTextsAreThoseOfTheLanguage) {
    const std::pair<const char*, int> buttons[] = {
        {"cmdBrowse", 117}, {"optStereo", 536}, {"optMono", 537},        {"chkCombine", 538},
        {"chkNoGap", 539},  {"chkDelete", 540}, {"chkShowKonvert", 541}, {"cmdOK", 101}};
    for (const char* language : {"GER", "ENG"}) {
        settings.values["Language"] = language;
        Open();
        for (const auto& [name, id] : buttons) {
            EXPECT_EQ(Caption(Part<QAbstractButton>(name).text()), LoadResString(id)) << name;
        }
        EXPECT_EQ(Caption(Part<QLabel>("Label2").text()), LoadResString(534));
        EXPECT_EQ(Caption(Part<QLabel>("Label1").text()), LoadResString(535));
        EXPECT_EQ(FromQString(dialog->windowTitle()), LoadResString(542));
    }
    EXPECT_EQ(QuavernetGER.GetResourceString(542), "Konvertierungs Optionen");
    EXPECT_NE(FromQString(dialog->windowTitle()), "Konvertierungs Optionen");
}

TEST_F(KonvertOptionsTest, WithoutSettingsItShowsTheFirstValues) {
    Open();
    Texts rates;
    for (int item = 0; item < Rates().count(); ++item) {
        rates.push_back(FromQString(Rates().itemText(item)));
    }
    EXPECT_EQ(rates, (Texts{"32", "40", "48", "56", "64", "80", "96", "112", "128", "160", "192", "224",
                            "256", "320"}));
    EXPECT_EQ(FromQString(Rates().currentText()), "128");
    EXPECT_EQ(FromQString(Target().text()), "");
    EXPECT_TRUE(Checked("optStereo"));
    for (const char* name : {"optMono", "chkCombine", "chkNoGap", "chkDelete", "chkShowKonvert"}) {
        EXPECT_FALSE(Checked(name)) << name;
    }
}

TEST_F(KonvertOptionsTest, TheStoredValuesAreShown) {
    settings.values = {{"KonvertBitrate", "56"},      {"KonvertTarget", "/Müsik/neu/"},
                       {"KonvertMonoStereo", "mono"}, {"KonvertCombine", "1"},
                       {"KonvertNoGap", "0"},         {"KonvertDelete", "1"},
                       {"ShowKonvert", "1"}};
    Open();
    EXPECT_EQ(FromQString(Rates().currentText()), "56");
    EXPECT_EQ(FromQString(Target().text()), "/Müsik/neu/");
    EXPECT_TRUE(Checked("optMono") && Checked("chkCombine") && Checked("chkDelete") &&
                Checked("chkShowKonvert"));
    EXPECT_FALSE(Checked("optStereo") || Checked("chkNoGap"));
}

TEST_F(KonvertOptionsTest, AStoredRateThatTheListLacksIsNoneAndStaysNone) {
    settings.values["KonvertBitrate"] = "100";
    Open();
    EXPECT_EQ(Rates().currentIndex(), -1);
    Part<QPushButton>("cmdOK").click();
    EXPECT_EQ(Stored("KonvertBitrate"), "");
    Open();
    EXPECT_EQ(Rates().currentIndex(), -1);
}

TEST_F(KonvertOptionsTest, EveryWayOutStoresAllOfThem) {
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"cmdOK", [this] { Part<QPushButton>("cmdOK").click(); }},
        {"Return", [this] { QTest::keyClick(dialog->focusWidget(), Qt::Key_Return); }},
        {"Escape", [this] { QTest::keyClick(dialog->focusWidget(), Qt::Key_Escape); }},
        {"the window's own button", [this] { dialog->close(); }}};
    for (const auto& [way, leave] : ways) {
        settings.values.clear();
        Open();
        EXPECT_EQ(AllStored(), Texts(7, "(nothing)")) << way;
        Rates().setCurrentText(QStringLiteral("192"));
        QTest::keyClicks(&Target(), QStringLiteral("/neu"));
        for (const char* name : {"optMono", "chkCombine", "chkNoGap", "chkDelete", "chkShowKonvert"}) {
            Part<QAbstractButton>(name).click();
        }
        leave();
        EXPECT_FALSE(dialog->isVisible()) << way;
        EXPECT_THAT(AllStored(), ElementsAre("192", "/neu", "mono", "1", "1", "1", "1")) << way;
    }
}

TEST_F(KonvertOptionsTest, StereoAndClearBoxesAreStoredToo) {
    settings.values = {{"KonvertMonoStereo", "mono"}, {"KonvertCombine", "1"}, {"ShowKonvert", "1"}};
    Open();
    for (const char* name : {"optStereo", "chkCombine", "chkShowKonvert"}) {
        Part<QAbstractButton>(name).click();
    }
    dialog->close();
    EXPECT_THAT(AllStored(), ElementsAre("128", "", "stereo", "0", "0", "0", "0"));
}

TEST_F(KonvertOptionsTest, BrowsingFillsInTheFolderWithItsSeparator) {
    Open();
    dialogs.folder = folder / "new";
    Part<QPushButton>("cmdBrowse").click();
    EXPECT_EQ(dialogs.titles, Texts{"Wählen Sie einen Ordner"});
    EXPECT_EQ(FromQString(Target().text()), folder / "new/");
    dialogs.folder.reset();
    Part<QPushButton>("cmdBrowse").click();
    EXPECT_EQ(FromQString(Target().text()), folder / "new/");
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(Stored("KonvertTarget"), "(nothing)") << "only leaving stores it";
    dialog->close();
    EXPECT_EQ(Stored("KonvertTarget"), folder / "new/");
}

TEST_F(KonvertOptionsTest, AFolderThatTheBoxCannotShowKeepsItsBytesUntilItIsEdited) {
    for (const std::string& path : {std::string("/m\xFCsic/"), std::string("/two\nlines/")}) {
        settings.values["KonvertTarget"] = path;
        Open();
        dialog->close();
        EXPECT_EQ(Stored("KonvertTarget"), path);
        Open();
        QTest::keyClick(&Target(), Qt::Key_X);
        dialog->close();
        EXPECT_NE(Stored("KonvertTarget"), path);
    }
}

TEST_F(KonvertOptionsTest, ABoxWhoseSettingIsNoNumberOpensNoDialog) {
    settings.values["KonvertNoGap"] = "maybe";
    Start();
    EXPECT_THROW(frmKonvertOptions{&Form()}, SettingError);
    EXPECT_EQ(Stored("KonvertBitrate"), "(nothing)");
}

TEST_F(KonvertOptionsTest, F1OnEachControlOpensItsHelpPage) {
    Open();
    for (const char* name : {"txtTarget", "cmdBrowse", "cboBitrates", "optStereo", "optMono", "chkCombine",
                             "chkNoGap", "chkDelete", "chkShowKonvert", "cmdOK"}) {
        helpViewer.shown.clear();
        QTest::keyClick(&Part<QWidget>(name), Qt::Key_F1);
        ASSERT_EQ(helpViewer.shown.size(), 1U) << name;
        EXPECT_EQ(helpViewer.shown[0].second, "HTML\\convertoptions.html") << name;
    }
}

TEST_F(KonvertOptionsTest, TheMenuOfOptionsOpensItModalAndConvertsNothing) {
    SelectTwo();
    QWidget* owner = nullptr;
    WhenModal([&](QWidget& modal) {
        owner = modal.parentWidget();
        EXPECT_FALSE(MayAct());
        modal.close();
    });
    Action("mnuKonvertoptions").trigger();
    EXPECT_EQ(opened, Texts{"frmKonvertOptions"});
    EXPECT_EQ(owner, &Form());
    EXPECT_EQ(Stored("KonvertBitrate"), "128");
    EXPECT_TRUE(shell.started.empty());
    EXPECT_EQ(PanelText(Panel::Scanning), "/music/Two.wav");
}

TEST_F(KonvertOptionsTest, EachOfTheThreeCommandsShowsTheOptionsAndConvertsTheSelection) {
    SelectTwo();
    shell.programFolder = "/opt/player";
    for (const char* name : {"mnuKonvert", "mnuKontextKonvert", "konvert"}) {
        settings.values["ShowKonvert"] = "1";
        settings.values["KonvertBitrate"] = "128";
        shell.started.clear();
        opened.clear();
        EXPECT_TRUE(Action(name).isEnabled()) << name;
        WhenModal([](QWidget& modal) {
            modal.findChild<QComboBox*>(QStringLiteral("cboBitrates"))->setCurrentText(QStringLiteral("40"));
            QTest::keyClick(&modal, Qt::Key_Escape);
        });
        Action(name).trigger();
        EXPECT_EQ(opened, Texts{"frmKonvertOptions"}) << name;
        ASSERT_EQ(shell.started.size(), 1U) << name << ": there is no cancel";
        EXPECT_EQ(shell.started[0].Text,
                  "/opt/player/bladeenc  -quit  -40  \"/music/One.wav\" \"/music/Two.wav\"");
        EXPECT_EQ(PanelText(Panel::Scanning), "") << name;
    }
    shell.started.clear();
    settings.values["ShowKonvert"] = "0";
    Action("konvert").trigger();
    EXPECT_EQ(Arguments(), (Texts{"-quit", "-40", "/music/One.wav", "/music/Two.wav"}));
}

TEST_F(KonvertOptionsTest, OnlyACurrentRowOfWavFilesOffersTheCommands) {
    SelectTwo();
    const auto enabled = [this] {
        return Action("mnuKonvert").isEnabled() + Action("mnuKontextKonvert").isEnabled() +
               Action("konvert").isEnabled();
    };
    EXPECT_EQ(enabled(), 3);
    ClickRow(3);
    EXPECT_EQ(enabled(), 0);
    ClickRow(1);
    EXPECT_EQ(enabled(), 3);
    EXPECT_EQ(Action("mnuKonvert").shortcut(), QKeySequence(Qt::CTRL | Qt::Key_K));
    EXPECT_EQ(Caption(Action("mnuKonvert").text()), "Konvertieren");
    EXPECT_EQ(Caption(Action("mnuKontextKonvert").text()), "Konvertieren");
    EXPECT_EQ(Caption(Action("mnuKonvertoptions").text()), "Konvertierung...");
    EXPECT_EQ(FromQString(Action("konvert").toolTip()), "Konvertieren in das Mp3 Format");
}

TEST_F(KonvertOptionsTest, WhileTheOptionsOfAConversionAreOpenNothingElseActs) {
    SelectTwo();
    int runs = 0;
    bool mayAct = true;
    WhenModal([&](QWidget& modal) {
        mayAct = MayAct();
        for (const char* name : {"konvert", "mnuKonvert", "mnuKontextKonvert", "mnuKonvertoptions", "scan",
                                 "mnuScan", "mnuDetails", "mnuEditDelete", "mnuRandomPlay"}) {
            runs += Form().Parts().Commands.Run(name) ? 1 : 0;
        }
        modal.close();
    });
    Action("konvert").trigger();
    EXPECT_FALSE(mayAct);
    EXPECT_EQ(runs, 0);
    EXPECT_EQ(shell.started.size(), 1U);
    EXPECT_TRUE(MayAct());
}

TEST_F(KonvertOptionsTest, DuringAScanNothingIsConverted) {
    SelectTwo();
    mainModule.ScanRunning = true;
    for (const char* name : {"konvert", "mnuKonvert", "mnuKontextKonvert", "mnuKonvertoptions"}) {
        EXPECT_FALSE(Form().Parts().Commands.Run(name)) << name;
    }
    mainModule.ScanRunning = false;
    EXPECT_TRUE(shell.started.empty());
}

} // namespace quavernet::test
