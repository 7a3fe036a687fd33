#include "adapters/qt/PaintedPages.h"

#include "adapters/qt/QtText.h"
#include "platform/RuntimeError.h"

#include <QApplication>

#include <utility>

namespace quavernet {

namespace {

constexpr double LineMm = 0.1;
constexpr double MillimetresPerInch = 25.4;
constexpr QChar Ellipsis(0x2026);

} // namespace

PaintedPages::PaintedPages(std::unique_ptr<PageTarget> target)
    : m_target(std::move(target)), m_font(QApplication::font()), m_metrics(m_font) {}

PaintedPages::~PaintedPages() {
    PaintedPages::KillDoc();
}

void PaintedPages::SetCopies(std::int32_t copies) {
    m_target->SetCopies(copies);
}

void PaintedPages::SetOrientation(Orientation orientation) {
    m_target->SetOrientation(orientation == Orientation::Landscape ? QPageLayout::Landscape
                                                                   : QPageLayout::Portrait);
}

double PaintedPages::ScaleWidth() const {
    return m_target->Device().width();
}

double PaintedPages::ScaleHeight() const {
    return m_target->Device().height();
}

double PaintedPages::ScaleX(double millimetres) const {
    return millimetres * m_target->Device().logicalDpiX() / MillimetresPerInch;
}

double PaintedPages::ScaleY(double millimetres) const {
    return millimetres * m_target->Device().logicalDpiY() / MillimetresPerInch;
}

void PaintedPages::StartDoc(const std::string& name) {
    m_target->Open(ToQString(name));
    if (!m_painter.begin(&m_target->Device())) {
        throw RuntimeError(ErrorNumber::PrinterError, "Printer error");
    }
    m_painter.setPen(QPen(Qt::black, ScaleX(LineMm), Qt::SolidLine, Qt::FlatCap));
    SetFontSize(DefaultFontSize);
}

void PaintedPages::SetFontSize(double points) {
    m_font.setPointSizeF(points);
    m_painter.setFont(m_font);
    m_metrics = QFontMetricsF(m_font, &m_target->Device());
    m_ellipsisWidth = m_metrics.horizontalAdvance(Ellipsis);
}

double PaintedPages::TextHeight() const {
    return m_metrics.height();
}

void PaintedPages::PrintText(double x, double y, double width, const std::string& text) {
    if (width < m_ellipsisWidth) {
        return;
    }
    m_painter.drawText(QPointF(x, y + m_metrics.ascent()),
                       m_metrics.elidedText(ToLine(text), Qt::ElideRight, width));
}

void PaintedPages::PrintLine(double x1, double y1, double x2, double y2) {
    m_painter.drawLine(QPointF(x1, y1), QPointF(x2, y2));
}

void PaintedPages::NewPage() {
    if (!m_target->NewPage()) {
        throw RuntimeError(ErrorNumber::PrinterError, "Printer error");
    }
}

void PaintedPages::EndDoc() {
    m_painter.end();
    m_target->Close();
}

void PaintedPages::KillDoc() {
    if (m_painter.isActive()) {
        m_target->Abandon(m_painter);
    }
}

} // namespace quavernet
