#include "gui/PaintedTexts.h"
#include "gui/PlayerWindowTest.h"

#include "extras/frmChart.h"
#include "widgets/Twips.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>

#include <functional>
#include <utility>

namespace quavernet::test {

namespace {

/// Acts while its box is up.
class ActingMsgBox : public ScriptedMsgBox {
public:
    explicit ActingMsgBox(std::function<void()> action) : m_action(std::move(action)) {}

    Answer Show(const std::string& text, const std::string& title, Icon icon, Buttons buttons) override {
        m_action();
        return ScriptedMsgBox::Show(text, title, icon, buttons);
    }

private:
    std::function<void()> m_action;
};

class ChartWindowTest : public PlayerWindowTest {
protected:
    ChartWindowTest() {
        AddFile("Abba", "One");
        AddFile("Cure", "Two");
        AddFile("Eels", "Three");
        for (const char* change : {"Hits = 1, DateLastModified = '03.01.2026' where File_id = 1",
                                   "Hits = 3, DateLastModified = '01.01.2026' where File_id = 2",
                                   "Hits = 2, DateLastModified = '02.01.2026' where File_id = 3"}) {
            mainModule.Connection->Execute("Update Files Set " + std::string(change));
        }
        settings.values["FileCountTopList"] = "3";
        mainModule.UseExternalPlayer = true;
        settings.values["ExternalPlayer"] = "1";
    }

    void Open(const char* key = "top") {
        if (!windows) {
            Start();
        }
        Action(key).trigger();
        ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == Chart(); }));
    }
    void OpenWith(const std::string& count, const char* key = "top") {
        settings.values["FileCountTopList"] = count;
        Open(key);
    }
    frmChart* Chart() { return Form().findChild<frmChart*>(); }
    template <typename T> T& Part(const char* name) { return *Chart()->findChild<T*>(QLatin1String(name)); }
    QTableView& Lines() { return Part<QTableView>("grdChart"); }
    QPushButton& Button() { return Part<QPushButton>("cmdShowInList"); }
    std::string Title() { return FromQString(Chart()->windowTitle()); }
    Texts Shown() {
        Texts lines;
        const QAbstractItemModel& model = *Lines().model();
        for (int row = 0; row < model.rowCount(); ++row) {
            std::string line;
            for (int column = 0; column < model.columnCount(); ++column) {
                line += (column == 0 ? "" : "|") + FromQString(model.index(row, column).data().toString());
            }
            lines.push_back(line);
        }
        return lines;
    }
    Texts Headers() {
        Texts texts;
        for (const char* name : {"Label1", "Label2", "Label3"}) {
            texts.push_back(test::Caption(Part<QLabel>(name).text()));
        }
        return texts;
    }
    QPoint Cell(int row, int column = 1) {
        return Lines().visualRect(Lines().model()->index(row, column)).center();
    }
    void DoubleClick(int row) { QTest::mouseDClick(Lines().viewport(), Qt::LeftButton, {}, Cell(row)); }
    Texts Hits() {
        Texts hits;
        const ADODB::RowBlock rows = mainModule.Connection->Query("Select Hits from Files order by File_id");
        for (std::size_t row = 0; row < rows.Rows(); ++row) {
            hits.push_back(rows.At(row, 0).Text());
        }
        return hits;
    }
};

} // namespace

TEST_F(ChartWindowTest, TheToolbarOpensTheMostPlayedFilesBesideTheMainWindow) {
    Open();
    EXPECT_EQ(Title(), "TOP 3");
    EXPECT_EQ(Headers(), (Texts{"Platz", "Name", "Hits"}));
    EXPECT_EQ(Shown(), (Texts{"1.|Two.mp3|3", "2.|Three.mp3|2", "3.|One.mp3|1"}));
    EXPECT_EQ(test::Caption(Button().text()), "In Liste anzeigen");
    EXPECT_EQ(Part<QLabel>("Label3").alignment() & Qt::AlignHorizontal_Mask, Qt::AlignRight);
    EXPECT_FALSE(Chart()->isModal());
    EXPECT_EQ(Chart()->parentWidget(), &Form());
    EXPECT_EQ(Lines().currentIndex().row(), 0);
}

