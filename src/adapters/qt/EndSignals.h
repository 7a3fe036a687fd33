// The signals that ask a program to end (SIGTERM, SIGINT, SIGHUP), brought into the message loop.
// src/main.cpp makes one.
#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <memory>

namespace quavernet {

/// A signal that was ignored when the program started stays ignored: so does "nohup" hide the terminal's end.
/// If the message loop does not come to an end within five seconds after a signal, because a disk does not
/// answer, the system ends the process (SIGALRM).
class EndSignals : public QObject {
    Q_OBJECT
public:
    EndSignals();
    ~EndSignals() override;

signals:
    void Received();

private:
    void Read();

    std::unique_ptr<QSocketNotifier> m_notifier;
    int m_reading = -1;
};

} // namespace quavernet
