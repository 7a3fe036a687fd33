#include "adapters/posix/FileAhead.h"

#include "adapters/posix/TagPieces.h"

#include "platform/RuntimeError.h"

#include <algorithm>

namespace quavernet::posix {

namespace {

// The inspection reads 5120 bytes of the head and 128 of the tail. Whole pages: no disk gives less.
constexpr std::uint64_t DiskUnit = 4096;
constexpr std::size_t HeadSize = 2 * DiskUnit;
constexpr std::uint64_t TailSize = 128;
constexpr std::size_t MostTagPieces = 3;

} // namespace

FileAhead::FileAhead(const std::string& path) : m_path(path) {
    try {
        m_file = std::make_unique<OpenedFile>(path, BinaryFile::Access::Read);
    } catch (const OpenError&) {
        return;
    }
    m_pieces.reserve(2 + MostTagPieces);
    if (Read(0, HeadSize)) {
        ReadTag();
    }
    const std::uint64_t size = m_file->Size();
    if (size > HeadSize) {
        const std::uint64_t tail = std::max<std::uint64_t>((size - TailSize) / DiskUnit * DiskUnit, HeadSize);
        Read(tail, static_cast<std::size_t>(size - tail));
    }
}

// The frames that come after a cover; its reader takes as many bytes at once.
void FileAhead::ReadTag() {
    TagPieces tag(m_pieces.front().bytes);
    for (std::size_t i = 0; i < MostTagPieces; ++i) {
        const Piece& last = m_pieces.back();
        const auto next = tag.After(last.bytes, last.offset);
        if (!next || last.bytes.empty() ||
            !Read(*next, static_cast<std::size_t>(std::min<std::uint64_t>(DiskUnit, tag.End() - *next)))) {
            return;
        }
    }
}

bool FileAhead::Read(std::uint64_t offset, std::size_t count) {
    Piece piece{offset, count, std::vector<std::byte>(count)};
    try {
        piece.bytes.resize(m_file->ReadAt(offset, piece.bytes));
    } catch (const RuntimeError&) {
        return false;
    }
    m_pieces.push_back(std::move(piece));
    return true;
}

bool FileAhead::IsStill() const {
    return m_file && m_file->IsStillAt(m_path);
}

// Whether the piece is all that a read at this place would meet.
bool FileAhead::Answers(const Piece& piece, std::uint64_t offset, std::size_t count) const {
    const std::uint64_t end = piece.offset + piece.bytes.size();
    if (offset < piece.offset || offset >= end) {
        return false;
    }
    const bool reachesEnd = piece.bytes.size() < piece.wanted || end >= m_file->Size();
    return reachesEnd || count <= end - offset;
}

std::size_t FileAhead::ReadAt(std::uint64_t offset, std::span<std::byte> bytes) const {
    for (const Piece& piece : m_pieces) {
        if (!Answers(piece, offset, bytes.size())) {
            continue;
        }
        const auto from = std::span(piece.bytes).subspan(static_cast<std::size_t>(offset - piece.offset));
        const std::size_t count = std::min(from.size(), bytes.size());
        std::copy_n(from.begin(), count, bytes.begin());
        return count;
    }
    return Opened().ReadAt(offset, bytes);
}

} // namespace quavernet::posix
