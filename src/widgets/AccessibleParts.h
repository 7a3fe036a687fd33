// What a screen reader is told of a control that paints its pieces by itself: the letters, the panels of the
// status bar. Such a control is a PartedControl; the main window's panes install the rest.
#pragma once

#include <QAccessible>
#include <QRect>
#include <QString>

#include <vector>

namespace quavernet {

struct AccessiblePart {
    QString Name;
    QAccessible::Role Role = QAccessible::StaticText;
    QRect Place;            ///< In the control, in pixels.
    bool Focusable = false; ///< The keyboard can reach it, and PressPart does something.
    bool Focused = false;
    bool Checked = false;
};

class PartedControl {
public:
    virtual ~PartedControl() = default;

    virtual QAccessible::Role PartedRole() const = 0;
    /// In the order of reading; always as many.
    virtual std::vector<AccessiblePart> Parts() const = 0;
    virtual void PressPart(int part) = 0;
};

/// From now on every PartedControl tells its parts, and every window that it is one. May be called again.
void InstallAccessibleParts();

/// The keyboard has moved to a part, or has come to the control that is on it.
void TellFocusedPart(QWidget& control, int part);

} // namespace quavernet
