#include "gui/GuiTest.h"

#include "browser/GridPaint.h"
#include "support/ScriptedPlayer.h"
#include "widgets/Colours.h"

#include <QClipboard>
#include <QHeaderView>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <QWheelEvent>

namespace quavernet::test {

namespace {
class GridTest : public GuiTest {
protected:
    void AddFiles(int count) {
        for (int i = 0; i < count; ++i) {
            AddFile("Performer " + std::to_string(100 + i), "Title " + std::to_string(100 + i));
        }
    }
    void Wheel(QWidget& target, int delta) { Wheel(target, QPoint(0, delta)); }
    void Wheel(QWidget& target, QPoint delta) {
        const QPointF place(5, 5);
        QWheelEvent event(place, target.mapToGlobal(place), QPoint(), delta, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        // Only an event that looks like the system's travels up to the window.
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(&target, &event);
    }
    /// As the system sends it: the second press is the double click itself.
    void DoubleClickRow(int row, Qt::KeyboardModifiers modifiers = {}) {
        ClickRow(row, modifiers);
        QTest::mouseDClick(Grid().viewport(), Qt::LeftButton, modifiers, CellCentre(row));
    }
    void DoubleClickHeader(int column) {
        QHeaderView& header = *Grid().horizontalHeader();
        const QPoint place(header.sectionViewportPosition(column) + 20, header.height() / 2);
        QTest::mouseDClick(header.viewport(), Qt::LeftButton, {}, place);
    }
    QColor RowColour(int row) {
        const QImage image = Grid().viewport()->grab().toImage();
        const QRect cell = Grid().visualRect(Grid().model()->index(row - 1, 0));
        return image.pixelColor(cell.right() - 3, cell.center().y());
    }
    void MoveMouse(const QPoint& place, Qt::MouseButtons buttons = Qt::NoButton) {
        QMouseEvent move(QEvent::MouseMove, QPointF(place), QPointF(Grid().viewport()->mapToGlobal(place)),
                         Qt::NoButton, buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(Grid().viewport(), &move);
    }
    using Rows = std::vector<std::int32_t>;
};
} // namespace

TEST_F(GridTest, AClickPaintsTheRowAndShowsItsPath) {
    AddFiles(3);
    Start();
    ClickRow(2);
    EXPECT_EQ(mainModule.SelectedRows.Rows(), Rows{2});
    EXPECT_EQ(PanelText(Panel::Scanning), "/music/Title 101.mp3");
    EXPECT_EQ(RowColour(2), ColourOf(OwnColour::SelectionGround, Grid().palette()));
    EXPECT_NE(RowColour(1), RowColour(2));
    ClickRow(3, Qt::ControlModifier);
    EXPECT_EQ(mainModule.SelectedRows.Rows(), (Rows{2, 3}));
    ClickRow(1, Qt::ShiftModifier);
    EXPECT_EQ(mainModule.SelectedRows.Rows(), (Rows{1, 2, 3}));
}

TEST_F(GridTest, EnterAfterAShiftClickOnTheFirstRowOpensThatRow) {
    AddFiles(3);
    Start();
    mainModule.UseExternalPlayer = true;
    ClickRow(1, Qt::ShiftModifier);
    QTest::keyClick(&Grid(), Qt::Key_Return);
    EXPECT_EQ(mainModule.SortDirection, "ASC");
    EXPECT_EQ(shell.executed, Texts{"/music/Title 100.mp3"});
}

TEST_F(GridTest, AReloadSelectsNothing) {
    AddFiles(3);
    Start();
    ClickRow(2);
    Form().Parts().Views.LoadDatabase({});
    EXPECT_EQ(mainModule.SelectedRows.Count(), 0U);
    EXPECT_FALSE(Grid().Selection().IsPainted(2));
    EXPECT_EQ(PanelText(Panel::Scanning), "");
}

TEST_F(GridTest, ADoubleClickOnAHeaderSortsAndTurnsTheDirectionEachTime) {
    AddFiles(3);
    Start();
    EXPECT_EQ(Grid().Model().SortColumn(), 0);
    EXPECT_TRUE(Grid().Model().SortAscending());
    bool paintedMeanwhile = true;
    QObject::connect(Grid().model(), &QAbstractItemModel::modelReset, &Form(),
                     [&] { paintedMeanwhile = Grid().updatesEnabled(); });
    DoubleClickHeader(1);
    EXPECT_FALSE(paintedMeanwhile);
    EXPECT_TRUE(Grid().updatesEnabled());
    Grid().model()->disconnect(&Form());
    EXPECT_TRUE(mainModule.SortTitle);
    EXPECT_FALSE(mainModule.SortInterpret);
    EXPECT_EQ(mainModule.SortDirection, "DESC");
    EXPECT_EQ(Grid().Model().SortColumn(), 1);
    EXPECT_FALSE(Grid().Model().SortAscending());
    EXPECT_EQ(Listed().front(), "Performer 102");
    DoubleClickHeader(0);
    EXPECT_EQ(mainModule.SortDirection, "ASC");
    EXPECT_EQ(Listed().front(), "Performer 100");
}

TEST_F(GridTest, OneNotchOfTheWheelIsOneRowWhereverTheMouseStands) {
    AddFiles(80);
    Start();
    ClickRow(1);
    Wheel(*Grid().viewport(), -120);
    EXPECT_EQ(Grid().TopRow(), 2);
    Wheel(*Grid().viewport(), -960);
    EXPECT_EQ(Grid().TopRow(), 3);
    Wheel(Control<QLineEdit>("txtSearch"), -120);
    EXPECT_EQ(Grid().TopRow(), 4);
    Wheel(Control<QComboBox>("cboGenre"), -120);
    EXPECT_EQ(Grid().TopRow(), 5);
    EXPECT_EQ(Control<QComboBox>("cboGenre").currentIndex(), 0);
    Wheel(Control<QLineEdit>("txtSearch"), QPoint(120, 0)); // To the side.
    EXPECT_EQ(Grid().TopRow(), 5);
    Wheel(*Grid().verticalScrollBar(), -120);
    EXPECT_EQ(Grid().TopRow(), 6);
    Wheel(*Grid().horizontalScrollBar(), 120);
    EXPECT_EQ(Grid().TopRow(), 5);
    for (int i = 0; i < 9; ++i) {
        Wheel(*Grid().viewport(), 40);
    }
    EXPECT_EQ(Grid().TopRow(), 1);
    EXPECT_EQ(Grid().Selection().Row(), 1);
    EXPECT_EQ(mainModule.SelectedRows.Rows(), Rows{1});
}

TEST_F(GridTest, TheWheelOverTheTreeMovesTheListAndNotTheTree) {
    AddFiles(80);
    for (int i = 1; i <= 90; ++i) {
        mainModule.Connection->Execute("Insert into Categories (Category) values ('Category " +
                                       std::to_string(1000 + i) + "')");
    }
    Start();
    auto& tree = Control<TreeView>("TreeView");
    QScrollBar& bar = *tree.verticalScrollBar();
    ASSERT_GT(bar.maximum(), 0);
    bar.setValue(3);
    tree.setFocus();
    Wheel(*tree.viewport(), -120);
    EXPECT_EQ(Grid().TopRow(), 2);
    Wheel(bar, -120);
    EXPECT_EQ(Grid().TopRow(), 3);
    Wheel(*tree.viewport(), 120);
    EXPECT_EQ(Grid().TopRow(), 2);
    EXPECT_EQ(bar.value(), 3);
}

TEST_F(GridTest, APressInTheListBringsTheWindowToTheFront) {
    class RaiseCounter : public QObject {
    public:
        bool eventFilter(QObject*, QEvent* event) override {
            count += event->type() == QEvent::ZOrderChange ? 1 : 0;
            return false;
        }
        int count = 0;
    };
    AddFiles(3);
    Start();
    RaiseCounter raises;
    Form().installEventFilter(&raises);
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton}) {
        raises.count = 0;
        QTest::mousePress(Grid().viewport(), button, {}, CellCentre(1));
        EXPECT_EQ(raises.count, 1);
        QTest::mouseRelease(Grid().viewport(), button, {}, CellCentre(1));
        EXPECT_EQ(raises.count, 1);
    }
    Form().removeEventFilter(&raises);
}

TEST_F(GridTest, TheToolTipIsTheFilesNameOnDisk) {
    AddFiles(2);
    Start();
    const QPoint place = CellCentre(2);
    MoveMouse(place);
    QHelpEvent help(QEvent::ToolTip, place, Grid().viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(Grid().viewport(), &help);
    EXPECT_EQ(FromQString(QToolTip::text()), "Title 101.mp3");
}

TEST_F(GridTest, TheHeadHasAToolTipOfItsOwn) {
    AddFiles(2);
    Start();
    for (const auto& [item, text] : {std::pair("mnuViewLanguageGER", "Doppelklick sortiert"),
                                     std::pair("mnuViewLanguageENG", "Double-click sorts")}) {
        Action(item).trigger();
        MoveMouse(CellCentre(2));
        QWidget& head = *Grid().horizontalHeader()->viewport();
        const QPoint place(20, head.height() / 2);
        QHelpEvent help(QEvent::ToolTip, place, head.mapToGlobal(place));
        QCoreApplication::sendEvent(&head, &help);
        EXPECT_EQ(FromQString(QToolTip::text()), text);
    }
}

TEST_F(GridTest, NumbersAndTheirHeadsAreOnTheRightTextsOnTheLeft) {
    AddFiles(1);
    Start();
    for (int column = 0; column < ListColumnCount; ++column) {
        const bool isNumber = column >= 2 && column <= 4;
        const int expected = (isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
        EXPECT_EQ(Grid().model()->index(0, column).data(Qt::TextAlignmentRole).toInt(), expected) << column;
        EXPECT_EQ(Grid().model()->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt(),
                  expected);
    }
}

TEST_F(GridTest, TheSortArrowNeverCoversTheHeadsText) {
    AddFiles(1);
    Start();
    const auto& head = static_cast<const ArrowHeader&>(*Grid().horizontalHeader());
    for (const int column : {0, 4}) {
        Grid().Model().SetSortArrow(-1, true);
        const QRect section(head.sectionViewportPosition(column), 0, head.sectionSize(column), head.height());
        const QImage bare = Grid().horizontalHeader()->grab(section).toImage();
        Grid().Model().SetSortArrow(column, true);
        const QImage arrow = Grid().horizontalHeader()->grab(section).toImage();
        // The arrow is where nothing else is: its part of the section has no text without it.
        const int textEnd = head.TextRect(QRect(QPoint(), section.size()), column).right() + 1;
        bool isDrawn = false;
        for (int x = textEnd; x < bare.width(); ++x) {
            for (int y = 0; y < bare.height(); ++y) {
                isDrawn = isDrawn || arrow.pixel(x, y) != bare.pixel(x, y);
            }
        }
        EXPECT_TRUE(isDrawn) << column;
        EXPECT_LE(head.fontMetrics().horizontalAdvance(
                      Grid().model()->headerData(column, Qt::Horizontal).toString()),
                  textEnd);
    }
}

TEST_F(GridTest, HeadTintAndSelectionReachTheRightEdgeOfTheList) {
    AddFiles(3);
    Start();
    for (int column = 0; column < ListColumnCount; ++column) {
        Grid().setColumnWidth(column, 60);
    }
    ClickRow(1);
    QHeaderView& head = *Grid().horizontalHeader();
    const int right = Grid().viewport()->width() - 5;
    const QImage heads = head.grab().toImage();
    const int middle = head.height() / 2;
    const double ratio = heads.devicePixelRatio();
    const auto pixel = [ratio](const QImage& image, int x, int y) {
        return image.pixelColor(static_cast<int>(x * ratio), static_cast<int>(y * ratio));
    };
    EXPECT_EQ(pixel(heads, right, middle), pixel(heads, head.sectionViewportPosition(5) + 50, middle));
    const QImage rows = Grid().viewport()->grab().toImage();
    const auto colorAt = [&](int row, int x) { return pixel(rows, x, CellCentre(row).y()); };
    EXPECT_EQ(colorAt(1, right), ColourOf(OwnColour::SelectionGround, Grid().palette()));
    EXPECT_EQ(colorAt(2, right), Grid().palette().color(QPalette::AlternateBase));
    EXPECT_EQ(colorAt(2, head.sectionViewportPosition(5) + 50), colorAt(2, right));
    EXPECT_EQ(colorAt(3, right), Grid().palette().color(QPalette::Base));
}

TEST_F(GridTest, GridLinesAreOnePixelThickAndEquallyFarApart) {
    AddFiles(20);
    settings.values["GridLines"] = "yes";
    Start();
    Grid().setColumnWidth(0, 60);
    Grid().setColumnWidth(1, 60);
    Grid().setColumnWidth(5, 200); // Room beside the text.
    const QImage rows = Grid().viewport()->grab().toImage();
    const double ratio = rows.devicePixelRatio();
    const int x = static_cast<int>((Grid().columnViewportPosition(5) + 150) * ratio);
    const int rowHeight = static_cast<int>(std::lround(Grid().rowHeight(0) * ratio));
    EXPECT_NEAR(Grid().rowHeight(0) * ratio, rowHeight, 0.01) << "whole pixels of the screen";
    const QColor base = Grid().palette().color(QPalette::Base);
    const QColor tint = Grid().palette().color(QPalette::AlternateBase);
    std::vector<int> lines;
    for (int y = 0; y < rowHeight * 10; ++y) {
        const QColor color = rows.pixelColor(x, y);
        if (color != base && color != tint) {
            lines.push_back(y);
        }
    }
    ASSERT_EQ(lines.size(), 10U);
    for (std::size_t i = 1; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i] - lines[i - 1], rowHeight);
    }
}

TEST_F(GridTest, ADoubleClickOpensTheFileInTheSystemsPlayerAndCountsIt) {
    AddFiles(2);
    Start();
    mainModule.UseExternalPlayer = true;
    DoubleClickRow(2);
    EXPECT_EQ(shell.executed, Texts{"/music/Title 101.mp3"});
    EXPECT_EQ(mainModule.Connection->Query("Select Hits from Files where File_id = 2").At(0, 0).Integer(), 1);
    QTest::keyClick(&Grid(), Qt::Key_Return);
    EXPECT_EQ(shell.executed.size(), 2U);
}

TEST_F(GridTest, ArrowKeysMoveTheSelection) {
    AddFiles(60);
    Start();
    ClickRow(1);
    QTest::keyClick(&Grid(), Qt::Key_Down);
    EXPECT_EQ(mainModule.SelectedRows.Rows(), Rows{2});
    QTest::keyClick(&Grid(), Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(mainModule.SelectedRows.Rows(), (Rows{2, 3}));
    QTest::keyClick(&Grid(), Qt::Key_End);
    EXPECT_EQ(mainModule.SelectedRows.Rows(), Rows{60});
    EXPECT_TRUE(Grid().RowIsVisible(60));
}

TEST_F(GridTest, ARightClickOpensTheKontextMenu) {
    AddFiles(2);
    Start();
    ClickRow(2, {}, Qt::RightButton);
    QMenu* menu = Form().Menu().Popup("mnuKontext");
    EXPECT_TRUE(menu->isVisible());
    EXPECT_EQ(mainModule.DetailsRow, 2);
    menu->close();
}

TEST_F(GridTest, TheRowsAreNoTallerThanOneLine) {
    AddFiles(1);
    Start();
    EXPECT_EQ(Grid().rowHeight(0), Grid().fontMetrics().height() + 5);
    EXPECT_FALSE(Grid().wordWrap());
}

TEST_F(GridTest, APressBelowTheLastRowCountsAsTheLastRow) {
    AddFiles(3);
    Start();
    const QPoint below(20, Grid().viewport()->height() - 4);
    EXPECT_EQ(Grid().MouseRow(below), Grid().Selection().Rows());
    QTest::mouseClick(Grid().viewport(), Qt::LeftButton, {}, below);
    EXPECT_EQ(mainModule.SelectedRows.Rows(), Rows{3});
}

TEST_F(GridTest, AnEmptyListTakesPressesAndDoubleClicksWithoutAResult) {
    mainModule.UseExternalPlayer = true;
    Start();
    const QPoint place(20, 40);
    QTest::mouseClick(Grid().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(Grid().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseClick(Grid().viewport(), Qt::RightButton, {}, place);
    QTest::keyClick(&Grid(), Qt::Key_Return);
    EXPECT_FALSE(Form().Menu().Popup("mnuKontext")->isVisible());
    EXPECT_TRUE(shell.executed.empty());
    EXPECT_EQ(mainModule.SelectedRows.Count(), 0U);
}

TEST_F(GridTest, TheToolTipOfAPlaceWithoutAFileStaysAndALoadEmptiesIt) {
    AddFiles(2);
    Start();
    MoveMouse(CellCentre(1));
    EXPECT_EQ(FromQString(Grid().toolTip()), "Title 100.mp3");
    MoveMouse(QPoint(20, Grid().viewport()->height() - 4));
    EXPECT_EQ(FromQString(Grid().toolTip()), "Title 100.mp3");
    Form().Parts().Views.LoadDatabase({});
    EXPECT_EQ(FromQString(Grid().toolTip()), "");
}

TEST_F(GridTest, IfThePlayerCanNotComeUpADoubleClickEndsSilentlyAndCountsNothing) {
    AddFiles(2);
    settings.values["WindowLeftPlayer"] = "x";
    Texts calls;
    services.createMediaPlayer = [&calls] { return std::make_unique<ScriptedPlayer>(calls); };
    Start();
    DoubleClickRow(2);
    QTest::keyClick(&Grid(), Qt::Key_Return);
    EXPECT_TRUE(shell.executed.empty());
    EXPECT_TRUE(msgBox.shown.empty());
    EXPECT_EQ(mainModule.Connection->Query("Select Sum(Hits) from Files").At(0, 0).Integer(), 0);
    EXPECT_EQ(Form().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(GridTest, TheSystemsFailuresAreTold) {
    AddFiles(1);
    Start();
    mainModule.UseExternalPlayer = true;
    for (const auto& [code, text] : {std::pair(2, "Die Datei konnte nicht gefunden werden!"),
                                     std::pair(3, "Netzlaufwerk nicht verfügbar!"),
                                     std::pair(5, "Die Datei konnte nicht gefunden werden!")}) {
        shell.executeResult = code;
        DoubleClickRow(1);
        ASSERT_FALSE(msgBox.shown.empty());
        EXPECT_EQ(msgBox.shown.back().text, text);
        EXPECT_EQ(msgBox.shown.back().title, "Öffnen nicht möglich");
        EXPECT_EQ(msgBox.shown.back().icon, MsgBox::Icon::Exclamation);
    }
    EXPECT_EQ(mainModule.Connection->Query("Select Hits from Files").At(0, 0).Integer(), 3);
}

TEST_F(GridTest, ADoubleClickWithCtrlTakesTheRowInAndDoesNotTakeItOutAgain) {
    AddFiles(3);
    Start();
    mainModule.UseExternalPlayer = true;
    DoubleClickRow(2, Qt::ControlModifier);
    EXPECT_TRUE(Grid().Selection().IsPainted(2));
    EXPECT_EQ(shell.executed.size(), 1U);
}

TEST_F(GridTest, CtrlTakesThePaintOffARowThatStaysAMember) {
    AddFiles(3);
    Start();
    ClickRow(1);
    ClickRow(3, Qt::ControlModifier);
    ClickRow(3, Qt::ControlModifier);
    EXPECT_FALSE(Grid().Selection().IsPainted(3));
    EXPECT_EQ(mainModule.SelectedRows.Count(), 1U); // The File_id of row 3 is 3: here it is found by chance.
    mainModule.Connection->Execute("Update Files set File_id = File_id + 100");
    Form().Parts().Views.LoadDatabase({});
    ClickRow(1);
    ClickRow(3, Qt::ControlModifier);
    ClickRow(3, Qt::ControlModifier);
    EXPECT_FALSE(Grid().Selection().IsPainted(3));
    EXPECT_EQ(mainModule.SelectedRows.Rows(), (Rows{1, 3}));
}

TEST_F(GridTest, TheContextMenuKeepsAMultipleSelection) {
    AddFiles(4);
    Start();
    ClickRow(1);
    ClickRow(3, Qt::ShiftModifier);
    ClickRow(4, {}, Qt::RightButton);
    Form().Menu().Popup("mnuKontext")->close();
    EXPECT_EQ(mainModule.SelectedRows.Rows(), (Rows{1, 2, 3}));
    ClickRow(2);
    ClickRow(4, {}, Qt::RightButton);
    Form().Menu().Popup("mnuKontext")->close();
    EXPECT_EQ(mainModule.SelectedRows.Rows(), Rows{4});
    EXPECT_TRUE(Action("mnuKontextAnsicht").isEnabled());
}

TEST_F(GridTest, APressOnTheHeaderIsAPressInRowZero) {
    AddFiles(3);
    Start();
    ClickRow(2);
    QHeaderView& header = *Grid().horizontalHeader();
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, QPoint(20, header.height() / 2));
    EXPECT_EQ(mainModule.SelectedRows.Rows(), Rows{2});
    EXPECT_EQ(Listed().front(), "Performer 100");
    QTest::mouseClick(header.viewport(), Qt::RightButton, {}, QPoint(20, header.height() / 2));
    EXPECT_TRUE(Form().Menu().Popup("mnuKontext")->isVisible());
    Form().Menu().Popup("mnuKontext")->close();
}

TEST_F(GridTest, TypedLettersGoToTheNextRowOfTheSortedColumnThatBeginsWithThem) {
    AddFiles(60);
    AddFile("Zappa", "Apostrophe");
    Start();
    ClickRow(2);
    QTest::keyClicks(&Grid(), QStringLiteral("performer 150"));
    EXPECT_EQ(Grid().Selection().Row(), 51);
    EXPECT_EQ(mainModule.SelectedRows.Rows(), Rows{51});
    EXPECT_TRUE(Grid().RowIsVisible(51));
    EXPECT_EQ(PanelText(Panel::Scanning), "/music/Title 150.mp3");
    EXPECT_TRUE(Action("mnuDetails").isEnabled());
    QTest::keyClicks(&Grid(), QStringLiteral("!"));
    EXPECT_EQ(Grid().Selection().Row(), 51) << "nothing begins so";
}

TEST_F(GridTest, TypedLettersLookInTheColumnThatIsSorted) {
    AddFile("Zappa", "Apostrophe");
    AddFile("Abba", "Money");
    Start();
    DoubleClickHeader(1);
    ASSERT_EQ(Listed(), (Texts{"Abba", "Zappa"})) << "by title, downwards";
    QTest::keyClick(&Grid(), Qt::Key_A);
    EXPECT_EQ(Grid().Selection().Row(), 2);
}

TEST_F(GridTest, KeysOfCommandsAndABlankAreNoTypedLetters) {
    AddFile("Gabriel", "One");
    Start();
    for (const Qt::KeyboardModifier modifier : {Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier}) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_G, modifier, QStringLiteral("g"));
        QCoreApplication::sendEvent(&Grid(), &press);
        EXPECT_EQ(Grid().Selection().Row(), 0);
    }
    QTest::keyClick(&Grid(), Qt::Key_Space);
    EXPECT_EQ(Grid().Selection().Row(), 0);
}

TEST_F(GridTest, CtrlShiftCCopiesThePathsOfTheSelectionAsLinesAndAsFiles) {
    AddFiles(3);
    Start();
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    const auto copy = [this] {
        QTest::keyClick(Form().windowHandle(), Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
        return QGuiApplication::clipboard()->mimeData();
    };
    EXPECT_EQ(FromQString(copy()->text()), "before") << "nothing is selected";
    ClickRow(3);
    ClickRow(1, Qt::ControlModifier);
    EXPECT_EQ(FromQString(copy()->text()), "/music/Title 102.mp3\n/music/Title 100.mp3");
    EXPECT_EQ(LocalFiles(*QGuiApplication::clipboard()->mimeData()),
              (Texts{"/music/Title 102.mp3", "/music/Title 100.mp3"}));
    EXPECT_TRUE(msgBox.shown.empty()) << "Ctrl+C with Shift cleans nothing";
    ClickRow(2);
    Action("mnuKontextCopyPaths").trigger();
    EXPECT_EQ(FromQString(QGuiApplication::clipboard()->text()), "/music/Title 101.mp3");
    const ScopedValue alone(mainModule.ActsAlone, true);
    ClickRow(1);
    EXPECT_EQ(FromQString(copy()->text()), "/music/Title 101.mp3") << "another command is under way";
}

TEST_F(GridTest, TheWheelStopsAtTheEndsOfTheList) {
    AddFiles(60);
    Start();
    for (int i = 0; i < 100; ++i) {
        Wheel(*Grid().viewport(), -120);
    }
    EXPECT_TRUE(Grid().RowIsVisible(60));
    const std::int32_t last = Grid().TopRow();
    Wheel(*Grid().viewport(), -120);
    EXPECT_EQ(Grid().TopRow(), last);
}

namespace {
/// Counts the cells that are painted.
class CountingPainter : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter*, const QStyleOptionViewItem&, const QModelIndex&) const override { ++cells; }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        ++sizes;
        return QStyledItemDelegate::sizeHint(option, index);
    }
    mutable int cells = 0;
    mutable int sizes = 0;
};
} // namespace

TEST_F(GridTest, OfALongListOnlyTheCellsInViewAreComputed) {
    AddFile("Abba", "One");
    mainModule.Connection->Execute(
        "Insert into Files (Title_id, Inter_id, Name, Path, Sizeinbytes, Drive_id, Quality_id, Length, "
        "Extension_id, Genre_id, Album_id) with recursive N(i) as (select 1 union all select i + 1 from N "
        "where "
        "i < 100000) select 1, 1, 'n', '/m/' || i, 1, 1, 1, 1, Extension_id, 0, 1 from N, Files");
    Start();
    ASSERT_EQ(Grid().Model().rowCount(), 100001);
    CountingPainter counter;
    Grid().setItemDelegate(&counter);
    Grid().viewport()->grab();
    Grid().SetTopRow(50000);
    Grid().viewport()->grab();
    const int inView = (Grid().viewport()->height() / Grid().rowHeight(0) + 2) * ListColumnCount;
    EXPECT_GT(counter.cells, 0);
    EXPECT_LE(counter.cells, 4 * inView);
    EXPECT_EQ(counter.sizes, 0);
}

TEST_F(GridTest, ARowWithoutALengthDoesNotKeepTheProgramFromComingUp) {
    AddFile("Abba", "One");
    AddFile("Cure", "Two");
    mainModule.Connection->Execute("Update Files Set Length = null where Name = 'Two.mp3'");
    Start();
    EXPECT_EQ(Listed(), (Texts{"Abba", "Cure"}));
    EXPECT_EQ(PanelText(Panel::Scanning), "Bereit! Fehler in der Liste: Two.mp3 (94 - Invalid use of Null)");
    EXPECT_EQ(Grid().model()->index(1, 2).data().toString(), QString());
    EXPECT_FALSE(Grid().viewport()->grab().isNull()) << "painted";
    Form().Parts().Views.LoadDatabase({});
    EXPECT_EQ(Listed().size(), 2U);
}

} // namespace quavernet::test
