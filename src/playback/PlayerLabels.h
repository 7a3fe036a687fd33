// Two labels of the player: one whose text may be longer than the window is wide, and the time, which a
// double click turns round.
#pragma once

#include <QLabel>

namespace quavernet {

/// A text on one line that is cut, with an ellipsis, where the window ends; it never makes the window wider.
class CutLabel : public QLabel {
    Q_OBJECT
public:
    explicit CutLabel(QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

class TimeLabel : public QLabel {
    Q_OBJECT
public:
    explicit TimeLabel(QWidget* parent = nullptr);

signals:
    void DblClick(); ///< By the mouse, or by the space bar.

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};

} // namespace quavernet
