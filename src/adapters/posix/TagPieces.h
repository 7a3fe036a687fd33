// Which parts of an ID3v2 tag its reader will look at beyond the head of the file: the frames after a cover,
// as a rule. Asked by FileAhead; what the frames hold is told by adapters/id3v2 alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace quavernet::posix {

class TagPieces {
public:
    /// Nothing follows if these bytes begin no tag.
    explicit TagPieces(std::span<const std::byte> head);

    /// Where the tag goes on after the first frame that does not end within `bytes`, which lie at the offset
    /// in the file and begin with a frame (the head: with the tag). Nothing if all frames end there.
    std::optional<std::uint64_t> After(std::span<const std::byte> bytes, std::uint64_t offset);

    /// Offset in the file of what comes after the tag.
    std::uint64_t End() const { return m_end; }

private:
    std::uint64_t FrameSize(std::span<const std::byte> header) const;

    int m_major = 0;
    std::uint64_t m_next = 0; ///< The next frame.
    std::uint64_t m_end = 0;
};

} // namespace quavernet::posix
