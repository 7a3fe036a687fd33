// One plain file opened for reads and writes at byte offsets. Called by the inspection, the tag writers and
// the adapters that take files apart.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <span>
#include <string>

namespace quavernet {

/// Opens plain files only, never a pipe, a device or a folder, and never waits for one. Never creates a file.
class BinaryFile {
public:
    enum class Access { Read, ReadWrite };

    /// Throws RuntimeError 53 if the file is missing, 76 if a part of its path is no folder, 75 if it is no
    /// plain file or may not be opened so.
    BinaryFile(const std::string& path, Access access);
    ~BinaryFile();
    BinaryFile(BinaryFile&& other) noexcept;
    BinaryFile& operator=(BinaryFile&& other) noexcept;

    /// Bytes in the file when it was opened.
    std::uint64_t Size() const { return m_size; }

    /// Whether its length and times are those of the moment when it was opened: nobody wrote to it since, and
    /// neither has this object. Throws RuntimeError 57 if the device fails.
    bool IsAsOpened() const;

    /// The open file's number, for calls that this class does not wrap.
    int Descriptor() const { return m_descriptor; }

    /// Reads up to `bytes.size()` bytes from the offset; fewer only at the end of the file.
    /// Throws RuntimeError 57 if the device fails.
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> bytes) const;

    /// Writes all bytes at the offset. Throws RuntimeError 61 if the disk is full, 57 if the device fails.
    void WriteAt(std::uint64_t offset, std::span<const std::byte> bytes);

    /// Waits until all that was written stands on the disk. Throws RuntimeError 61 if the disk is full, as
    /// some file systems find only now, 57 if the device fails.
    void BringToDisk();

    void Close() noexcept;

private:
    std::string m_path;
    int m_descriptor = -1;
    std::uint64_t m_size = 0;
    std::timespec m_modified{}; ///< Contents, when it was opened.
    std::timespec m_changed{};  ///< Contents, rights or times, when it was opened.
};

} // namespace quavernet
