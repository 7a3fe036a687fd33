// One file that a reader has opened and read ahead of its use. Made by ReaderPool; PosixFiles gives it to
// whoever opens the file.
#pragma once

#include "adapters/posix/OpenedFile.h"
#include "platform/UserFiles.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace quavernet::posix {

class FileAhead {
public:
    /// Opens the file and reads head and tail. Never throws: what fails here is asked again by its user.
    explicit FileAhead(const std::string& path);

    const std::string& Path() const { return m_path; }

    /// Whether its user would find what was found here: not if the path leads to another file now, or if
    /// this one has changed since, or if it could not be opened.
    bool IsStill() const;

    /// The open file's number; -1 if it could not be opened.
    int Number() const { return m_file ? m_file->Number() : -1; }

    /// The open file. Only of one that could be opened.
    OpenedFile& Opened() const { return *m_file; }

    /// As BinaryFile::ReadAt, and for the same files as Opened().
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> bytes) const;

private:
    /// Bytes of the file.
    struct Piece {
        std::uint64_t offset = 0;
        std::size_t wanted = 0;
        std::vector<std::byte> bytes; ///< Fewer than wanted where the file ends.
    };

    bool Read(std::uint64_t offset, std::size_t count);
    void ReadTag();
    bool Answers(const Piece& piece, std::uint64_t offset, std::size_t count) const;

    std::string m_path;
    std::unique_ptr<OpenedFile> m_file;
    std::vector<Piece> m_pieces;
};

} // namespace quavernet::posix
