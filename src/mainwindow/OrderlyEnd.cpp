#include "mainwindow/OrderlyEnd.h"

#include "app/MainModule.h"
#include "app/MayAct.h"
#include "mainwindow/AppWindows.h"
#include "mainwindow/MainParts.h"
#include "mainwindow/frmMain.h"
#include "playback/frmPlayer.h"

#include <QApplication>
#include <QDrag>

#include <cstdlib>

namespace quavernet {

namespace {

constexpr int StepMs = 20;
constexpr int LongestMs = 1500; // Sessions and service managers wait for some seconds and then kill.

} // namespace

OrderlyEnd::OrderlyEnd(AppWindows& windows) : m_windows(windows) {
    m_steps.setInterval(StepMs);
    connect(&m_steps, &QTimer::timeout, this, &OrderlyEnd::Step);
    m_limit.setSingleShot(true);
    m_limit.setInterval(LongestMs);
    connect(&m_limit, &QTimer::timeout, this, [this] { AtOnce(EXIT_SUCCESS); });
}

void OrderlyEnd::Begin() {
    if (m_steps.isActive()) {
        AtOnce(EXIT_SUCCESS);
    }
    // Handlers may be running further up, and each has to end by itself: one step at a time, from the loop.
    m_steps.start();
    m_limit.start();
}

void OrderlyEnd::Step() {
    if (m_windows.Form() == nullptr) {
        AtOnce(EXIT_SUCCESS);
    }
    if (ClosesWhatIsInFront()) {
        return;
    }
    if (!MayAct()) {
        CancelWork();
        return;
    }
    if (frmPlayer* player = m_windows.Player().Form()) {
        player->close();
    }
    m_windows.Close();
}

bool OrderlyEnd::ClosesWhatIsInFront() {
    QDrag::cancel();
    if (QWidget* menu = QApplication::activePopupWidget()) {
        menu->close();
        return true;
    }
    if (QWidget* dialog = QApplication::activeModalWidget()) {
        dialog->close();
        return true;
    }
    return false;
}

void OrderlyEnd::CancelWork() {
    if (mainModule.ScanRunning) {
        m_windows.Form()->Parts().Scan.Cancel();
    } else {
        m_windows.Work().SetCancelled(true);
    }
}

void OrderlyEnd::AtOnce(int exitCode) {
    if (mainModule.MainOpen) {
        IgnoreFailure([this] { m_windows.Form()->StoreState(); });
    }
    if (const frmPlayer* player = m_windows.Player().Form()) {
        IgnoreFailure([player] { player->StorePlace(); });
    }
    IgnoreFailure([] { mainModule.Connection.reset(); });
    services.shell->EndProcess(exitCode);
    std::abort(); // Not reached: the process has ended.
}

} // namespace quavernet
