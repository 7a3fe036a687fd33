#include "scanner/frmScanLog.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "app/NumberSetting.h"
#include "app/Registry.h"
#include "help/HelpKey.h"
#include "platform/RuntimeError.h"
#include "scanner/SkippedLine.h"
#include "ui_frmScanLog.h"
#include "widgets/FitScreen.h"
#include "widgets/Mnemonics.h"
#include "widgets/NeverMinimized.h"
#include "widgets/TitleRoom.h"
#include "widgets/Twips.h"

#include <QCloseEvent>
#include <QPainter>
#include <QTextLayout>

namespace quavernet {

namespace {
constexpr int FrameTimeMs = 50;

// A size of nobody's making counts as none.
int StoredPixels(const char* name, int otherwise) {
    std::int32_t twips = 0;
    IgnoreFailure([&] { twips = TwipsSetting(name, "0"); });
    return twips > 0 ? ToPixels(twips) : otherwise;
}

// A file's name may hold line breaks; what comes after one would not be painted.
QString InOneLine(QString text) {
    for (const QChar lineBreak :
         {QChar(u'\n'), QChar(u'\r'), QChar(QChar::LineSeparator), QChar(QChar::ParagraphSeparator)}) {
        text.replace(lineBreak, u' ');
    }
    return text;
}

QSizeF LayOut(QTextLayout& layout, const QString& text) {
    layout.setText(text);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setNumColumns(static_cast<int>(text.size())); // All of it in one line.
    layout.endLayout();
    return {line.naturalTextWidth(), line.height()};
}

QPalette::ColorGroup ColourGroup(const QStyleOption& option) {
    if (!option.state.testFlag(QStyle::State_Enabled)) {
        return QPalette::Disabled;
    }
    return option.state.testFlag(QStyle::State_Active) ? QPalette::Normal : QPalette::Inactive;
}

} // namespace

void ScanLogLines::Publish() {
    const int count = static_cast<int>(m_lines.size());
    if (count > m_published) {
        beginInsertRows({}, m_published, count - 1);
        m_published = count;
        endInsertRows();
    }
}

void ScanLogLines::Clear() {
    beginResetModel();
    m_lines.clear();
    m_published = 0;
    endResetModel();
}

int ScanLogLines::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_published;
}

QVariant ScanLogLines::data(const QModelIndex& index, int role) const {
    return role == Qt::DisplayRole || role == Qt::ToolTipRole
               ? ToLine(m_lines[static_cast<std::size_t>(index.row())])
               : QVariant();
}

QString ScanLogPainter::Shortened(const QString& line, const QFontMetrics& metrics, int width) {
    // A reason in brackets may follow, with a stroke of its own.
    const qsizetype reason = line.endsWith(u')') ? line.lastIndexOf(QStringLiteral(" (")) : line.size();
    const qsizetype name = line.lastIndexOf(u'/', reason) + 1;
    if (metrics.horizontalAdvance(line) <= width || name == 0) {
        return line;
    }
    const QString last = line.mid(name);
    const int room = width - metrics.horizontalAdvance(last);
    const QString folders = metrics.elidedText(line.left(name), Qt::ElideMiddle, room);
    // Where not even dots have room beside it, the name is all that is shown.
    return room < metrics.horizontalAdvance(QStringLiteral("…/")) ? last : folders + last;
}

void ScanLogPainter::paint(QPainter* painter, const QStyleOptionViewItem& given,
                           const QModelIndex& index) const {
    QStyleOptionViewItem option = given;
    initStyleOption(&option, index);
    const QStyle& style = *option.widget->style();
    style.drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);

    const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, &option, option.widget) + 1;
    const QRect room = option.rect.adjusted(margin, 0, -margin, 0);
    QTextLayout text;
    text.setFont(option.font);
    const QString line = InOneLine(option.text);
    QSizeF size = LayOut(text, line);
    if (size.width() > room.width()) {
        size = LayOut(text, Shortened(line, option.fontMetrics, room.width()));
    }
    painter->save();
    painter->setClipRect(option.rect);
    painter->setPen(option.palette.color(ColourGroup(option), option.state.testFlag(QStyle::State_Selected)
                                                                  ? QPalette::HighlightedText
                                                                  : QPalette::Text));
    text.draw(painter, QPointF(room.left(), room.top() + (room.height() - size.height()) / 2));
    painter->restore();
    if (option.state.testFlag(QStyle::State_HasFocus)) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(option);
        style.drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, option.widget);
    }
}

