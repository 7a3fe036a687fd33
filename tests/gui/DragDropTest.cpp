#include "gui/GuiTest.h"

#include "adapters/qt/FileUris.h"

#include <QDropEvent>
#include <QMimeData>

#include <fstream>

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
    /// True if the target took the drop.
    bool Drop(QWidget& target, const Texts& paths) {
        const std::unique_ptr<QMimeData> data(FilesToOffer(paths));
        const QPoint place(10, 40);
        QDragEnterEvent enter(place, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&target, &enter);
        if (!enter.isAccepted()) {
            return false;
        }
        QDragMoveEvent move(place, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&target, &move);
        QDropEvent drop(place, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&target, &drop);
        return drop.isAccepted();
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
    for (QWidget* target : {static_cast<QWidget*>(Grid().viewport()), static_cast<QWidget*>(&Form())}) {
        QDragEnterEvent enter(QPoint(10, 40), Qt::CopyAction, &link, Qt::LeftButton, Qt::NoModifier);
        enter.accept();
        QCoreApplication::sendEvent(target, &enter);
        EXPECT_FALSE(enter.isAccepted()) << FromQString(target->objectName());
    }
}

TEST_F(DragDropTest, TheBackgroundNeverAgreesToAMoveAndTakesNothingDuringAScan) {
    const std::string path = MakeFile("Abba - One.mp3");
    Start();
    const std::unique_ptr<QMimeData> data(FilesToOffer({path}));
    QDragEnterEvent move(QPoint(10, 40), Qt::CopyAction | Qt::MoveAction, data.get(), Qt::LeftButton,
                         Qt::NoModifier);
    move.setDropAction(Qt::MoveAction);
    QCoreApplication::sendEvent(&Form(), &move);
    EXPECT_EQ(move.dropAction(), Qt::CopyAction);
    mainModule.ScanRunning = true;
    for (QWidget* target : {static_cast<QWidget*>(Grid().viewport()), static_cast<QWidget*>(&Form())}) {
        QDragEnterEvent enter(QPoint(10, 40), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        enter.accept();
        QCoreApplication::sendEvent(target, &enter);
        EXPECT_FALSE(enter.isAccepted());
    }
    mainModule.ScanRunning = false;
}

TEST_F(DragDropTest, FilesOfOtherMachinesAndProtocolsAreLeftOut) {
    QMimeData data;
    data.setData(QStringLiteral("text/uri-list"),
                 "# a comment\r\nfile:///a%20b.mp3\r\nhttp://host/c.mp3\r\n"
                 "file://localhost/d.mp3\nfile://other/e.mp3\r\nfile:/f.mp3");
    EXPECT_EQ(LocalFiles(data), (Texts{"/a b.mp3", "/d.mp3", "/f.mp3"}));
    EXPECT_TRUE(LocalFiles(QMimeData()).empty());
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
    const QPoint far = CellCentre(2) + QPoint(60, 5);
    QMouseEvent move(QEvent::MouseMove, QPointF(far), QPointF(Grid().viewport()->mapToGlobal(far)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(Grid().viewport(), &move);
    EXPECT_FALSE(Form().Parts().Drag.GridDragging);
    EXPECT_FALSE(Grid().Selection().LeftDown());
    EXPECT_EQ(mainModule.SelectedRows.Rows(), std::vector<std::int32_t>{2});
}

} // namespace quavernet::test