TEST_F(ChartWindowTest, AndTheNewestFiles) {
    Open("date");
    EXPECT_EQ(Title(), "Aktuelle Mp3s");
    EXPECT_EQ(Headers(), (Texts{"Platz", "Name", "Datum"}));
    EXPECT_EQ(Shown(), (Texts{"1.|One.mp3|03.01.2026", "2.|Three.mp3|02.01.2026", "3.|Two.mp3|01.01.2026"}));
    EXPECT_EQ(Part<QLabel>("Label3").alignment() & Qt::AlignHorizontal_Mask, Qt::AlignLeft);
    EXPECT_TRUE(mainModule.ChartShowNew);
    EXPECT_FALSE(mainModule.ChartShowTop);
}

TEST_F(ChartWindowTest, EachKeyShowsItsListInTheOneWindow) {
    Open("date");
    const frmChart* first = Chart();
    OpenWith("2", "top");
    EXPECT_EQ(Chart(), first);
    EXPECT_EQ(Title(), "TOP 2");
    EXPECT_FALSE(mainModule.ChartShowNew);
    Open("date");
    EXPECT_EQ(Title(), "Aktuelle Mp3s");
    EXPECT_FALSE(mainModule.ChartShowTop);
    EXPECT_EQ(Form().findChildren<frmChart*>().size(), 1);
}

TEST_F(ChartWindowTest, AClosedWindowClearsTheFlagsAndOpensAgain) {
    Open();
    QTest::keyClick(&Lines(), Qt::Key_Escape);
    EXPECT_FALSE(Chart()->isVisible());
    EXPECT_FALSE(mainModule.ChartShowTop);
    Open("date");
    EXPECT_EQ(Title(), "Aktuelle Mp3s");
    Chart()->close();
    EXPECT_FALSE(mainModule.ChartShowNew);
}

TEST_F(ChartWindowTest, TheSizesAreThoseOfTheLength) {
    Open();
    QFont font = Chart()->font();
    font.setPointSize(8); // It needs no more room than the columns have.
    Chart()->setFont(font);
    for (const auto& [count, rows] : {std::pair{"3", 3}, std::pair{"0", 0}, std::pair{"-5", 0},
                                      std::pair{"abc", 0}, std::pair{"12", 12}}) {
        OpenWith(count);
        const int height = rows * ToTwips(Lines().verticalHeader()->defaultSectionSize()) + 10;
        EXPECT_EQ(Lines().height(), ToPixels(height)) << count;
        EXPECT_EQ(Chart()->height(), ToPixels(height + 1300)) << count;
        EXPECT_EQ(Button().y(), ToPixels(height + 500)) << count;
        EXPECT_EQ(Lines().width(), Chart()->width()) << count;
        EXPECT_EQ(Button().x(), Chart()->width() - ToPixels(1900)) << count;
        EXPECT_FALSE(Lines().verticalScrollBar()->isVisible()) << count;
    }
    EXPECT_EQ(Lines().columnWidth(0), ToPixels(600));
    EXPECT_EQ(Lines().columnWidth(1), ToPixels(5800));
    EXPECT_EQ(Lines().columnWidth(2), ToPixels(1200));
    EXPECT_EQ(Lines().viewport()->width(), ToPixels(7600));
    OpenWith("31");
    EXPECT_GE(Lines().viewport()->width(), ToPixels(7600)) << "the scroll bar is beside the columns";
}

