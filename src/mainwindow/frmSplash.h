// The splash window over the main window: four seconds, or until a click or a key. A window manager gives
// such a window no keyboard, so it watches the keys of its owner.
#pragma once

#include <QDialog>
#include <QTimer>

#include <memory>

namespace Ui {
class frmSplash;
}

namespace quavernet {

class frmSplash : public QDialog {
    Q_OBJECT
public:
    explicit frmSplash(QWidget* owner);
    ~frmSplash() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    std::unique_ptr<Ui::frmSplash> m_ui;
    QTimer* m_timer;
};

} // namespace quavernet
