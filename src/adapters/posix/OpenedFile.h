// One plain file opened for reads and writes at byte offsets, with what safe saving has to know of it. Used
// by PosixFiles and SafeSave.
#pragma once

#include "adapters/posix/Descriptor.h"
#include "platform/UserFiles.h"

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <span>
#include <string>

#include <sys/types.h>

namespace quavernet::posix {

/// What it shares with BinaryFile is as told there.
class OpenedFile {
public:
    /// Throws OpenError.
    OpenedFile(const std::string& path, BinaryFile::Access access);

    const std::string& Path() const { return m_path; }
    std::uint64_t Size() const { return m_size; }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> bytes) const;
    std::uint64_t NextData(std::uint64_t offset) const;

    /// Whether its length and times are those of the moment when it was opened: nobody wrote to it since, and
    /// neither has this object. Throws RuntimeError 57 if the device fails.
    bool IsAsOpened() const;

    /// Whether a path leads to this file, and nobody wrote to it since. Never throws.
    bool IsStillAt(const std::string& path) const;

    /// The open file's number, for calls that this class does not wrap.
    int Number() const { return m_file.Get(); }

    /// Writes all bytes at the offset. Throws RuntimeError 61 if the disk is full, 57 if the device fails.
    void WriteAt(std::uint64_t offset, std::span<const std::byte> bytes);

    /// Waits until all that was written is on the disk. Throws RuntimeError 61 if the disk is full, as some
    /// file systems find only now, 57 if the device fails.
    void BringToDisk();

private:
    std::string m_path;
    Descriptor m_file;
    std::uint64_t m_size = 0;
    dev_t m_device = 0;
    ino_t m_inode = 0;
    std::timespec m_modified{}; ///< Contents, when it was opened.
    std::timespec m_changed{};  ///< Contents, rights or times, when it was opened.
};

} // namespace quavernet::posix