TEST_F(ChartWindowTest, ThirtyRowsNeedNoScrollBarAndThirtyOneHaveOne) {
    OpenWith("30");
    const int thirty = Lines().height();
    EXPECT_EQ(Lines().model()->rowCount(), 30);
    EXPECT_EQ(Lines().verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    EXPECT_EQ(Lines().verticalScrollBar()->maximum(), 0) << "all of them are seen";
    for (const char* count : {"31", "99999999999"}) {
        OpenWith(count);
        EXPECT_EQ(Lines().height(), thirty) << count;
        EXPECT_EQ(Lines().verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn) << count;
        EXPECT_TRUE(Lines().verticalScrollBar()->isVisible()) << count;
    }
    EXPECT_EQ(Title(), "TOP 2147483647");
    EXPECT_EQ(Lines().model()->rowCount(), 32770);
}

TEST_F(ChartWindowTest, AFontOfAnySizeLeavesEveryPartItsPlace) {
    Open();
    for (const int size : {7, 10, 14, 20}) {
        QFont font = Chart()->font();
        font.setPointSize(size);
        Chart()->setFont(font);
        OpenWith("10");
        EXPECT_EQ(Lines().verticalScrollBar()->maximum(), 0) << size;
        EXPECT_GE(Part<QLabel>("Label1").height(), Part<QLabel>("Label1").sizeHint().height()) << size;
        EXPECT_GE(Button().height(), Button().sizeHint().height()) << size;
        EXPECT_GE(Button().width(), Button().sizeHint().width()) << size;
        EXPECT_TRUE(Chart()->rect().contains(Button().geometry())) << size;
        EXPECT_GT(Button().y(), Lines().geometry().bottom()) << size;
        for (const char* name : {"Label1", "Label3"}) {
            EXPECT_GE(Part<QLabel>(name).width(), Part<QLabel>(name).sizeHint().width()) << name << size;
        }
        OpenWith("32000", "date");
        EXPECT_NE(PaintedTexts(Lines()).find("03.01.2026"), std::string::npos) << size;
        Lines().scrollToBottom();
        EXPECT_NE(PaintedTexts(Lines()).find("32000."), std::string::npos) << size;
    }
}

TEST_F(ChartWindowTest, OfAnEmptyLibraryTheGridIsEmptyAndTheButtonDoesNothing) {
    mainModule.Connection->Execute("Delete from Files");
    OpenWith("10");
    EXPECT_EQ(Shown(), Texts{});
    EXPECT_EQ(Lines().height(), ToPixels(10 * ToTwips(Lines().verticalHeader()->defaultSectionSize()) + 10));
    Form().Parts().Work.SetPanel(Panel::Scanning, "as it was");
    Button().click();
    EXPECT_EQ(PanelText(Panel::Scanning), "as it was") << "no list was loaded";
}

TEST_F(ChartWindowTest, ADoubleClickPlaysARowAndFillsAgain) {
    Open();
    DoubleClick(1);
    EXPECT_EQ(shell.executed, Texts{"/music/Three.mp3"});
    EXPECT_EQ(Hits(), (Texts{"1", "3", "3"}));
    EXPECT_EQ(Shown(), (Texts{"1.|Three.mp3|3", "2.|Two.mp3|3", "3.|One.mp3|1"})) << "the newer one first";
    EXPECT_EQ(Lines().currentIndex().row(), 1);
    EXPECT_EQ(Chart()->cursor().shape(), Qt::ArrowCursor);
    EXPECT_FALSE(mainModule.ActsAlone);
}

TEST_F(ChartWindowTest, FilesThatLeftTheLibraryMeanwhileGoFromTheChartsAtTheNextFill) {
    Open();
    mainModule.Connection->Execute("Delete from Files where File_id = 2");
    Button().click();
    EXPECT_EQ(Listed(), (Texts{"Abba", "Eels"}));
    DoubleClick(0);
    EXPECT_EQ(shell.executed, Texts{"/music/Two.mp3"}) << "it may still be on the disk";
    EXPECT_EQ(Hits(), (Texts{"1", "2"}));
    EXPECT_EQ(Shown(), (Texts{"1.|Three.mp3|2", "2.|One.mp3|1", "3.||"}));
}

TEST_F(ChartWindowTest, CountsThatWereResetMeanwhileShowAtTheNextFill) {
    Open();
    mainModule.Connection->Execute("Update Files Set Hits = 0");
    EXPECT_EQ(Shown(), (Texts{"1.|Two.mp3|3", "2.|Three.mp3|2", "3.|One.mp3|1"}));
    DoubleClick(2);
    EXPECT_EQ(Shown().front(), "1.|One.mp3|1");
}

TEST_F(ChartWindowTest, EnterPlaysTheCurrentRow) {
    Open();
    QTest::keyClick(&Lines(), Qt::Key_Down);
    QTest::keyClick(&Lines(), Qt::Key_Return);
    EXPECT_EQ(shell.executed, Texts{"/music/Three.mp3"});
}

TEST_F(ChartWindowTest, OnlyTheLeftButtonOnARowPlays) {
    OpenWith("1");
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        QMouseEvent click(QEvent::MouseButtonDblClick, Cell(0), Lines().viewport()->mapToGlobal(Cell(0)),
                          button, button, Qt::NoModifier);
        QCoreApplication::sendEvent(Lines().viewport(), &click);
    }
    EXPECT_EQ(shell.executed, Texts{});
    EXPECT_EQ(Hits(), (Texts{"1", "3", "2"}));
    mainModule.Connection->Execute("Delete from Files");
    OpenWith("5");
    QTest::mouseDClick(Lines().viewport(), Qt::LeftButton, {}, QPoint(20, 20));
    EXPECT_EQ(shell.executed, Texts{});
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(ChartWindowTest, InTheInternalPlayerTheRowTakesTheQueuesPlace) {
    settings.values["ExternalPlayer"] = "0";
    settings.values["AddToPlaylist"] = "1";
    Start();
    mainModule.UseExternalPlayer = false;
    mainModule.AlwaysAddToPlaylist = true;
    ClickRow(1);
    ASSERT_TRUE(Form().Parts().Commands.Run("mnuPlaySelectedItems"));
    Open();
    ASSERT_EQ(Shown()[2], "3.|Three.mp3|2");
    DoubleClick(2);
    EXPECT_EQ(Entries(), Texts{"|> Eels - Three"});
    EXPECT_EQ(engine->FileName(), "/music/Three.mp3");
    EXPECT_EQ(Hits(), (Texts{"2", "3", "3"}));
}

TEST_F(ChartWindowTest, ALineOfANumberAloneIsToldAndEmptiesTheQueue) {
    settings.values["ExternalPlayer"] = "0";
    Start();
    mainModule.UseExternalPlayer = false;
    OpenWith("10");
    EXPECT_EQ(Shown()[3], "4.||");
    DoubleClick(0);
    DoubleClick(3);
    EXPECT_EQ(Entries(), Texts{});
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0],
              (ShownBox{"Die Datei konnte nicht geöffnet werden!", "Abspielen nicht möglich!",
                        MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok}));
    EXPECT_EQ(Hits(), (Texts{"1", "4", "2"}));
}

