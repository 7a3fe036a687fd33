// A printed document on whatever the toolkit can paint on: a printer, a PDF file, a picture. The print dialog
// makes one of these.
#pragma once

#include "platform/Printer.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPainter>

#include <memory>
#include <optional>
#include <string>

class QString;

namespace quavernet {

/// What takes the pages of one document.
class PageTarget {
public:
    virtual ~PageTarget() = default;

    virtual QPaintDevice& Device() = 0;
    virtual void SetCopies(int copies) = 0;
    virtual void SetOrientation(QPageLayout::Orientation orientation) = 0;

    /// Before the first page is painted. Throws RuntimeError as Printer::StartDoc does.
    virtual void Open(const QString& name) = 0;
    virtual bool NewPage() = 0;

    /// After the last page, when the painter has ended. Throws RuntimeError as Printer::EndDoc does.
    virtual void Close() = 0;

    /// Ends the painter and drops the document.
    virtual void Abandon(QPainter& painter) = 0;
};

class PaintedPages : public Printer {
public:
    explicit PaintedPages(std::unique_ptr<PageTarget> target);
    ~PaintedPages() override;
    PaintedPages(const PaintedPages&) = delete;
    PaintedPages& operator=(const PaintedPages&) = delete;

    void SetCopies(std::int32_t copies) override;
    void SetOrientation(Orientation orientation) override;
    double ScaleWidth() const override;
    double ScaleHeight() const override;
    double ScaleX(double millimetres) const override;
    double ScaleY(double millimetres) const override;
    void StartDoc(const std::string& name) override;
    void SetFontSize(double points) override;
    double TextHeight() const override;
    void PrintText(double x, double y, double width, const std::string& text) override;
    void PrintLine(double x1, double y1, double x2, double y2) override;
    void NewPage() override;
    void EndDoc() override;
    void KillDoc() override;

private:
    std::unique_ptr<PageTarget> m_target; ///< Goes after the painter that paints on it.
    QFont m_font;
    QFontMetricsF m_metrics;
    double m_ellipsisWidth = 0;
    QPainter m_painter;
};

} // namespace quavernet
