// The bytes of the file under inspection: its head is read once when it is opened, everything else where it
// is asked for. Called by the readers of this folder; the parsers work on a plain buffer just as well.
#pragma once

#include "platform/UserFiles.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace quavernet {

class FileBytes {
public:
    /// Enough for the search for a frame and all that is read after its last position (5000 + 47).
    static constexpr std::size_t HeadSize = 5120;

    /// Opens a file; IsOpen tells whether that went well. Never throws for a file that can't be read.
    explicit FileBytes(const std::string& path);

    /// A file that is in memory. The buffer must outlive this object.
    explicit FileBytes(std::span<const std::byte> contents);

    FileBytes(const FileBytes&) = delete;
    FileBytes& operator=(const FileBytes&) = delete;

    bool IsOpen() const { return m_open; }
    std::uint64_t Size() const { return m_size; }

    /// The first HeadSize bytes, fewer in a shorter file.
    std::span<const std::byte> Head() const { return m_head; }

    /// Fills `bytes` from the offset; false if the file does not hold all of them or can't be read.
    bool ReadAt(std::uint64_t offset, std::span<std::byte> bytes) const;

private:
    std::array<std::byte, HeadSize> m_buffer;
    std::span<const std::byte> m_contents; ///< The whole file if it is in memory.
    std::span<const std::byte> m_head;
    std::unique_ptr<BinaryFile> m_file;
    std::uint64_t m_size = 0;
    bool m_open = false;
};

} // namespace quavernet
