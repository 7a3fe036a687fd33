// A control that is not painted for a while: during a drag out of it, or while its content is made again.
// List and tree use it.
#pragma once

#include <QWidget>

namespace quavernet {

/// The widget is not painted while this lives; the last one that goes paints it.
class PaintingOff {
public:
    explicit PaintingOff(QWidget& widget) : m_widget(widget), m_before(widget.updatesEnabled()) {
        widget.setUpdatesEnabled(false);
    }
    ~PaintingOff() { m_widget.setUpdatesEnabled(m_before); }
    PaintingOff(const PaintingOff&) = delete;
    PaintingOff& operator=(const PaintingOff&) = delete;

private:
    QWidget& m_widget;
    bool m_before;
};

} // namespace quavernet
