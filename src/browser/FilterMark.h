// How a control of the filter row shows that it filters the list: by a frame and bold text, so that nobody
// needs to tell colours apart. The combos and the search box use it.
#pragma once

#include "widgets/Colours.h"

#include <QPainter>
#include <QWidget>

namespace quavernet {

inline QFont FilterMarkFont(const QFont& font) {
    QFont bold = font;
    bold.setBold(true);
    return bold;
}

/// A frame of two pixels around the whole control, in the colour of the letters.
inline void PaintFilterMark(QWidget& control) {
    constexpr int Thickness = 2;
    QPainter painter(&control);
    const QPen pen(ColourOf(OwnColour::Letter, control.palette()), Thickness, Qt::SolidLine, Qt::SquareCap,
                   Qt::MiterJoin);
    painter.setPen(pen);
    painter.drawRect(control.rect().adjusted(1, 1, -1, -1));
}

} // namespace quavernet
