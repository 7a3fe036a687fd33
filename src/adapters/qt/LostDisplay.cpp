#include "adapters/qt/LostDisplay.h"

#include <cstdlib>
#include <utility>

namespace quavernet {

namespace {

// The system calls a plain function at the end. Empty while there is nothing to do, and while it is being
// done.
std::function<void()>*& Waiting() {
    static std::function<void()>* waiting = nullptr;
    return waiting;
}

void CallWaiting() {
    if (std::function<void()>* lost = std::exchange(Waiting(), nullptr)) {
        (*lost)();
    }
}

} // namespace

// Every orderly end goes by way of Shell::EndProcess, which passes over such calls: one that comes here is
// the toolkit's.
LostDisplay::LostDisplay(std::function<void()> lost) : m_lost(std::move(lost)) {
    Waiting() = &m_lost;
    std::atexit(CallWaiting);
}

LostDisplay::~LostDisplay() {
    Waiting() = nullptr;
}

} // namespace quavernet
