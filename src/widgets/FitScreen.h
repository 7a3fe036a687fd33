// Keeps a window that is about to be shown inside its screen. The help and the scan log call it.
#pragma once

#include <QSize>

class QWidget;

namespace quavernet {

/// Gives the window this size, or what its screen has room for, and moves it in where its place would put a
/// part of it off the screen.
void FitScreen(QWidget& window, QSize wanted);

} // namespace quavernet
