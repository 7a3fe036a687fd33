// Where the frames of an ID3v2 tag lie; no frame contents. Called by the tag reader and the tag writer. Ours
// and not TagLib's, whose save loses the frames RVAD, EQUA, TRDA, TSIZ and a second TCON of version 2.3, and
// left 5 of 20 files broken that were killed in the middle of it: here all other frames keep their bytes.
// Formats: id3v2-00 (2.2), id3v2.3.0, id3v2.4.0-structure.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quavernet::id3v2 {

inline constexpr std::size_t HeaderSize = 10; ///< Of the tag, and of its footer.
inline constexpr std::uint32_t LargestTag = (1u << 28) - 1;

using Bytes = std::vector<std::byte>;
using ByteView = std::span<const std::byte>;

struct TagHeader {
    static constexpr unsigned Unsynchronisation = 0x80;
    static constexpr unsigned ExtendedHeader = 0x40; ///< From version 2.3 on.
    static constexpr unsigned Compression = 0x40;    ///< In version 2.2.
    static constexpr unsigned Footer = 0x10;

    unsigned major = 0; ///< 2 to 4.
    unsigned revision = 0;
    unsigned flags = 0;
    std::uint32_t size = 0; ///< Bytes between the header and the footer or the audio.

    /// Bytes of the whole tag with its header and footer.
    std::uint64_t TotalSize() const;
    bool HasFlag(unsigned flag) const { return (flags & flag) != 0; }
};

/// The tag header at the beginning of a file: "ID3", major version 2 to 4, a size of four times seven bits.
std::optional<TagHeader> ParseTagHeader(ByteView bytes);

/// The header in ten bytes, with "ID3" or, for a footer, "3DI".
Bytes BuildTagHeader(const TagHeader& header, std::string_view mark);

/// The text frames after the seven fields.
enum class Field { Title, Performer, Album, Year, Genre, Comment, Publisher, None };
inline constexpr std::size_t FieldCount = 7;

/// The frame's own id for a field in a version of the tag.
std::string_view FrameId(Field field, unsigned major);

struct Frame {
    std::size_t offset = 0; ///< Of the frame's header in the body.
    std::size_t size = 0;   ///< With its header.
    Field field = Field::None;
};

struct FrameList {
    std::vector<Frame> frames; ///< In the tag's order, without gaps, from `begin` on.
    std::size_t begin = 0;     ///< After an extended header.
    std::size_t end = 0;       ///< After the last frame: padding, or bytes that are no frame.
};

/// The bytes between the tag's header and its end.
class TagBody {
public:
    virtual ~TagBody() = default;
    virtual std::size_t Size() const = 0;

    /// Up to `count` bytes from the offset, fewer at the end, or of a file that was cut while it is read;
    /// valid until the next call.
    virtual ByteView View(std::size_t offset, std::size_t count) = 0;
};

class MemoryBody : public TagBody {
public:
    explicit MemoryBody(ByteView bytes) : m_bytes(bytes) {}
    std::size_t Size() const override { return m_bytes.size(); }
    ByteView View(std::size_t offset, std::size_t count) override;

private:
    ByteView m_bytes;
};

/// Bytes of a frame's header: six in version 2.2, ten later.
std::size_t FrameHeaderSize(unsigned major);

/// The frames in the tag's body, 65,536 of them at most. `body` is without unsynchronisation up to version
/// 2.3. Ends silently at the first bytes that are no frame.
FrameList ListFrames(const TagHeader& header, TagBody& body);

/// Undoes the unsynchronisation of a whole body: 0xFF 0x00 becomes 0xFF.
Bytes Resynchronise(ByteView body);

/// Four times seven bits at an offset; bytes that are missing count as 0.
std::uint32_t SyncSafe(ByteView bytes, std::size_t offset);
void AppendBigEndian(Bytes& bytes, std::uint32_t value, std::size_t count);
void AppendSyncSafe(Bytes& bytes, std::uint32_t value);

} // namespace quavernet::id3v2
