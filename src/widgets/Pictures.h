// The program's pictures by their keys, and the colours that depend on a light or dark palette. Every form
// asks here.
#pragma once

#include "adapters/qt/QtText.h"

#include <QColor>
#include <QIcon>
#include <QPalette>
#include <QPixmap>

#include <cstdint>
#include <string_view>

namespace quavernet {

inline QIcon Picture(std::string_view key) {
    return QIcon(QStringLiteral(":/icons/") + ToQString(key) + QStringLiteral(".svg"));
}

inline bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

/// A colour number of the logic (blue, green, red from the highest byte down) on this palette: the dark blue
/// 0xC00000 of letters and categories becomes a light one where the window is dark.
inline QColor ColorOn(const QPalette& palette, std::uint32_t color) {
    constexpr std::uint32_t DarkBlue = 0xC00000;
    if (color == DarkBlue && IsDark(palette)) {
        return QColor(0x8A, 0xB4, 0xFF);
    }
    return QColor(static_cast<int>(color & 0xFF), static_cast<int>((color >> 8) & 0xFF),
                  static_cast<int>((color >> 16) & 0xFF));
}

} // namespace quavernet
