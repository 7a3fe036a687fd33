// Enter on a control as an action of its own: the dialog's default button is not pressed. A key that is held
// down acts once. Made by forms for lists and fields.
#pragma once

#include <QObject>

#include <functional>

class QWidget;

namespace quavernet {

class EnterKey : public QObject {
    Q_OBJECT
public:
    /// The control owns the object.
    EnterKey(QWidget* control, std::function<void()> action);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<void()> m_action;
};

} // namespace quavernet
