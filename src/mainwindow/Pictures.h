// The program's pictures by their keys, and the colours that depend on a light or dark palette. Every form
// asks here.
#pragma once

#include "platform/qt/QtText.h"

#include <QColor>
#include <QIcon>
#include <QPalette>
#include <QPixmap>

#include <string_view>

namespace quavernet {

inline QIcon Picture(std::string_view key) {
    return QIcon(QStringLiteral(":/icons/") + ToQString(key) + QStringLiteral(".svg"));
}

inline bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

/// Letters at rest: 0xC00000 in blue-green-red order; a lighter blue where the window is dark.
inline QColor LetterRestColor(const QPalette& palette) {
    return IsDark(palette) ? QColor(0x8A, 0xB4, 0xFF) : QColor(0x00, 0x00, 0xC0);
}

} // namespace quavernet
