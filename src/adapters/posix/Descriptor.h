// An open file descriptor that closes itself, and the way in which the adapter opens and asks for paths of
// any length. Used by the files of this folder only.
#pragma once

#include <string>
#include <utility>

struct statx;

namespace quavernet::posix {

class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int fd) : m_fd(fd) {}
    ~Descriptor() { Close(); }
    Descriptor(Descriptor&& other) noexcept : m_fd(other.Release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        if (this != &other) {
            Close();
            m_fd = other.Release();
        }
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Get() const { return m_fd; }
    bool IsOpen() const { return m_fd >= 0; }
    int Release() { return std::exchange(m_fd, -1); }

    /// 0, or the error number.
    int Close();

private:
    int m_fd = -1;
};

/// Opens a path; one that is too long for a single call is walked piece by piece. On failure the descriptor
/// is closed and errno set.
Descriptor OpenPath(const std::string& path, int flags);

/// Kind, rights, size, times and mount of what is at the path, links followed. False with errno set if
/// there is nothing, or nothing that may be asked.
bool QueryPath(const std::string& path, struct statx& facts);

/// The same for a name in an open folder.
bool QueryEntry(int folder, const char* name, struct statx& facts);

/// The system's own text for an error number.
std::string ErrorText(int error);

/// Absolute, with single separators, no "." and no final "/". ".." stays: a link may come before it.
std::string NormalPath(const std::string& path);

} // namespace quavernet::posix