TEST_F(ChartWindowTest, TheButtonShowsTheFilesInTheListWhateverIsFiltered) {
    Start();
    Control<QLineEdit>("txtSearch").setText(QStringLiteral("abba"));
    Control<QPushButton>("cmdSearch").click();
    ASSERT_EQ(Listed(), Texts{"Abba"});
    OpenWith("2");
    Button().click();
    EXPECT_EQ(Listed(), (Texts{"Cure", "Eels"}));
    EXPECT_EQ(PanelText(Panel::Interprets), "1 Interpret") << "the counters follow the filters";
    EXPECT_FALSE(mainModule.ShowChartMode);
    Control<QPushButton>("cmdSearch").click();
    EXPECT_EQ(Listed(), Texts{"Abba"}) << "the next load is an ordinary one";
}

TEST_F(ChartWindowTest, AnOrdinaryLoadInsideThatOfTheChartsIsOne) {
    Open();
    bool inside = false;
    events.onDoEvents = [&] {
        if (!inside) {
            inside = true;
            Form().Parts().List.LoadDatabase({});
            EXPECT_EQ(Listed().size(), 3U);
            EXPECT_TRUE(mainModule.ShowChartMode);
        }
    };
    services.events = &events;
    OpenWith("1");
    Button().click();
    services.events = &realEvents;
    EXPECT_TRUE(inside);
    EXPECT_EQ(Listed(), Texts{"Cure"});
}

TEST_F(ChartWindowTest, WhileSomethingActsAloneTheWindowDoesNot) {
    Open();
    for (bool MainModule::*const busy : {&MainModule::ScanRunning, &MainModule::ActsAlone}) {
        mainModule.*busy = true;
        DoubleClick(0);
        QTest::keyClick(&Lines(), Qt::Key_Return);
        Button().click();
        EXPECT_FALSE(Form().Parts().Commands.Run("top"));
        EXPECT_FALSE(Form().Parts().Commands.Run("date"));
        EXPECT_FALSE(Form().Parts().Commands.Run("mnuToplists"));
        mainModule.*busy = false;
    }
    EXPECT_EQ(shell.executed, Texts{});
    EXPECT_EQ(Listed().size(), 3U);
}

TEST_F(ChartWindowTest, InTheMiddleOfAPlayNothingElseActsAndTheWindowMayClose) {
    settings.values["ExternalPlayer"] = "0";
    Start();
    mainModule.UseExternalPlayer = false;
    Open();
    int points = 0;
    events.onDoEvents = [&] {
        ++points;
        DoubleClick(0);
        Button().click();
        EXPECT_FALSE(Form().Parts().Commands.Run("date"));
        EXPECT_FALSE(Form().Parts().Commands.Run("scan"));
        Chart()->close();
    };
    services.events = &events;
    DoubleClick(1);
    services.events = &realEvents;
    EXPECT_GE(points, 1);
    EXPECT_FALSE(Chart()->isVisible());
    EXPECT_EQ(Hits(), (Texts{"1", "3", "3"})) << "the one play is counted";
    EXPECT_FALSE(mainModule.ActsAlone);
    Open();
    EXPECT_EQ(Shown().size(), 3U);
}

