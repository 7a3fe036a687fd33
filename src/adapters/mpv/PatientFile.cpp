#include "adapters/mpv/PatientFile.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <system_error>
#include <thread>

namespace quavernet::mpv {

void PatientFile::Begin() {
    try {
        // Nobody waits for the end of the thread: it hangs for as long as the share does.
        std::thread([self = shared_from_this()] { self->Serve(); }).detach();
    } catch (const std::system_error& error) {
        const std::lock_guard lock(m_mutex);
        m_refusal = RuntimeError(ErrorNumber::PathFileAccess, std::string(error.what()) + ": " + m_path);
        m_busy = false;
    }
}

std::int64_t PatientFile::Size() {
    std::unique_lock lock(m_mutex);
    return WaitForThread(lock) && !m_refusal ? static_cast<std::int64_t>(m_size) : -1;
}

void PatientFile::SeekTo(std::uint64_t offset) {
    const std::lock_guard lock(m_mutex);
    m_offset = offset;
}

std::int64_t PatientFile::Read(std::span<char> bytes) {
    std::unique_lock lock(m_mutex);
    if (!WaitForThread(lock) || m_refusal) {
        return -1;
    }
    m_wanted = bytes.size();
    m_busy = true;
    m_asked.notify_one();
    if (!WaitForThread(lock) || m_result < 0) {
        return -1;
    }
    const auto count = static_cast<std::size_t>(m_result);
    std::copy_n(m_bytes.begin(), count, bytes.begin());
    m_offset += count;
    return m_result;
}

void PatientFile::Cancel() {
    const std::lock_guard lock(m_mutex);
    m_cancelled = true;
    m_done.notify_all();
}

void PatientFile::Close() {
    const std::lock_guard lock(m_mutex);
    m_cancelled = true;
    m_closed = true;
    m_done.notify_all();
    m_asked.notify_one();
}

std::optional<RuntimeError> PatientFile::Refusal() const {
    const std::lock_guard lock(m_mutex);
    return m_refusal;
}

bool PatientFile::IsBroken() const {
    const std::lock_guard lock(m_mutex);
    return m_broken;
}

bool PatientFile::WaitForThread(std::unique_lock<std::mutex>& lock) {
    m_done.wait(lock, [this] { return m_cancelled || !m_busy; });
    return !m_cancelled;
}

void PatientFile::Serve() {
    OpenFile();
    std::unique_lock lock(m_mutex);
    const auto isAsked = [this] { return m_closed || m_busy; };
    for (m_asked.wait(lock, isAsked); !m_closed; m_asked.wait(lock, isAsked)) {
        ReadOnce(lock);
    }
    // Outside of the lock: closing may hang as well.
    const std::unique_ptr<BinaryFile> file = std::move(m_file);
    lock.unlock();
}

void PatientFile::OpenFile() {
    std::unique_ptr<BinaryFile> file;
    std::uint64_t size = 0;
    std::optional<RuntimeError> refusal;
    try {
        file = m_files.Open(m_path, BinaryFile::Access::Read);
        size = file->Size();
        if (size == 0) {
            refusal = RuntimeError(ErrorNumber::PathFileAccess, "0 bytes: " + m_path);
        }
    } catch (const RuntimeError& error) {
        refusal = error;
    } catch (const std::exception& error) {
        refusal = RuntimeError(ErrorNumber::PathFileAccess, std::string(error.what()) + ": " + m_path);
    }
    const std::lock_guard lock(m_mutex);
    m_size = size;
    m_file = std::move(file);
    m_refusal = std::move(refusal);
    m_busy = false;
    m_done.notify_all();
}

void PatientFile::ReadOnce(std::unique_lock<std::mutex>& lock) {
    const std::uint64_t offset = m_offset;
    const std::size_t wanted = m_wanted;
    lock.unlock();
    std::int64_t result = -1;
    try {
        m_bytes.resize(std::max(m_bytes.size(), wanted));
        result = static_cast<std::int64_t>(
            m_file->ReadAt(offset, std::as_writable_bytes(std::span(m_bytes.data(), wanted))));
    } catch (const std::exception&) {
        // The device fails, or there is no memory: the result stays below 0.
    }
    lock.lock();
    const std::uint64_t expected = offset < m_size ? std::min<std::uint64_t>(wanted, m_size - offset) : 0;
    m_broken = m_broken || result < static_cast<std::int64_t>(expected);
    m_result = result;
    m_busy = false;
    m_done.notify_all();
}

} // namespace quavernet::mpv
