// The application object: its notify is the one event boundary of the program, behind which a failure is
// shown and the process ends.
#pragma once

#include <QApplication>

#include <exception>
#include <functional>
#include <string>

namespace quavernet {

class Application : public QApplication {
    Q_OBJECT
public:
    Application(int& argc, char** argv);

    bool notify(QObject* receiver, QEvent* event) override;
    bool event(QEvent* event) override;

    /// Runs something that no event delivers (the start sequence, a commit before the loop blocks) inside the
    /// same boundary. `doing` names it for the message.
    void RunGuarded(const std::string& doing, const std::function<void()>& action);

    /// Names what the program is doing right now; empty if nothing in particular.
    void SetActivity(std::function<std::string()> activity) { m_activity = std::move(activity); }

signals:
    /// The desktop wants the program to end: its session is over.
    void EndRequested();

private:
    [[noreturn]] void EndWithFailure(const std::exception& failure, const std::string& doing);

    std::function<std::string()> m_activity;
    bool m_ending = false; ///< The failure box is up: events still run below it.
};

} // namespace quavernet
