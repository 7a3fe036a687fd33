#include "adapters/qt/EndSignals.h"

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace quavernet {

namespace {

constexpr std::array EndingSignals{SIGTERM, SIGINT, SIGHUP};
constexpr unsigned PatienceSeconds = 5;

// A handler gets nothing but the number: where it writes has to be known everywhere.
volatile std::sig_atomic_t writingEnd = -1;

extern "C" void NoteSignal(int) {
    const int before = errno;
    const char byte = 0;
    (void)!::write(writingEnd, &byte, 1);
    ::alarm(PatienceSeconds);
    errno = before;
}

void Handle(int number) {
    struct sigaction action {};
    if (::sigaction(number, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) {
        return;
    }
    action = {};
    action.sa_handler = NoteSignal;
    action.sa_flags = SA_RESTART;
    ::sigemptyset(&action.sa_mask);
    ::sigaction(number, &action, nullptr);
}

} // namespace

EndSignals::EndSignals() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return; // The signals end the program as they end others.
    }
    m_reading = ends[0];
    writingEnd = ends[1];
    m_notifier = std::make_unique<QSocketNotifier>(m_reading, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &EndSignals::Read);
    for (const int number : EndingSignals) {
        Handle(number);
    }
}

EndSignals::~EndSignals() {
    if (m_reading < 0) {
        return;
    }
    for (const int number : EndingSignals) {
        std::signal(number, SIG_DFL);
    }
    m_notifier.reset();
    ::close(m_reading);
    ::close(writingEnd);
}

void EndSignals::Read() {
    std::array<char, 16> bytes{};
    while (::read(m_reading, bytes.data(), bytes.size()) > 0) {
    }
    emit this->Received();
}

} // namespace quavernet
