#include "adapters/qt/PageTargets.h"

#include "adapters/qt/QtText.h"
#include "platform/RuntimeError.h"

#include <QCoreApplication>
#include <QPrinter>
#include <QPrinterInfo>

#include <cerrno>
#include <utility>

namespace quavernet {

namespace {

// The toolkit keeps the system's words of a failure, not its number.
bool SaysDiskFull(const QString& words) {
    return words == qt_error_string(ENOSPC) || words == qt_error_string(EDQUOT) ||
           words == qt_error_string(EFBIG);
}

[[noreturn]] void FailFile(const QSaveFile& file) {
    throw RuntimeError(SaysDiskFull(file.errorString()) ? ErrorNumber::DiskFull : ErrorNumber::PathFileAccess,
                       FromQString(file.errorString() + QStringLiteral(": ") + file.fileName()));
}

} // namespace

PdfFile::PdfFile(const QString& path, const QPageLayout& layout) : m_file(path), m_writer(&m_file) {
    m_writer.setPageLayout(layout);
    m_writer.setCreator(QCoreApplication::applicationName());
}

void PdfFile::SetOrientation(QPageLayout::Orientation orientation) {
    m_writer.setPageOrientation(orientation);
}

void PdfFile::Open(const QString& name) {
    m_writer.setTitle(name);
    if (!m_file.open(QIODevice::WriteOnly)) {
        FailFile(m_file);
    }
}

void PdfFile::Close() {
    if (!m_file.commit()) {
        FailFile(m_file);
    }
}

void PdfFile::Abandon(QPainter& painter) {
    painter.end();
    m_file.cancelWriting();
    m_file.commit(); // Which takes the unfinished file away.
}

PrinterQueue::PrinterQueue(std::unique_ptr<QPrinter> printer) : m_printer(std::move(printer)) {}

PrinterQueue::~PrinterQueue() = default;

QPaintDevice& PrinterQueue::Device() {
    return *m_printer;
}

void PrinterQueue::SetCopies(int copies) {
    m_printer->setCopyCount(copies);
}

void PrinterQueue::SetOrientation(QPageLayout::Orientation orientation) {
    if (!m_printer->setPageOrientation(orientation)) {
        throw RuntimeError(ErrorNumber::PrinterError, "Printer error");
    }
}

// The toolkit does not say that a document could not be handed over.
void PrinterQueue::RequirePrinter() const {
    const QString name = m_printer->printerName();
    if (!m_printer->isValid() || QPrinterInfo::printerInfo(name).isNull()) {
        throw RuntimeError(ErrorNumber::PrinterError, "Printer error: " + FromQString(name));
    }
}

void PrinterQueue::Open(const QString& name) {
    RequirePrinter();
    m_printer->setDocName(name);
}

bool PrinterQueue::NewPage() {
    return m_printer->newPage();
}

void PrinterQueue::Close() {
    RequirePrinter();
    if (m_printer->printerState() == QPrinter::Error) {
        throw RuntimeError(ErrorNumber::PrinterError,
                           "Printer error: " + FromQString(m_printer->printerName()));
    }
}

void PrinterQueue::Abandon(QPainter& painter) {
    m_printer->abort();
    painter.end();
}

} // namespace quavernet
