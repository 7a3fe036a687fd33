// Random access to the bytes under a reader: a file, or a block of memory. Called by the page reader.
#pragma once

#include "platform/UserFiles.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace quavernet::vorbis {

class ByteSource {
public:
    virtual ~ByteSource() = default;

    virtual std::uint64_t Size() const = 0;

    /// Copies bytes from `offset` on; the result is their number, less than asked for at the end or where
    /// the medium fails.
    virtual std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> target) = 0;

    /// Where the next byte stands that was ever written: `offset` itself or, in the hole of a sparse file,
    /// behind it. A hole reads as zeros, but reading them takes time.
    virtual std::uint64_t NextData(std::uint64_t offset) { return offset; }
};

/// The bytes that a file had when it was opened.
std::unique_ptr<ByteSource> OpenFile(std::unique_ptr<BinaryFile> file);

/// A view: the bytes must outlive it.
std::unique_ptr<ByteSource> OpenMemory(std::span<const std::uint8_t> bytes);

/// A piece of a source held in memory, so that neighbouring reads cost one call.
class ByteWindow {
public:
    explicit ByteWindow(ByteSource& source) : m_source(source) {}

    std::uint64_t Size() const { return m_source.Size(); }
    std::uint64_t NextData(std::uint64_t offset) { return m_source.NextData(offset); }

    /// Up to `count` bytes at `offset`: fewer only at the end. Valid until the next call. A read fetches
    /// `ahead` bytes if that is more.
    std::span<const std::uint8_t> At(std::uint64_t offset, std::size_t count, std::size_t ahead = 0);

    /// All that is held from `offset` on, after a read of `ahead` bytes if that is less than `count`.
    std::span<const std::uint8_t> Held(std::uint64_t offset, std::size_t count, std::size_t ahead);

private:
    ByteSource& m_source;
    std::vector<std::uint8_t> m_bytes;
    std::uint64_t m_start = 0;
    std::size_t m_filled = 0;
};

} // namespace quavernet::vorbis
