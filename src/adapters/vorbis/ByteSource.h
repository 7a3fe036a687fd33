// Random access to the bytes under a reader: a file, or a block of memory. Called by the page reader.
#pragma once

#include "platform/UserFiles.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace quavernet::vorbis {

class ByteSource {
public:
    virtual ~ByteSource() = default;

    virtual std::uint64_t Size() const = 0;

    /// Copies bytes from `offset` on; the result is their number, less than asked for at the end or where
    /// the medium fails.
    virtual std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> target) = 0;

    /// Where the next byte is that was ever written: `offset` itself or, in the hole of a sparse file,
    /// after it. A hole reads as zeros, but reading them takes time.
    virtual std::uint64_t NextData(std::uint64_t offset) { return offset; }
};

/// The bytes that a file had when it was opened.
std::unique_ptr<ByteSource> OpenFile(std::unique_ptr<BinaryFile> file);

/// A view: the bytes must outlive it.
std::unique_ptr<ByteSource> OpenMemory(std::span<const std::uint8_t> bytes);

} // namespace quavernet::vorbis
