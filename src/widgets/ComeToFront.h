// Brings a window before all others, as its user has asked for from outside of it.
#pragma once

class QWidget;

namespace quavernet {

/// Also out of the task bar. A dialog over it that holds the program gets the keyboard.
void ComeToFront(QWidget& window);

} // namespace quavernet
