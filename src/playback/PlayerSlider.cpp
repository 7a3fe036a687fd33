#include "playback/PlayerSlider.h"

#include "app/ScopedValue.h"
#include "playback/SliderJump.h"

#include <QMouseEvent>
#include <QProxyStyle>

namespace quavernet {

namespace {

// Some styles lead every click to its spot. Here a click steps, but for those that SliderJump leads.
class SteppingStyle : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override {
        if (hint == SH_Slider_AbsoluteSetButtons) {
            return Qt::NoButton;
        }
        if (hint == SH_Slider_PageSetButtons) {
            return Qt::LeftButton;
        }
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
};

} // namespace

PlayerSlider::PlayerSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    auto* style = new SteppingStyle;
    style->setParent(this);
    setStyle(style);
    setMouseTracking(true);
    connect(this, &QSlider::valueChanged, this, [this](int value) {
        if (!m_showing) {
            emit Moved(value);
        }
    });
}

void PlayerSlider::ShowValue(int value) {
    if (isSliderDown() || value == this->value()) {
        return;
    }
    const ScopedValue showing(m_showing, true);
    setValue(value);
}

void PlayerSlider::ShowMaximum(int maximum) {
    const ScopedValue showing(m_showing, true); // A value beyond it is cut.
    setMaximum(maximum);
}

void PlayerSlider::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        if (const auto spot = SliderJump(event->position().x(), width(), maximum(), value(), m_margin)) {
            setValue(*spot);
        }
    }
    // The handle has come under the mouse: it can be dragged on.
    QSlider::mousePressEvent(event);
}

void PlayerSlider::mouseMoveEvent(QMouseEvent* event) {
    QSlider::mouseMoveEvent(event);
    event->accept(); // What is around the slider has rules of its own for the mouse.
}

} // namespace quavernet
