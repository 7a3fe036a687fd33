// A file of the user's that is opened and read by a thread of its own, so that a share that hangs blocks
// neither the window nor the engine: who waits for it can be called off at any moment. Used by MpvStreams.
#pragma once

#include "platform/UserFiles.h"

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quavernet::mpv {

/// One file. All calls but Cancel and the two questions come from one thread at a time.
class PatientFile : public std::enable_shared_from_this<PatientFile> {
public:
    PatientFile(UserFiles& files, std::string path) : m_files(files), m_path(std::move(path)) {}

    /// Begins to open the file, and doesn't wait.
    void Begin();

    /// Waits until the file is open. Bytes in it; less than 0 if it was refused or called off.
    std::int64_t Size();

    /// From where the next read goes on. Doesn't wait.
    void SeekTo(std::uint64_t offset);

    /// Waits for bytes from there. 0 at the end; less if the file was refused, its device fails or it was
    /// called off.
    std::int64_t Read(std::span<char> bytes);

    /// Ends all waiting, now and later. From any thread.
    void Cancel();

    /// The file will not be read again. A call that hangs in the system ends in its own time.
    void Close();

    /// Why there is nothing to be read: no plain file, an empty one, none that may be read.
    std::optional<RuntimeError> Refusal() const;

    /// Whether the file turned out shorter than it was when it was opened, or its device failed.
    bool IsBroken() const;

private:
    void Serve(); ///< The thread.
    void OpenFile();
    void ReadOnce(std::unique_lock<std::mutex>& lock);
    /// Until the thread has nothing more to do. False if it was called off.
    bool WaitForThread(std::unique_lock<std::mutex>& lock);

    UserFiles& m_files;
    const std::string m_path;

    mutable std::mutex m_mutex; ///< Guards all that follows, but not while the system is asked.
    std::condition_variable m_asked;
    std::condition_variable m_done;
    bool m_busy = true; ///< The thread opens or reads.
    bool m_cancelled = false;
    bool m_closed = false;
    bool m_broken = false;
    std::optional<RuntimeError> m_refusal;
    std::unique_ptr<BinaryFile> m_file; ///< The thread's own while it is busy.
    std::uint64_t m_size = 0;
    std::uint64_t m_offset = 0;
    std::size_t m_wanted = 0;
    std::vector<char> m_bytes; ///< What the last read gave; the thread's own while it is busy.
    std::int64_t m_result = 0; ///< How many of them; less than 0: the device failed.
};

} // namespace quavernet::mpv
