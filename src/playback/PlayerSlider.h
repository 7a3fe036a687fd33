// The player's sliders, position and volume: a click far from the handle leads to the spot, a near one goes
// by the control's own step.
#pragma once

#include <QSlider>

namespace quavernet {

class PlayerSlider : public QSlider {
    Q_OBJECT
public:
    explicit PlayerSlider(QWidget* parent = nullptr);

    /// How far from the slider's value a spot must be to be led to.
    void SetMargin(int margin) { m_margin = margin; }

    /// Shows a value that the user did not set. Passed over while the user holds the handle.
    void ShowValue(int value);
    void ShowMaximum(int maximum);

signals:
    void Moved(int value); ///< By the user, in whatever way.

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    int m_margin = 0;
    bool m_showing = false;
};

} // namespace quavernet