frmScanLog::frmScanLog(QWidget* owner) : QDialog(owner), m_ui(std::make_unique<Ui::frmScanLog>()) {
    m_ui->setupUi(this);
    new TitleRoom(this);
    new NeverMinimized(this, NeverMinimized::Owner::Leading);
    m_ui->lstLog->setModel(&m_lines);
    m_ui->lstLog->setItemDelegate(new ScanLogPainter(this));
    m_designSize = size() * TwipScale(font());
    m_paintTimer.setSingleShot(true);
    m_paintTimer.setInterval(FrameTimeMs);
    connect(&m_paintTimer, &QTimer::timeout, this, &frmScanLog::PaintNow);
    new HelpKey(this);
    connect(m_ui->cmdClose, &QPushButton::clicked, this, &QWidget::close);
}

frmScanLog::~frmScanLog() = default;

void frmScanLog::Show() {
    if (!isVisible()) {
        setWindowTitle(ToQString(LoadResString(580)));
        m_ui->lstLog->setAccessibleName(windowTitle());
        m_ui->Label1->setText(ToQString(LoadResString(578)));
        m_ui->Label4->setText(ToQString(LoadResString(579)));
        m_ui->cmdClose->setText(ToQString(LoadResString(108)));
        MarkMnemonics(*this);
        RestoreSize();
    }
    show();
    raise();
}

void frmScanLog::RestoreSize() {
    FitScreen(*this, QSize(StoredPixels("ScanLogWidth", m_designSize.width()),
                           StoredPixels("ScanLogHeight", m_designSize.height())));
    m_openedSize = size();
}

// Only a size that the user has chosen becomes a setting.
void frmScanLog::SaveSize() {
    if (isVisible() && size() != m_openedSize) {
        SaveSetting("ScanLogWidth", std::to_string(ToTwips(width())));
        SaveSetting("ScanLogHeight", std::to_string(ToTwips(height())));
    }
}

void frmScanLog::EnableClose(bool enabled) {
    m_ui->cmdClose->setEnabled(enabled);
    PaintNow();
}

void frmScanLog::AddLine(const std::string& line) {
    m_lines.Add(line);
    PaintSoon();
}

void frmScanLog::SelectLastLine() {
    // The newest line is the selected one: PaintNow moves there once for all lines of a frame.
    PaintSoon();
}

void frmScanLog::SetFileCount(const std::string& text) {
    m_fileCount = text;
    PaintSoon();
}

void frmScanLog::SetMegabytes(const std::string& text) {
    m_megabytes = text;
    PaintSoon();
}

void frmScanLog::SetPlaytime(const std::string& text) {
    m_playtime = text;
    PaintSoon();
}

void frmScanLog::AddSkipped(const std::vector<SkippedEntry>& entries) {
    for (const SkippedEntry& entry : entries) {
        m_lines.Add(SkippedLine(entry));
    }
    PaintSoon();
}

void frmScanLog::PaintSoon() {
    if (!m_paintTimer.isActive()) {
        m_paintTimer.start();
    }
}

void frmScanLog::PaintNow() {
    m_paintTimer.stop();
    m_lines.Publish();
    m_ui->lstLog->setCurrentIndex(m_lines.index(m_lines.rowCount() - 1));
    m_ui->lblFileCount->setText(ToQString(m_fileCount));
    m_ui->lblMB->setText(ToQString(m_megabytes));
    m_ui->lblPlaytime->setText(ToQString(m_playtime));
}

void frmScanLog::closeEvent(QCloseEvent* event) {
    if (!m_ui->cmdClose->isEnabled()) {
        event->ignore();
        return;
    }
    SaveSize();
    // A closed log is unloaded: the next scan begins with an empty list.
    m_lines.Clear();
    event->accept();
}

void frmScanLog::reject() {
    close();
}

} // namespace quavernet
