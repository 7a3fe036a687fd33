// The two targets of a printed document: a PDF file, and a printer of the system. Made by the print dialog.
#pragma once

#include "adapters/qt/PaintedPages.h"

#include <QPdfWriter>
#include <QSaveFile>

#include <memory>

class QPrinter;

namespace quavernet {

/// The file gets its name when it is complete: until then, and after a failure, the old one is there.
class PdfFile : public PageTarget {
public:
    PdfFile(const QString& path, const QPageLayout& layout);

    QPaintDevice& Device() override { return m_writer; }
    void SetCopies(int /*copies*/) override {}
    void SetOrientation(QPageLayout::Orientation orientation) override;
    void Open(const QString& name) override;
    bool NewPage() override { return m_writer.newPage(); }
    void Close() override;
    void Abandon(QPainter& painter) override;

private:
    QSaveFile m_file;
    QPdfWriter m_writer;
};

/// Pages go to the queue of a printer when the document ends.
class PrinterQueue : public PageTarget {
public:
    explicit PrinterQueue(std::unique_ptr<QPrinter> printer);
    ~PrinterQueue() override;

    QPaintDevice& Device() override;
    void SetCopies(int copies) override;
    void SetOrientation(QPageLayout::Orientation orientation) override;
    void Open(const QString& name) override;
    bool NewPage() override;
    void Close() override;
    void Abandon(QPainter& painter) override;

private:
    /// Throws RuntimeError 482 if there is no such printer any more.
    void RequirePrinter() const;

    std::unique_ptr<QPrinter> m_printer;
};

} // namespace quavernet
