// The room that the desktop takes around a window, guessed where it is not known yet. Used by whatever sizes
// windows before they are shown.
#pragma once

#include <QSize>

namespace quavernet {

/// Pixels that a window manager may add, both sides together.
inline constexpr QSize WindowFrame(20, 50);

/// Pixels of the title bar that are not for the title: its icon, its buttons, its edges.
inline constexpr int TitleBarControls = 120;

} // namespace quavernet
