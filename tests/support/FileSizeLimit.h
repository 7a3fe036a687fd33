// While an object of this class lives, the process can't make any file longer than so many bytes: a full disk
// that needs no disk of its own.
#pragma once

#include <csignal>

#include <sys/resource.h>

namespace quavernet::test {

class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : m_signal(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        Set(bytes);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_signal);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

    void Set(rlim_t bytes) {
        const rlimit limit{bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }

private:
    rlimit m_before{};
    void (*m_signal)(int);
};

} // namespace quavernet::test
