#include "scanner/frmScanLog.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "help/HelpKey.h"
#include "scanner/SkippedLine.h"
#include "ui_frmScanLog.h"

#include <QCloseEvent>

namespace quavernet {

namespace {
constexpr int FrameTimeMs = 50;
}

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
    return role == Qt::DisplayRole ? ToLine(m_lines[static_cast<std::size_t>(index.row())]) : QVariant();
}

frmScanLog::frmScanLog(QWidget* owner) : QDialog(owner), m_ui(std::make_unique<Ui::frmScanLog>()) {
    m_ui->setupUi(this);
    m_ui->lstLog->setModel(&m_lines);
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
        m_ui->Label1->setText(ToQString(LoadResString(578)));
        m_ui->Label4->setText(ToQString(LoadResString(579)));
        m_ui->cmdClose->setText(ToQString(LoadResString(108)));
    }
    show();
    raise();
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
    // A closed log is unloaded: the next scan begins with an empty list.
    m_lines.Clear();
    event->accept();
}

void frmScanLog::reject() {
    close();
}

} // namespace quavernet
