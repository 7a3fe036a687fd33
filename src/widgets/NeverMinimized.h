// A dialog that can't be minimised: a window manager's try is turned back. Made by forms that must not
// disappear while they hold the program, or while the main window stays.
#pragma once

#include <QObject>

class QWidget;

namespace quavernet {

class NeverMinimized : public QObject {
    Q_OBJECT
public:
    enum class Owner {
        Held,   ///< While the form is open.
        Leading ///< May be minimised, and takes the form along.
    };

    /// The form owns the object.
    explicit NeverMinimized(QWidget* form, Owner owner = Owner::Held);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Owner m_owner;
};

} // namespace quavernet
