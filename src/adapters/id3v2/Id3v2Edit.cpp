#include "adapters/id3v2/Id3v2Edit.h"

#include "adapters/id3v2/Id3v2Frames.h"

#include <algorithm>
#include <utility>

namespace quavernet::id3v2 {

namespace {

ByteView BytesOf(const Frame& frame, ByteView body) {
    return body.subspan(frame.offset, frame.size);
}

// The frame that takes the first one's place; empty if the field leaves none.
Bytes Replacement(const TagHeader& header, const Frame& frame, ByteView body, const std::string& text,
                  bool hasAnother) {
    if (text.empty() && !hasAnother) {
        return {};
    }
    FieldValue value = DecodeFrame(header, frame.field, BytesOf(frame, body));
    value.text = text;
    const std::string_view id(reinterpret_cast<const char*>(body.data()) + frame.offset,
                              header.major == 2 ? 3 : 4);
    return EncodeFrame(header.major, id, frame.field, value);
}

} // namespace

EditedBody EditFrames(const TagHeader& header, ByteView body, const FieldChanges& changes) {
    MemoryBody memory(body);
    const FrameList list = ListFrames(header, memory);
    std::array<bool, FieldCount> seen{};
    Bytes result;
    const auto append = [&](ByteView bytes) { result.insert(result.end(), bytes.begin(), bytes.end()); };
    for (auto frame = list.frames.begin(); frame != list.frames.end(); ++frame) {
        const auto field = static_cast<std::size_t>(frame->field);
        if (frame->field == Field::None || !changes[field] || seen[field]) {
            append(BytesOf(*frame, body));
            continue;
        }
        seen[field] = true;
        const bool hasAnother = std::any_of(frame + 1, list.frames.end(),
                                            [&](const Frame& other) { return other.field == frame->field; });
        append(Replacement(header, *frame, body, *changes[field], hasAnother));
    }
    for (std::size_t i = 0; i < FieldCount; ++i) {
        if (changes[i] && !changes[i]->empty() && !seen[i]) {
            const auto field = static_cast<Field>(i);
            append(EncodeFrame(header.major, FrameId(field, header.major), field, {*changes[i], {}, {}}));
        }
    }
    const std::size_t tailBegin = result.size();
    // Padding goes; bytes that are neither frame nor padding are somebody's and stay.
    ByteView tail = body.subspan(list.end);
    while (!tail.empty() && tail.back() == std::byte{0}) {
        tail = tail.first(tail.size() - 1);
    }
    append(tail);
    return {std::move(result), tailBegin};
}

Bytes BuildTag(const TagHeader& header, ByteView frames, std::uint64_t totalSize) {
    TagHeader plain = header;
    plain.size = static_cast<std::uint32_t>(totalSize - HeaderSize);
    if (header.major < 4) {
        plain.flags &= ~TagHeader::Unsynchronisation;
    }
    plain.flags &= ~(TagHeader::ExtendedHeader | TagHeader::Footer);
    Bytes tag = BuildTagHeader(plain, "ID3");
    tag.insert(tag.end(), frames.begin(), frames.end());
    tag.resize(totalSize);
    return tag;
}

bool ReadsAsEdited(ByteView tag, const EditedBody& body) {
    const auto header = ParseTagHeader(tag);
    MemoryBody memory(tag.subspan(HeaderSize));
    return header && ListFrames(*header, memory).end == body.tailBegin;
}

} // namespace quavernet::id3v2
