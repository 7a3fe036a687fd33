#include "mainwindow/TaskBarProgress.h"

#include "app/MainModule.h"
#include "platform/Desktop.h"

namespace quavernet {

namespace {
constexpr int FirstMs = 500; // A load of the list is over before.
constexpr int NextMs = 250;
} // namespace

void TaskBarProgress::Show(float value) {
    const int percent = static_cast<int>(value);
    if (percent == m_percent) {
        return;
    }
    m_percent = percent;
    if (percent <= 0) {
        Hide();
        return;
    }
    if (!m_since.isValid()) {
        m_since.start();
    }
    if (services.desktop != nullptr && m_since.elapsed() >= (m_isShown ? NextMs : FirstMs)) {
        services.desktop->ShowProgress(percent / 100.0);
        m_isShown = true;
        m_since.start();
    }
}

void TaskBarProgress::Hide() {
    m_since.invalidate();
    if (m_isShown) {
        m_isShown = false;
        services.desktop->HideProgress();
    }
}

} // namespace quavernet
