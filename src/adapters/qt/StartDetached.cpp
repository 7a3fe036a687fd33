#include "adapters/qt/StartDetached.h"

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quavernet {

namespace {

class Pipe {
public:
    Pipe() : m_made(::pipe2(m_ends.data(), O_CLOEXEC) == 0) {}
    ~Pipe() {
        if (m_made) {
            ::close(m_ends[0]);
            CloseWriteEnd();
        }
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    bool Made() const { return m_made; }
    void CloseWriteEnd() {
        if (m_ends[1] >= 0) {
            ::close(m_ends[1]);
            m_ends[1] = -1;
        }
    }
    void Tell(int error) const {
        [[maybe_unused]] const ssize_t told = ::write(m_ends[1], &error, sizeof(error));
    }

    /// What was told; 0 if the other end was closed without a word.
    int Read() const {
        int error = 0;
        ssize_t size = 0;
        do {
            size = ::read(m_ends[0], &error, sizeof(error));
        } while (size < 0 && errno == EINTR);
        return size == sizeof(error) ? error : 0;
    }

private:
    std::array<int, 2> m_ends{-1, -1};
    bool m_made;
};

// What the program ignores, holds back or has open is no business of others: a library or a sound device that
// stayed open in them would be held for as long as they run.
void KeepToItself() {
    ::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    ::signal(SIGPIPE, SIG_DFL);
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

// In a copy of a process with threads: nothing here may allocate.
[[noreturn]] void BecomeProgram(const char* program, char* const* arguments, const Pipe& pipe) {
    ::setsid();
    const pid_t child = ::fork();
    if (child == 0) {
        KeepToItself();
        ::execv(program, arguments);
    }
    if (child <= 0) {
        pipe.Tell(errno);
    }
    ::_exit(0);
}

} // namespace

int StartDetached(const std::string& program, const std::vector<std::string>& arguments) {
    std::vector<char*> list{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) {
        list.push_back(const_cast<char*>(argument.c_str()));
    }
    list.push_back(nullptr);
    Pipe pipe;
    if (!pipe.Made()) {
        return errno;
    }
    const pid_t child = ::fork();
    if (child < 0) {
        return errno;
    }
    if (child == 0) {
        BecomeProgram(program.c_str(), list.data(), pipe);
    }
    pipe.CloseWriteEnd();
    while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    return pipe.Read();
}

} // namespace quavernet
