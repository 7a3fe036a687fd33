#include "extras/frmChart.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "app/MayAct.h"
#include "app/ScopedValue.h"
#include "help/HelpKey.h"
#include "ui_frmChart.h"
#include "widgets/EnterKey.h"
#include "widgets/Mnemonics.h"
#include "widgets/NeverMinimized.h"
#include "widgets/PaintingOff.h"
#include "widgets/TitleRoom.h"
#include "widgets/Twips.h"

#include <QCloseEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScreen>
#include <QScrollBar>

#include <algorithm>
#include <array>

namespace quavernet {

namespace {

// All in twips but what says pixels.
constexpr std::array<int, 3> ColumnWidths{600, 5800, 1200};
constexpr int GridTop = 360;
constexpr int GridMargin = 10;   ///< Height of the grid beyond that of its rows.
constexpr int BelowGrid = 1300;  ///< Height of the form beyond the grid's.
constexpr int ButtonBelow = 500; ///< The button's top beyond the grid's height.
constexpr int ButtonFromEnd = 1900;
constexpr int ButtonWidth = 1800;
constexpr int TextRoom = 4; ///< Pixels around what a large font makes larger.

/// Pixels between the lines of a cell and its text, as the grid's own style has it.
int TextMargin(const QWidget& widget) {
    return widget.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &widget) + 1;
}

} // namespace

frmChart::frmChart(QWidget* owner, LibraryViews& views, PlayerWindow& player)
    : QDialog(owner), m_ui(std::make_unique<Ui::frmChart>()), m_views(views), m_player(player) {
    m_ui->setupUi(this);
    new TitleRoom(this);
    new NeverMinimized(this, NeverMinimized::Owner::Leading);
    m_ui->grdChart->setModel(&m_rows);
    m_ui->grdChart->viewport()->installEventFilter(this);
    owner->installEventFilter(this);
    connect(m_ui->cmdShowInList, &QPushButton::clicked, this, &frmChart::cmdShowInList_Click);
    new EnterKey(m_ui->grdChart, [this] {
        if (const QModelIndex current = m_ui->grdChart->currentIndex(); current.isValid()) {
            grdChart_DblClick(current.row());
        }
    });
    new HelpKey(this);
}

frmChart::~frmChart() = default;

void frmChart::Open(bool& flag) {
    m_chart.Form_Unload();
    flag = true;
    Form_Load();
    show();
    raise();
    activateWindow();
}

// The texts of a window that is open stay those of its language, but for what a fill brings.
void frmChart::Form_Load() {
    m_chart.Form_Load();
    m_ui->cmdShowInList->setText(ToQString(LoadResString(124)));
    MarkMnemonics(*this);
    Show(m_chart.FillChart());
    PlaceControls();
    m_ui->grdChart->setFocus();
}

void frmChart::PlaceControls() {
    QTableView& grid = *m_ui->grdChart;
    const int rowHeight = fontMetrics().height() + 3;
    grid.verticalHeader()->setMinimumSectionSize(rowHeight);
    grid.verticalHeader()->setDefaultSectionSize(rowHeight);
    const int rows = RowsShown(rowHeight);
    const bool scrolls = m_chart.ChartLimit() > rows;
    grid.setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    const int height = rows * ToTwips(rowHeight) + GridMargin;
    const int top = std::max(ToPixels(GridTop), fontMetrics().height() + TextRoom);
    const int width = PlaceColumns(top) + (scrolls ? grid.verticalScrollBar()->sizeHint().width() : 0);
    grid.setGeometry(0, top, width, ToPixels(height));
    QPushButton& button = *m_ui->cmdShowInList;
    const QSize size = button.sizeHint().expandedTo(QSize(ToPixels(ButtonWidth), 0));
    const int fromEnd =
        std::max(ToPixels(ButtonFromEnd), size.width() + ToPixels(ButtonFromEnd - ButtonWidth));
    const int lower = top - ToPixels(GridTop); // Of a font that needs more room.
    button.setGeometry(QRect(QPoint(width - fromEnd, ToPixels(height + ButtonBelow) + lower), size));
    setFixedSize(width,
                 std::max(ToPixels(height + BelowGrid) + lower, button.geometry().bottom() + TextRoom));
}

