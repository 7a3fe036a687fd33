// A picture that acts as a button, with one image at rest, one under the mouse and one while it is pressed.
// cmdPlay and cmdRandomize are of this kind.
#pragma once

#include <QLabel>

#include <string>

namespace quavernet {

class PictureButton : public QLabel {
    Q_OBJECT
public:
    /// `key` names the picture at rest; "Green" and "GreenDown" are added for the other two.
    PictureButton(const QString& name, std::string key, QWidget* parent);

    void SetAtRest() { Show(""); }

signals:
    void Entered();
    void Clicked();

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void Show(const char* suffix);

    std::string m_key;
};

} // namespace quavernet
