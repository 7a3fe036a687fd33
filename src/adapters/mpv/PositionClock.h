// The position in a track between two answers of the engine. It is asked for at every moment, and the engine
// would have to be woken each time. Used by EnginePlayer.
#pragma once

#include <chrono>

namespace quavernet::mpv {

class PositionClock {
public:
    using Time = std::chrono::steady_clock::time_point;

    void Set(double seconds, Time now) {
        m_seconds = seconds;
        m_since = now;
    }

    /// Whether the position moves on by itself from now on.
    void Run(bool running, Time now) {
        if (running != m_running) {
            Set(At(now), now);
            m_running = running;
        }
    }

    bool IsRunning() const { return m_running; }

    double At(Time now) const {
        return m_running ? m_seconds + std::chrono::duration<double>(now - m_since).count() : m_seconds;
    }

private:
    double m_seconds = 0;
    Time m_since;
    bool m_running = false;
};

} // namespace quavernet::mpv
