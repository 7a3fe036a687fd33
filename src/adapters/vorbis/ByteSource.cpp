#include "adapters/vorbis/ByteSource.h"

#include "platform/RuntimeError.h"

#include <algorithm>

namespace quavernet::vorbis {

namespace {

constexpr std::size_t PageSize = 4096; // What a medium gives or refuses as a whole is no smaller.

class FileSource : public ByteSource {
public:
    explicit FileSource(std::unique_ptr<BinaryFile> file) : m_file(std::move(file)) {}

    std::uint64_t Size() const override { return m_file->Size(); }

    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> target) override {
        if (offset >= Size()) {
            return 0;
        }
        const auto bytes = std::as_writable_bytes(
            target.first(static_cast<std::size_t>(std::min<std::uint64_t>(target.size(), Size() - offset))));
        try {
            return m_file->ReadAt(offset, bytes);
        } catch (const RuntimeError&) {
            return ReadToFault(offset, bytes);
        }
    }

    std::uint64_t NextData(std::uint64_t offset) override { return m_file->NextData(offset); }

private:
    // What lies before the place where the medium fails.
    std::size_t ReadToFault(std::uint64_t offset, std::span<std::byte> bytes) {
        std::size_t done = 0;
        try {
            while (done < bytes.size()) {
                const std::size_t toPageEnd = PageSize - static_cast<std::size_t>((offset + done) % PageSize);
                const auto piece = bytes.subspan(done, std::min(toPageEnd, bytes.size() - done));
                const std::size_t got = m_file->ReadAt(offset + done, piece);
                done += got;
                if (got < piece.size()) {
                    break;
                }
            }
        } catch (const RuntimeError&) {
            return done;
        }
        return done;
    }

    std::unique_ptr<BinaryFile> m_file;
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

std::unique_ptr<ByteSource> OpenFile(std::unique_ptr<BinaryFile> file) {
    return std::make_unique<FileSource>(std::move(file));
}

std::unique_ptr<ByteSource> OpenMemory(std::span<const std::uint8_t> bytes) {
    return std::make_unique<MemorySource>(bytes);
}

} // namespace quavernet::vorbis
