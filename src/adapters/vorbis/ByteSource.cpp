#include "adapters/vorbis/ByteSource.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/OpenPath.h"

namespace quavernet::vorbis {

namespace {

class FileSource : public ByteSource {
public:
    explicit FileSource(int descriptor) : m_descriptor(descriptor) {
        struct stat facts {};
        if (::fstat(descriptor, &facts) == 0 && S_ISREG(facts.st_mode)) {
            m_size = static_cast<std::uint64_t>(facts.st_size);
        }
    }
    ~FileSource() override { ::close(m_descriptor); }
    FileSource(const FileSource&) = delete;
    FileSource& operator=(const FileSource&) = delete;

    std::uint64_t Size() const override { return m_size; }

    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> target) override {
        std::size_t done = 0;
        while (done < target.size() && offset + done < m_size) {
            const auto got = ::pread(m_descriptor, target.data() + done, target.size() - done,
                                     static_cast<off_t>(offset + done));
            if (got < 0 && errno == EINTR) {
                continue;
            }
            if (got <= 0) {
                break;
            }
            done += static_cast<std::size_t>(got);
        }
        return done;
    }

    std::uint64_t NextData(std::uint64_t offset) override {
        const off_t found = ::lseek(m_descriptor, static_cast<off_t>(offset), SEEK_DATA);
        if (found < 0) {
            return errno == ENXIO ? m_size : offset; // Nothing but a hole follows, or it can't be told.
        }
        return static_cast<std::uint64_t>(found);
    }

private:
    int m_descriptor;
    std::uint64_t m_size = 0;
};

class MemorySource : public ByteSource {
public:
    explicit MemorySource(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}

    std::uint64_t Size() const override { return m_bytes.size(); }

    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> target) override {
        if (offset >= m_bytes.size()) {
            return 0;
        }
        const auto from = m_bytes.subspan(static_cast<std::size_t>(offset));
        const std::size_t count = std::min(from.size(), target.size());
        std::copy_n(from.begin(), count, target.begin());
        return count;
    }

private:
    std::span<const std::uint8_t> m_bytes;
};

} // namespace

std::unique_ptr<ByteSource> OpenFile(const std::string& path) {
    // Without O_NONBLOCK a pipe would hold up the program until somebody writes into it.
    const int descriptor = OpenPath(path, O_RDONLY | O_NONBLOCK);
    return descriptor < 0 ? nullptr : std::make_unique<FileSource>(descriptor);
}

std::unique_ptr<ByteSource> OpenMemory(std::span<const std::uint8_t> bytes) {
    return std::make_unique<MemorySource>(bytes);
}

std::span<const std::uint8_t> ByteWindow::At(std::uint64_t offset, std::size_t count, std::size_t ahead) {
    const std::uint64_t left = offset < Size() ? Size() - offset : 0;
    count = static_cast<std::size_t>(std::min<std::uint64_t>(count, left));
    if (offset < m_start || offset + count > m_start + m_filled) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(std::max(count, ahead), left));
        if (m_bytes.size() < wanted) {
            m_bytes.resize(wanted);
        }
        m_start = offset;
        m_filled = m_source.ReadAt(offset, std::span(m_bytes).first(wanted));
        count = std::min(count, m_filled);
    }
    return std::span<const std::uint8_t>(m_bytes).subspan(static_cast<std::size_t>(offset - m_start), count);
}

std::span<const std::uint8_t> ByteWindow::Held(std::uint64_t offset, std::size_t count, std::size_t ahead) {
    if (At(offset, count, ahead).empty()) {
        return {};
    }
    const auto from = static_cast<std::size_t>(offset - m_start);
    return std::span<const std::uint8_t>(m_bytes).subspan(from, m_filled - from);
}

} // namespace quavernet::vorbis
