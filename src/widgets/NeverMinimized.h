// A dialog that can't be minimised: a window manager's try is turned back. Made by forms that must not
// disappear while they hold the program.
#pragma once

#include <QObject>

class QWidget;

namespace quavernet {

class NeverMinimized : public QObject {
    Q_OBJECT
public:
    /// The form owns the object.
    explicit NeverMinimized(QWidget* form);

    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace quavernet
