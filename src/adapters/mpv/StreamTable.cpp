#include "adapters/mpv/StreamTable.h"

#include <charconv>
#include <exception>

namespace quavernet::mpv {

namespace {

constexpr const char* Protocol = "quavernet";
constexpr std::size_t NumberBegin = 12; ///< After "quavernet://".

// What the engine calls, from its own threads. No exception may reach it.

OpenedStream& StreamOf(void* cookie) {
    return *static_cast<OpenedStream*>(cookie);
}

/// Null if the engine has closed it.
std::shared_ptr<PatientFile> FileOf(void* cookie) {
    return StreamOf(cookie).File();
}

std::int64_t ReadStream(void* cookie, char* bytes, std::uint64_t count) {
    const std::shared_ptr<PatientFile> file = FileOf(cookie);
    return file ? file->Read({bytes, static_cast<std::size_t>(count)}) : std::int64_t{MPV_ERROR_GENERIC};
}

std::int64_t SeekStream(void* cookie, std::int64_t offset) {
    const std::shared_ptr<PatientFile> file = FileOf(cookie);
    if (!file || offset < 0) {
        return MPV_ERROR_GENERIC;
    }
    file->SeekTo(static_cast<std::uint64_t>(offset));
    return offset;
}

std::int64_t SizeOfStream(void* cookie) {
    const std::shared_ptr<PatientFile> file = FileOf(cookie);
    const std::int64_t size = file ? file->Size() : -1;
    return size < 0 ? std::int64_t{MPV_ERROR_GENERIC} : size;
}

void CancelStream(void* cookie) {
    if (const std::shared_ptr<PatientFile> file = FileOf(cookie)) {
        file->Cancel();
    }
}

void CloseStream(void* cookie) {
    StreamOf(cookie).Close();
}

int OpenStream(void* table, char* address, mpv_stream_cb_info* stream) {
    // The engine can call a file off only after this: the file is opened meanwhile, and the first read waits.
    try {
        stream->cookie = static_cast<StreamTable*>(table)->Open(address);
    } catch (const std::exception&) { // No memory.
        stream->cookie = nullptr;
    }
    if (stream->cookie == nullptr) {
        return MPV_ERROR_LOADING_FAILED;
    }
    stream->read_fn = ReadStream;
    stream->seek_fn = SeekStream;
    stream->size_fn = SizeOfStream;
    stream->close_fn = CloseStream;
    stream->cancel_fn = CancelStream;
    return 0;
}

} // namespace

std::shared_ptr<PatientFile> OpenedStream::File() const {
    const std::lock_guard lock(m_mutex);
    return m_file;
}

void OpenedStream::Close() {
    std::shared_ptr<PatientFile> file;
    {
        const std::lock_guard lock(m_mutex);
        file = std::move(m_file);
    }
    if (file) {
        file->Close();
    }
}

void StreamTable::Register(const Library& library, mpv_handle* engine) {
    library.stream_cb_add_ro(engine, Protocol, this, OpenStream);
}

std::string StreamTable::Announce(std::uint64_t number, const std::string& path) {
    const std::lock_guard lock(m_mutex);
    m_entries.insert_or_assign(number, Entry{path, nullptr});
    return std::string(Protocol) + "://" + std::to_string(number);
}

void StreamTable::Forget(std::uint64_t number) {
    const std::lock_guard lock(m_mutex);
    m_entries.erase(number);
}

std::shared_ptr<PatientFile> StreamTable::Opened(std::uint64_t number) const {
    const std::lock_guard lock(m_mutex);
    const auto entry = m_entries.find(number);
    return entry == m_entries.end() ? nullptr : entry->second.file;
}

OpenedStream* StreamTable::Open(const std::string& address) {
    std::uint64_t number = 0;
    const char* end = address.data() + address.size();
    if (address.size() <= NumberBegin ||
        std::from_chars(address.data() + NumberBegin, end, number).ptr != end) {
        return nullptr;
    }
    const std::lock_guard lock(m_mutex);
    const auto entry = m_entries.find(number);
    if (entry == m_entries.end()) {
        return nullptr;
    }
    auto file = std::make_shared<PatientFile>(m_files, entry->second.path);
    OpenedStream& stream = m_streams.emplace_back(file);
    file->Begin();
    entry->second.file = std::move(file);
    return &stream;
}

} // namespace quavernet::mpv
