// A picture that acts as a button, with one image at rest, one under the mouse and one when it is pressed.
// The play buttons of the main window and the buttons of the player are of this kind.
#pragma once

#include <QAbstractButton>

#include <string>

namespace quavernet {

/// The pictures of a button by their keys.
struct PictureLooks {
    std::string Rest;
    std::string Hovered;
    std::string Pressed;
};

class PictureButton : public QAbstractButton {
    Q_OBJECT
public:
    explicit PictureButton(QWidget* parent = nullptr);
    PictureButton(const QString& name, PictureLooks looks, QWidget* parent);

    /// `side`: pixels of the picture.
    void SetLooks(PictureLooks looks, int side);

    /// Whether the button goes to rest when the mouse leaves it, as it does unless told otherwise, or stays
    /// as it is until SetAtRest.
    void SetRestsOnLeave(bool rests) { m_restsOnLeave = rests; }

    /// A small button, so many times larger than usual.
    void SetScale(double scale);
    void SetAtRest();

    /// Name of the picture that it shows now. Any button of the mouse presses the picture, though the left
    /// one alone clicks, and the next movement makes it that of a button under the mouse, pressed or not.
    std::string PictureKey() const;

    QSize sizeHint() const override;

signals:
    void Entered(); ///< The mouse moves over the button.

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    enum class Look { Rest, Hovered, Pressed };

    void SetLook(Look look);

    PictureLooks m_looks;
    int m_side;
    Look m_look = Look::Rest; ///< By the mouse's last event.
    bool m_mouseIsDown = false;
    bool m_restsOnLeave = true;
};

} // namespace quavernet