TEST_F(ChartWindowTest, WhileThePlayerShowsItsBoxTheRowIsNotPlayedAgain) {
    Open();
    shell.executeResult = Shell::FileMissing;
    ActingMsgBox box([&] {
        DoubleClick(0);
        EXPECT_FALSE(Form().Parts().Commands.Run("top"));
    });
    services.msgBox = &box;
    DoubleClick(0);
    EXPECT_EQ(shell.executed.size(), 1U);
    EXPECT_EQ(box.shown.size(), 1U);
}

TEST_F(ChartWindowTest, TheTextsStayThoseOfTheirLanguageUntilTheListIsLoadedAgain) {
    Open();
    Action("mnuViewLanguageENG").trigger();
    EXPECT_EQ(Headers(), (Texts{"Platz", "Name", "Hits"}));
    EXPECT_EQ(test::Caption(Button().text()), "In Liste anzeigen");
    Open("date");
    EXPECT_EQ(Headers(), (Texts{"Rank", "Name", "Date"}));
    EXPECT_EQ(Title(), "Newest Mp3s");
    EXPECT_EQ(test::Caption(Button().text()), "Show in list");
}

TEST_F(ChartWindowTest, ItClosesWithTheMainWindowWhileThePlayerGoesOn) {
    Open();
    mainModule.PlayerOpen = true;
    Form().close();
    EXPECT_FALSE(Chart()->isVisible());
    EXPECT_FALSE(mainModule.ChartShowTop);
    windows->BringToFront();
    EXPECT_EQ(Chart(), nullptr) << "of the new main window";
    Open("date");
    EXPECT_EQ(Title(), "Aktuelle Mp3s");
}

TEST_F(ChartWindowTest, AMainWindowThatIsMinimisedKeepsItsCharts) {
    Open();
    QHideEvent minimised;
    QSpontaneKeyEvent::setSpontaneous(&minimised);
    qApp->notify(&Form(), &minimised); // As the system hides it.
    EXPECT_TRUE(Chart()->isVisible());
    EXPECT_TRUE(mainModule.ChartShowTop);
}

TEST_F(ChartWindowTest, AMainWindowThatMayNotCloseKeepsItsCharts) {
    Open();
    mainModule.ScanRunning = true;
    Form().close();
    mainModule.ScanRunning = false;
    EXPECT_TRUE(Chart()->isVisible());
    EXPECT_TRUE(mainModule.ChartShowTop);
}

TEST_F(ChartWindowTest, TabReachesBothPartsAndF1OpensTheirPage) {
    Open();
    EXPECT_EQ(Chart()->focusWidget(), &Lines());
    QTest::keyClick(&Lines(), Qt::Key_Tab);
    EXPECT_EQ(Chart()->focusWidget(), &Button());
    QTest::keyClick(&Button(), Qt::Key_Tab);
    EXPECT_EQ(Chart()->focusWidget(), &Lines());
    for (QWidget* part : {static_cast<QWidget*>(&Lines()), static_cast<QWidget*>(&Button())}) {
        helpViewer.shown.clear();
        QTest::keyClick(part, Qt::Key_F1);
        ASSERT_EQ(helpViewer.shown.size(), 1U);
        EXPECT_EQ(helpViewer.shown[0].second, "HTML\\toplists.html");
    }
    QTest::keyClick(&Button(), Qt::Key_Space);
    EXPECT_EQ(Listed().size(), 3U);
    EXPECT_EQ(FromQString(Lines().accessibleName()), "TOP 3");
}

TEST_F(ChartWindowTest, NamesAreShownAsTheyAreInOneLine) {
    mainModule.Connection->Execute("Update Files Set Name = '<b>a&b</b>\tx\n2' where File_id = 2");
    mainModule.Connection->Execute("Update Files Set Name = 'a\xFF.mp3' where File_id = 3");
    Open();
    EXPECT_EQ(Shown(), (Texts{"1.|<b>a&b</b> x 2|3", "2.|a\xEF\xBF\xBD.mp3|2", "3.|One.mp3|1"}));
}

} // namespace quavernet::test
