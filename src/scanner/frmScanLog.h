// The live log of a scan: one line per file and three counters. Shown over the main window while a scan runs;
// the scan driver writes to it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QAbstractListModel>
#include <QDialog>
#include <QStyledItemDelegate>
#include <QTimer>

#include "scanner/ScanView.h"

namespace Ui {
class frmScanLog;
}

namespace quavernet {

/// Lines of the log: kept as they come, told to the view a few times a second.
class ScanLogLines : public QAbstractListModel {
    Q_OBJECT
public:
    using QAbstractListModel::QAbstractListModel;

    void Add(std::string line) { m_lines.push_back(std::move(line)); }
    /// Brings the lines added since the last call into the view.
    void Publish();
    void Clear();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    std::vector<std::string> m_lines;
    int m_published = 0;
};

/// Paints a line that is too long with dots in its folders, so that the file's name is whole. A
/// text that fits is laid out once, where the toolkit's own way does so three times: a scan waits for its
/// log.
class ScanLogPainter : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    static QString Shortened(const QString& line, const QFontMetrics& metrics, int width);

    void paint(QPainter* painter, const QStyleOptionViewItem& given, const QModelIndex& index) const override;
};

class frmScanLog : public QDialog, public ScanLog {
    Q_OBJECT
public:
    explicit frmScanLog(QWidget* owner);
    ~frmScanLog() override;

    void Show() override;
    void EnableClose(bool enabled) override;
    void AddLine(const std::string& line) override;
    void SelectLastLine() override;
    void SetFileCount(const std::string& text) override;
    void SetMegabytes(const std::string& text) override;
    void SetPlaytime(const std::string& text) override;
    void AddSkipped(const std::vector<SkippedEntry>& entries) override;

    /// While it is open: a size that the user has chosen becomes a setting.
    void SaveSize();

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

private:
    void RestoreSize();
    void PaintSoon();
    void PaintNow();

    std::unique_ptr<Ui::frmScanLog> m_ui;
    ScanLogLines m_lines;
    QTimer m_paintTimer;
    QSize m_designSize;
    QSize m_openedSize; ///< The size with which it came up.
    std::string m_fileCount = "0";
    std::string m_megabytes = "0";
    std::string m_playtime = "0";
};

} // namespace quavernet
