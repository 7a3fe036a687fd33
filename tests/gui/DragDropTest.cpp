#include "gui/GuiTest.h"

#include "adapters/qt/FileUris.h"

#include <QDrag>
#include <QDropEvent>
#include <QMessageBox>
#include <QMimeData>

#include <fstream>
#include <optional>

namespace quavernet::test {

namespace {
class DragDropTest : public GuiTest {
protected:
    ~DragDropTest() override {
        if (windows) { // The toolkit would look for the widget under the drag in the next test.
            QDragLeaveEvent leave;
            QCoreApplication::sendEvent(Grid().viewport(), &leave);
        }
    }
    /// No tag and no frame: such a file is named after its name.
    std::string MakeFile(const std::string& name) {
        std::ofstream(folder / name, std::ios::binary) << std::string(400, 'x');
        return folder / name;
    }
    /// Below the header of the list.
    static bool Drop(QWidget& target, const Texts& paths) { return GuiTest::Drop(target, paths, {10, 40}); }
    /// The answers of a target to what a source offers: enter, move, drop, as "taken" or "refused".
    Texts Answers(QWidget& target, const QMimeData& data, Qt::DropActions offered) {
        const QPoint place(10, 40);
        QDragEnterEvent enter(place, offered, &data, Qt::LeftButton, Qt::NoModifier);
        QDragMoveEvent move(place, offered, &data, Qt::LeftButton, Qt::NoModifier);
        QDropEvent drop(place, offered, &data, Qt::LeftButton, Qt::NoModifier);
        Texts answers;
        for (QDropEvent* event : {static_cast<QDropEvent*>(&enter), static_cast<QDropEvent*>(&move), &drop}) {
            QCoreApplication::sendEvent(&target, event);
            answers.emplace_back(event->isAccepted() ? "taken" : "refused");
        }
        return answers;
    }
    std::vector<QWidget*> Targets() {
        return {Grid().viewport(), Control<QAbstractScrollArea>("TreeView").viewport(), &Form()};
    }
    /// Far enough from the second row for a drag of it.
    void MoveWithLeftButton() {
        const QPoint far = CellCentre(2) + QPoint(60, 5);
        QMouseEvent move(QEvent::MouseMove, QPointF(far), QPointF(Grid().viewport()->mapToGlobal(far)),
                         Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Grid().viewport(), &move);
    }
    /// How many drags begin at a press on the second row and a move, when this comes in the events that the
    /// beginning of a drag lets run.
    qsizetype DragsWith(const std::function<void()>& inEvents) {
        HandEvents hand;
        QTest::mousePress(Grid().viewport(), Qt::LeftButton, {}, CellCentre(2));
        hand.onDoEvents = [&] {
            hand.onDoEvents = nullptr;
            inEvents();
        };
        services.events = &hand;
        MoveWithLeftButton();
        services.events = &realEvents;
        return Grid().findChildren<QDrag*>().size();
    }
    Texts Column(const std::string& statement) {
        Texts texts;
        ADODB::Recordset rows;
        rows.Open(statement, *mainModule.Connection);
        for (; !rows.Eof(); rows.MoveNext()) {
            texts.push_back(rows.Fields(0).Text());
        }
        return texts;
    }
    Texts Paths() { return Column("Select Path from Files order by File_id"); }
};
} // namespace

TEST_F(DragDropTest, FilesDroppedOnTheListJoinTheLibraryInTheirOrder) {
    const std::string b = MakeFile("Cure - Two.mp3");
    const std::string a = MakeFile("Abba - One.MP3");
    Start();
    EXPECT_TRUE(Drop(*Grid().viewport(), {b, MakeFile("notes.txt"), a, folder.Path()}));
    EXPECT_EQ(Paths(), (Texts{b, a}));
    EXPECT_EQ(Listed().size(), 2U);
}

TEST_F(DragDropTest, AFileWithoutATagIsNamedAfterTheOneBeforeIt) {
    Start();
    Drop(*Grid().viewport(), {MakeFile("Abba - One.mp3"), MakeFile("Cure - Two.mp3")});
    EXPECT_EQ(Column("Select T.Name from Files F, Titel T where F.Title_id = T.Title_id order by F.File_id"),
              (Texts{"One", "One"}));
}

TEST_F(DragDropTest, AKnownFileAddsNothingAndTheListStays) {
    const std::string path = MakeFile("Abba - One.mp3");
    Start();
    Drop(*Grid().viewport(), {path});
    ClickRow(1);
    Drop(*Grid().viewport(), {path});
    EXPECT_EQ(Paths(), Texts{path});
    EXPECT_EQ(mainModule.SelectedRows.Count(), 1U);
}

TEST_F(DragDropTest, WithLoadOverSearchTheFileIsStoredAndTheListStaysEmpty) {
    Start();
    mainModule.LoadOverSearch = true;
    Drop(*Grid().viewport(), {MakeFile("Abba - One.mp3")});
    EXPECT_EQ(Paths().size(), 1U);
    EXPECT_TRUE(Listed().empty());
}

TEST_F(DragDropTest, TheBackgroundOfTheWindowAddsNothing) {
    const std::string path = MakeFile("Abba - One.mp3");
    Start();
    Drop(Form(), {path});
    EXPECT_TRUE(Paths().empty());
    EXPECT_TRUE(Listed().empty());
}

TEST_F(DragDropTest, WhatIsNoFileIsNotTaken) {
    Start();
    QMimeData text;
    text.setText(QStringLiteral("/music/a.mp3"));
    QDragEnterEvent enter(QPoint(10, 40), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(Grid().viewport(), &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST_F(DragDropTest, ALinkToTheWebIsTakenByNobody) {
    Start();
    QMimeData link;
    link.setData(QStringLiteral("text/uri-list"), "http://host/c.mp3\r\n");
    QDragEnterEvent enter(QPoint(10, 40), Qt::CopyAction, &link, Qt::LeftButton, Qt::NoModifier);
    enter.accept();
    QCoreApplication::sendEvent(Grid().viewport(), &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST_F(DragDropTest, TheListRefusesADragThatWouldAddNothing) {
    const std::string path = MakeFile("Abba - One.mp3");
    std::filesystem::create_directory(folder / "album");
    Start();
    const auto refuses = [&](const std::vector<std::string>& paths) {
        const std::unique_ptr<QMimeData> data(FilesToOffer(paths));
        QDragEnterEvent enter(QPoint(10, 40), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Grid().viewport(), &enter);
        QDragMoveEvent move(QPoint(10, 40), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Grid().viewport(), &move);
        EXPECT_EQ(enter.isAccepted(), move.isAccepted());
        return !enter.isAccepted();
    };
    EXPECT_FALSE(refuses({path}));
    EXPECT_TRUE(refuses({folder / "album", MakeFile("notes.txt")})) << "only audio files join the library";
    Drop(*Grid().viewport(), {path});
    EXPECT_EQ(Listed(), Texts{"Abba"});
    EXPECT_EQ(PanelText(Panel::Scanning), "") << "the panel is empty after long work";
    EXPECT_TRUE(refuses({path})) << "it is in the library";
    EXPECT_FALSE(refuses({path, MakeFile("Cure - Two.mp3")}));
    mainModule.ScanRunning = true;
    EXPECT_TRUE(refuses({MakeFile("Cure - Two.mp3")}));
    mainModule.ScanRunning = false;
}

TEST_F(DragDropTest, TheBackgroundOfTheWindowRefusesEveryDrag) {
    Start();
    // The toolkit asks the widget under the mouse and those that hold it.
    for (const QWidget* widget = &Form().Panes(); widget != nullptr; widget = widget->parentWidget()) {
        EXPECT_FALSE(widget->acceptDrops()) << FromQString(widget->objectName());
    }
}

TEST_F(DragDropTest, FilesOfOtherMachinesAndProtocolsAreLeftOut) {
    QMimeData data;
    data.setData(QStringLiteral("text/uri-list"),
                 "# a comment\r\nfile:///a%20b.mp3\r\nhttp://host/c.mp3\r\n"
                 "file://localhost/d.mp3\nfile://other/e.mp3\r\nfile:/f.mp3");
    EXPECT_EQ(LocalFiles(data), (Texts{"/a b.mp3", "/d.mp3", "/f.mp3"}));
    EXPECT_TRUE(LocalFiles(QMimeData()).empty());
}

TEST_F(DragDropTest, TheListIsNotPaintedUnderItsOwnDrag) {
    class PaintWatch : public QObject {
    public:
        bool eventFilter(QObject* watched, QEvent* event) override {
            if (event->type() == QEvent::ChildAdded) {
                wasPainted = static_cast<QWidget*>(watched)->updatesEnabled();
            }
            return false;
        }
        std::optional<bool> wasPainted;
    };
    AddFile("Abba", "One");
    AddFile("Cure", "Two");
    Start();
    PaintWatch watch;
    Grid().installEventFilter(&watch);
    EXPECT_EQ(DragsWith([] {}), 1);
    EXPECT_EQ(watch.wasPainted, std::optional(false));
    EXPECT_TRUE(Grid().updatesEnabled());
}

TEST_F(DragDropTest, FilesUnderTheNameOfThisMachineAreLocal) {
    QMimeData data;
    const QByteArray host = QSysInfo::machineHostName().toUtf8();
    data.setData(QStringLiteral("text/uri-list"), "file://" + host + "/a.mp3\r\nfile://" + host.toUpper() +
                                                      "/b.mp3\r\nfile://x" + host + "/c.mp3");
    EXPECT_EQ(LocalFiles(data), (Texts{"/a.mp3", "/b.mp3"}));
}

TEST_F(DragDropTest, APathWithANulIsLeftOut) {
    QMimeData data;
    data.setData(QStringLiteral("text/uri-list"), "file:///a.mp3%00.wav\r\nfile:///b.mp3\r\n%00\r\n");
    EXPECT_EQ(LocalFiles(data), (Texts{"/b.mp3"})); // The system would open "/a.mp3" for it.
}

TEST_F(DragDropTest, OfferedFilesReadBackByteForByte) {
    const Texts paths{"/m/ä & #1%.mp3", "/m/\xFF\xFE.mp3", "/m/a\nb.wav"};
    const std::unique_ptr<QMimeData> data(FilesToOffer(paths));
    EXPECT_EQ(LocalFiles(*data), paths);
    EXPECT_TRUE(data->hasUrls());
    EXPECT_EQ(FromQString(data->urls().constFirst().toLocalFile()), paths[0]);
}

TEST_F(DragDropTest, ADragFromTheListEndsThePressThatBeganIt) {
    AddFile("Abba", "One");
    AddFile("Cure", "Two");
    Start();
    QTest::mousePress(Grid().viewport(), Qt::LeftButton, {}, CellCentre(2));
    EXPECT_TRUE(Form().Parts().Drag.GridDragging);
    MoveWithLeftButton();
    EXPECT_FALSE(Form().Parts().Drag.GridDragging);
    EXPECT_FALSE(Grid().Selection().LeftDown());
    EXPECT_EQ(mainModule.SelectedRows.Rows(), std::vector<std::int32_t>{2});
}

TEST_F(DragDropTest, AMoveInTheEventsOfADragThatBeginsMakesOneDragOfTheListNotTwo) {
    AddFile("Abba", "One");
    AddFile("Cure", "Two");
    Start();
    EXPECT_EQ(DragsWith([&] { MoveWithLeftButton(); }), 1);
    EXPECT_FALSE(Form().Parts().Drag.GridDragging);
    EXPECT_FALSE(Grid().Selection().LeftDown());
}

TEST_F(DragDropTest, AReleaseInTheEventsOfADragThatBeginsLeavesNoneOfTheList) {
    AddFile("Abba", "One");
    AddFile("Cure", "Two");
    Start();
    EXPECT_EQ(DragsWith([&] { QTest::mouseRelease(Grid().viewport(), Qt::LeftButton, {}, CellCentre(2)); }),
              0);
    EXPECT_FALSE(Form().Parts().Drag.GridDragging);
}

TEST_F(DragDropTest, NobodyTakesFilesFromASourceThatOffersAMoveAlone) {
    const std::string path = MakeFile("Abba - One.mp3");
    Start();
    const std::unique_ptr<QMimeData> data(FilesToOffer({path}));
    for (QWidget* target : Targets()) {
        EXPECT_EQ(Answers(*target, *data, Qt::MoveAction), (Texts{"refused", "refused", "refused"}));
    }
    EXPECT_TRUE(Paths().empty());
    EXPECT_EQ(Answers(*Grid().viewport(), *data, Qt::MoveAction | Qt::CopyAction),
              (Texts{"taken", "taken", "taken"}));
    EXPECT_EQ(Paths(), Texts{path});
}

TEST_F(DragDropTest, WhileABoxIsOpenNobodyTakesFiles) {
    const std::string path = MakeFile("Abba - One.mp3");
    Start();
    const std::unique_ptr<QMimeData> data(FilesToOffer({path}));
    QMessageBox box(&Form());
    box.open();
    for (QWidget* target : Targets()) {
        EXPECT_EQ(Answers(*target, *data, Qt::CopyAction), (Texts{"refused", "refused", "refused"}));
    }
    EXPECT_TRUE(Paths().empty());
    box.close();
    EXPECT_EQ(Answers(*Grid().viewport(), *data, Qt::CopyAction), (Texts{"taken", "taken", "taken"}));
}

} // namespace quavernet::test
