// What a widget really paints as text: it is rendered onto a device that notes the texts and drops the rest.
#pragma once

#include "adapters/qt/QtText.h"

#include <string>

#include <QPaintDevice>
#include <QPaintEngine>
#include <QWidget>

namespace quavernet::test {

class TextNotingEngine : public QPaintEngine {
public:
    TextNotingEngine() : QPaintEngine(AllFeatures) {}

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
    void drawPath(const QPainterPath&) override {}
    void drawImage(const QRectF&, const QImage&, const QRectF&, Qt::ImageConversionFlags) override {}
    void drawTextItem(const QPointF&, const QTextItem& item) override { texts += item.text(); }
    Type type() const override { return User; }

    QString texts;
};

class TextNotingDevice : public QPaintDevice {
public:
    explicit TextNotingDevice(QSize size) : m_size(size) {}

    int devType() const override { return QInternal::CustomRaster; }
    QPaintEngine* paintEngine() const override { return &m_engine; }
    const QString& Texts() const { return m_engine.texts; }

protected:
    int metric(PaintDeviceMetric metric) const override {
        switch (metric) {
        case PdmWidth:
            return m_size.width();
        case PdmHeight:
            return m_size.height();
        case PdmDepth:
            return 32;
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmDevicePixelRatio:
            return 1;
        default:
            return QPaintDevice::metric(metric);
        }
    }

private:
    QSize m_size;
    mutable TextNotingEngine m_engine;
};

/// The text without what a line break or a tab may turn into.
inline std::string WithoutBlanks(const QString& text) {
    std::string kept;
    for (const QChar c : text) {
        if (!c.isSpace() && c.isPrint()) {
            kept += FromQString(QString(c));
        }
    }
    return kept;
}

/// All texts that the widget and its children paint, one after the other, without blanks.
inline std::string PaintedTexts(QWidget& widget) {
    TextNotingDevice device(widget.size());
    widget.render(&device, {}, {}, QWidget::DrawChildren);
    return WithoutBlanks(device.Texts());
}

} // namespace quavernet::test
