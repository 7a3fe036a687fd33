// A dialog that is wide enough for its title. Made by the forms whose titles may be longer than they are
// wide.
#pragma once

#include <QObject>

class QWidget;

namespace quavernet {

class TitleRoom : public QObject {
    Q_OBJECT
public:
    /// The form owns the object.
    explicit TitleRoom(QWidget* form);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Widen(QWidget& form, int width);

    int m_leastWidth; ///< Pixels; what the form asked for by itself.
};

} // namespace quavernet
