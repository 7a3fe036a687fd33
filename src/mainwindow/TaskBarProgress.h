// The progress of long work on the program's entry in the task bar: only of work that takes a while, and a
// few times a second at most. MainWork hands every progress on.
#pragma once

#include <QElapsedTimer>

namespace quavernet {

class TaskBarProgress {
public:
    /// 0 to 100; 0: there is no work. Costs nothing unless a whole percent is new.
    void Show(float value);

private:
    void Hide();

    QElapsedTimer m_since; ///< Since the work began, or the last one was shown.
    int m_percent = 0;
    bool m_isShown = false;
};

} // namespace quavernet
