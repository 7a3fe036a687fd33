// A picture that acts as a button, with one image at rest, one under the mouse and one while it is pressed.
// cmdPlay and cmdRandomize are of this kind.
#pragma once

#include <QAbstractButton>

#include <string>

namespace quavernet {

class PictureButton : public QAbstractButton {
    Q_OBJECT
public:
    /// `key` names the picture at rest; "Green" and "GreenDown" are added for the other two.
    PictureButton(const QString& name, std::string key, QWidget* parent);

    void SetAtRest();

    /// Name of the picture that it shows now.
    std::string PictureKey() const;

    QSize sizeHint() const override;

signals:
    void Entered();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    std::string m_key;
    bool m_hovered = false;
};

} // namespace quavernet
