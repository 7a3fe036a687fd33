// One file that a reader has opened and read ahead of its use. Made by ReaderPool; PosixFiles gives it to
// whoever opens the file.
#pragma once

#include "adapters/posix/OpenedFile.h"
#include "platform/RuntimeError.h"
#include "platform/UserFiles.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quavernet::posix {

/// Whether a call that failed may go well the next time, and fails at once if not: for want of memory or
/// numbers of open files, because of what others may change meanwhile, but not because a device or a server
/// failed.
bool MayBeOver(int error);

class FileAhead {
public:
    /// Opens the file and reads head and tail. Never throws: what fails is kept.
    explicit FileAhead(const std::string& path);

    const std::string& Path() const { return m_path; }

    /// Whether its user would find what was found here: not if the path leads to another file now, or if
    /// this one has changed since, or if it could not be opened, whose reason may be over.
    bool IsStill() const;

    /// The open file's number; -1 if it could not be opened.
    int Number() const { return m_file ? m_file->Number() : -1; }

    /// The open file. Throws OpenError if it could not be opened.
    OpenedFile& Opened() const;

    /// As BinaryFile::ReadAt; what a reader failed to read is read again. Throws OpenError.
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> bytes) const;

private:
    /// Bytes of the file, or why there are none.
    struct Piece {
        std::uint64_t offset = 0;
        std::size_t wanted = 0;
        std::vector<std::byte> bytes; ///< Fewer than wanted where the file ends.
        std::optional<RuntimeError> failure;
    };

    void Read(std::uint64_t offset, std::size_t count);
    void ReadTag();
    bool Answers(const Piece& piece, std::uint64_t offset, std::size_t count) const;

    std::string m_path;
    std::unique_ptr<OpenedFile> m_file;
    std::optional<OpenError> m_refusal;
    std::vector<Piece> m_pieces;
};

} // namespace quavernet::posix