// Gives the width of all three. A large font, and a number of many digits, get wider ones.
int frmChart::PlaceColumns(int labelHeight) {
    const std::array<QLabel*, 3> labels{m_ui->Label1, m_ui->Label2, m_ui->Label3};
    const std::array<QString, 3> longest{QString::number(m_rows.rowCount()) + u'.', QString(),
                                         QStringLiteral("00.00.0000")};
    const int margin = TextMargin(*m_ui->grdChart);
    int left = 0;
    for (int column = 0; column < 3; ++column) {
        const auto at = static_cast<std::size_t>(column);
        const int text =
            std::max(labels[at]->sizeHint().width(), fontMetrics().horizontalAdvance(longest[at]) + TextRoom);
        const int width = std::max(ToPixels(ColumnWidths[at]), text + 2 * margin);
        m_ui->grdChart->setColumnWidth(column, width);
        labels[at]->setGeometry(left + margin, 0, width - 2 * margin, labelHeight);
        left += width;
    }
    return left;
}

// Thirty at most, and no more than fit on the screen.
int frmChart::RowsShown(int rowHeight) const {
    const int wanted = std::clamp(m_chart.ChartLimit(), 0, Chart::FirstLimitWithScrollBar - 1);
    const int frame = frameGeometry().height() - height();
    const int room = screen()->availableGeometry().height() - frame - ToPixels(BelowGrid);
    return std::clamp(room / rowHeight, std::min(wanted, 1), wanted);
}

void frmChart::Show(ChartContent content) {
    const PaintingOff off(*m_ui->grdChart);
    setWindowTitle(ToQString(content.Title));
    m_ui->grdChart->setAccessibleName(windowTitle());
    m_ui->Label1->setText(ToQString(content.Headers[0]));
    m_ui->Label2->setText(ToQString(content.Headers[1]));
    m_ui->Label3->setText(ToQString(content.Headers[2]));
    m_ui->Label3->setAlignment(Qt::AlignVCenter | (content.IsTopList ? Qt::AlignRight : Qt::AlignLeft));
    const int row = content.CurrentRow;
    m_rows.SetContent(std::move(content));
    if (row >= 0) {
        m_ui->grdChart->setCurrentIndex(m_rows.index(row, 1));
    }
}

bool frmChart::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parent()) {
        // A minimised owner is hidden by the system, a closed one by the program.
        if (event->type() == QEvent::Hide && !event->spontaneous()) {
            close();
        }
    } else if (event->type() == QEvent::MouseButtonDblClick) {
        const auto& click = *static_cast<QMouseEvent*>(event);
        const QModelIndex cell = m_ui->grdChart->indexAt(click.position().toPoint());
        if (click.button() == Qt::LeftButton && cell.isValid()) {
            grdChart_DblClick(cell.row());
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmChart::grdChart_DblClick(int row) {
    if (!MayAct()) {
        return;
    }
    // What plays lets events run: a second click in them would start the row again and count it twice.
    const ScopedValue alone(mainModule.ActsAlone, true);
    const auto setPointer = [this](MousePointer pointer) {
        pointer == MousePointer::Hourglass ? setCursor(Qt::WaitCursor) : unsetCursor();
    };
    if (std::optional<ChartContent> content = m_chart.grdChart_DblClick(row, m_player, setPointer)) {
        Show(std::move(*content));
    }
}

void frmChart::cmdShowInList_Click() {
    if (MayAct()) {
        const ScopedValue alone(mainModule.ActsAlone, true);
        m_chart.cmdShowInList_Click(m_views);
    }
}

void frmChart::closeEvent(QCloseEvent* event) {
    m_chart.Form_Unload();
    event->accept();
}

void frmChart::reject() {
    close();
}

} // namespace quavernet
