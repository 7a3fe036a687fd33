// The end of the program that is asked for from outside its windows: by a signal, by the end of the desktop's
// session, by the loss of the display. src/main.cpp connects what asks.
#pragma once

#include <QObject>
#include <QTimer>

namespace quavernet {

class AppWindows;

class OrderlyEnd : public QObject {
    Q_OBJECT
public:
    explicit OrderlyEnd(AppWindows& windows);

    /// Ends the program as closing both windows does, with code 0. What is in the way goes first: open menus,
    /// a drag, boxes and dialogs (as by their close button), a running scan (as by "cancel"). Work that does
    /// not end within 1.5 seconds, and a second request, lead to AtOnce(0). Returns at once.
    void Begin();

    /// Stores the settings of both windows, closes the library and ends the process, whatever is running.
    [[noreturn]] void AtOnce(int exitCode);

private:
    void Step();
    bool ClosesWhatIsInFront();
    void CancelWork();

    AppWindows& m_windows;
    QTimer m_steps;
    QTimer m_limit; ///< Of its own: a box that a step opens holds up the steps.
};

} // namespace quavernet
