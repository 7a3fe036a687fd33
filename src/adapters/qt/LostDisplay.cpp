#include "adapters/qt/LostDisplay.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QThread>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <semaphore>
#include <utility>

namespace quavernet {

namespace {

// The first words of what the toolkit says before it ends the process for the loss of its Wayland connection.
// Nothing else is heard of that end: "_exit" calls no functions.
constexpr QLatin1String LastWords("The Wayland connection ");

// For the main thread, when another one has said the words. If it is busy for longer the settings of this run
// are lost: the desktop is waiting for the end of its session.
constexpr std::chrono::milliseconds Patience(1500);

// The system calls a plain function at the end. Empty while there is nothing to do, and while it is being
// done. For the main thread alone.
std::function<void()>*& Waiting() {
    static std::function<void()>* waiting = nullptr;
    return waiting;
}

// Read by every thread that says something.
std::atomic<QtMessageHandler>& Before() {
    static std::atomic<QtMessageHandler> before = nullptr;
    return before;
}

void CallWaiting() {
    if (std::function<void()>* lost = std::exchange(Waiting(), nullptr)) {
        (*lost)();
    }
}

void Hear(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (const QtMessageHandler before = Before()) {
        before(type, context, text);
    }
    if (!text.startsWith(LastWords)) {
        return;
    }
    if (QThread::currentThread() == QCoreApplication::instance()->thread()) {
        CallWaiting();
        return;
    }
    // Whoever returns from here ends the process.
    const auto done = std::make_shared<std::binary_semaphore>(0);
    const auto call = [done] {
        CallWaiting();
        done->release();
    };
    QMetaObject::invokeMethod(QCoreApplication::instance(), call, Qt::QueuedConnection);
    (void)done->try_acquire_for(Patience);
}

} // namespace

// Every orderly end goes by way of Shell::EndProcess, which passes over such calls: one that comes here is
// the toolkit's.
LostDisplay::LostDisplay(std::function<void()> lost) : m_lost(std::move(lost)) {
    Waiting() = &m_lost;
    std::atexit(CallWaiting);
    // Taken before Hear can be called: another thread may speak at any time.
    Before() = qInstallMessageHandler(nullptr);
    qInstallMessageHandler(Hear);
}

LostDisplay::~LostDisplay() {
    qInstallMessageHandler(Before());
    Waiting() = nullptr;
}

} // namespace quavernet
