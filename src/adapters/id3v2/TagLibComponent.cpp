#include "adapters/id3v2/TagLibComponent.h"

#include "adapters/id3v2/Id3v2Edit.h"
#include "adapters/id3v2/Id3v2Frames.h"
#include "adapters/id3v2/Id3v2Layout.h"
#include "platform/RuntimeError.h"
#include "platform/UserFiles.h"

#include <algorithm>
#include <array>
#include <optional>

namespace quavernet {

namespace {

using namespace id3v2;

constexpr std::size_t WindowSize = 4096;
constexpr std::size_t LargestUnsynchronised = std::size_t{1} << 25; // Such a body is read whole.
constexpr std::uint64_t Padding = 1024;                             // In a tag that had to grow.
constexpr std::size_t LargestText = LargestFrame / 4;               // Fits a frame in any encoding.

/// The first frame of each field, with its header; empty if there is none.
using FieldFrames = std::array<Bytes, FieldCount>;

// A tag's body in its file, read through a window: frames that nobody asks for (pictures) are passed over.
class FileBody : public TagBody {
public:
    FileBody(const BinaryFile& file, std::size_t size) : m_file(file), m_size(size) {}

    std::size_t Size() const override { return m_size; }

    ByteView View(std::size_t offset, std::size_t count) override {
        offset = std::min(offset, m_size);
        count = std::min(count, m_size - offset);
        if (offset < m_begin || offset + count > m_begin + m_window.size()) {
            m_window.resize(std::min(std::max(count, WindowSize), m_size - offset));
            m_window.resize(m_file.ReadAt(HeaderSize + offset, m_window));
            m_begin = offset;
        }
        const ByteView rest = ByteView(m_window).subspan(offset - m_begin);
        return rest.first(std::min(count, rest.size()));
    }

private:
    const BinaryFile& m_file;
    std::size_t m_size;
    std::size_t m_begin = 0;
    Bytes m_window;
};

std::optional<TagHeader> HeaderOf(const BinaryFile& file) {
    std::array<std::byte, HeaderSize> bytes{};
    return file.ReadAt(0, bytes) == bytes.size() ? ParseTagHeader(bytes) : std::nullopt;
}

bool IsUnsynchronised(const TagHeader& header) {
    return header.major < 4 && header.HasFlag(TagHeader::Unsynchronisation);
}

// Bytes of the body that the file really holds.
std::size_t BodySize(const BinaryFile& file, const TagHeader& header) {
    return static_cast<std::size_t>(std::min<std::uint64_t>(header.size, file.Size() - HeaderSize));
}

Bytes ReadBytes(const BinaryFile& file, std::uint64_t offset, std::size_t count) {
    Bytes bytes(count);
    bytes.resize(file.ReadAt(offset, bytes));
    return bytes;
}

FieldFrames FramesOf(const TagHeader& header, TagBody& body) {
    FieldFrames frames;
    for (const Frame& frame : ListFrames(header, body).frames) {
        if (frame.field == Field::None) {
            continue;
        }
        if (Bytes& first = frames[static_cast<std::size_t>(frame.field)]; first.empty()) {
            const ByteView bytes = body.View(frame.offset, std::min(frame.size, LargestFrame + 1));
            first.assign(bytes.begin(), bytes.end());
        }
    }
    return frames;
}

FieldFrames FramesOfUnsynchronised(const TagHeader& header, ByteView body) {
    const Bytes plain = Resynchronise(body.first(std::min(body.size(), LargestUnsynchronised)));
    MemoryBody plainBody(plain);
    return FramesOf(header, plainBody);
}

FieldFrames ReadFrames(const BinaryFile& file, const TagHeader& header) {
    if (!IsUnsynchronised(header)) {
        FileBody body(file, BodySize(file, header));
        return FramesOf(header, body);
    }
    const std::size_t size = std::min(BodySize(file, header), LargestUnsynchronised);
    return FramesOfUnsynchronised(header, ReadBytes(file, HeaderSize, size));
}

FieldFrames ReadFrames(ByteView head, const TagHeader& header) {
    const ByteView rawBody = head.subspan(HeaderSize, header.size);
    if (IsUnsynchronised(header)) {
        return FramesOfUnsynchronised(header, rawBody);
    }
    MemoryBody body(rawBody);
    return FramesOf(header, body);
}

/// The texts of a tag's fields. A frame is decoded when its text is asked for: a scan asks for two of them.
class TagFields {
public:
    TagFields() = default;
    TagFields(const TagHeader& header, FieldFrames frames) : m_header(header), m_frames(std::move(frames)) {}

    const std::string& Text(std::size_t field) {
        if (!m_frames[field].empty()) {
            m_texts[field] = DecodeFrame(m_header, static_cast<Field>(field), m_frames[field]).text;
            m_frames[field].clear();
        }
        return m_texts[field];
    }
    void SetText(std::size_t field, const std::string& text) {
        m_frames[field].clear();
        m_texts[field] = text;
    }

private:
    TagHeader m_header;
    FieldFrames m_frames; ///< Empty: its text stays.
    std::array<std::string, FieldCount> m_texts;
};

std::optional<Field> FieldOfIndex(int index) {
    switch (index) {
    case TagComponent::Title:
        return Field::Title;
    case TagComponent::Performer:
        return Field::Performer;
    case TagComponent::Album:
        return Field::Album;
    case TagComponent::Year:
        return Field::Year;
    case TagComponent::Genre:
        return Field::Genre;
    case TagComponent::Comment:
        return Field::Comment;
    case TagComponent::Publisher:
        return Field::Publisher;
    default:
        return std::nullopt;
    }
}

[[noreturn]] void Refuse(const std::string& reason, const std::string& path) {
    throw RuntimeError(ErrorNumber::PathFileAccess, reason + ": " + path);
}

class TagLibComponent : public TagComponent {
public:
    explicit TagLibComponent(UserFiles& files) : m_files(files) {}

    void LoadFile(const std::string& path) override {
        Forget(path);
        if (path.empty()) {
            return; // No file: its fields are empty.
        }
        try {
            const auto file = m_files.Open(path, BinaryFile::Access::Read);
            if (const auto header = HeaderOf(*file)) {
                m_hasTag = true;
                m_loaded = TagFields(*header, ReadFrames(*file, *header));
            }
            m_state = State::Loaded;
        } catch (const RuntimeError&) {
            m_state = State::Failed; // A file that can't be read shows itself as one without a tag.
        }
    }

    void LoadHead(const std::string& path, std::span<const std::byte> head) override {
        const auto header = head.size() >= HeaderSize ? ParseTagHeader(head.first(HeaderSize)) : std::nullopt;
        if (head.size() < HeaderSize || (header && header->TotalSize() > head.size())) {
            LoadFile(path);
            return;
        }
        Forget(path);
        m_state = State::Loaded;
        if (header) {
            m_hasTag = true;
            m_loaded = TagFields(*header, ReadFrames(head, *header));
        }
    }

    bool HasV2Tag() const override { return m_hasTag; }

    std::string TagField(int index) const override {
        const auto field = FieldOfIndex(index);
        return field ? Text(static_cast<std::size_t>(*field)) : std::string();
    }

    void SetTagField(int index, const std::string& text) override {
        if (const auto field = FieldOfIndex(index)) {
            m_set[static_cast<std::size_t>(*field)] = text;
        }
    }

    void SaveFile(const std::string& path) override {
        if (m_state == State::Failed && path == m_path) {
            Refuse("The ID3v2 tag could not be read", path);
        }
        try {
            const auto file = m_files.Open(path, BinaryFile::Access::ReadWrite);
            Save(path, *file);
        } catch (const RuntimeError& error) {
            throw RuntimeError(ErrorNumber::PathFileAccess, error.Description());
        }
        if (m_state == State::Loaded) {
            RememberSaved(path);
        }
    }

private:
    enum class State { Empty, Loaded, Failed };

    void Forget(const std::string& path) {
        m_path = path;
        m_state = State::Empty;
        m_hasTag = false;
        m_loaded = TagFields();
        m_set = {};
    }

    const std::string& Text(std::size_t field) const {
        return m_set[field] ? *m_set[field] : m_loaded.Text(field);
    }

    // The next save writes what changes from here on.
    void RememberSaved(const std::string& path) {
        for (std::size_t i = 0; i < FieldCount; ++i) {
            if (m_set[i]) {
                m_loaded.SetText(i, *m_set[i]);
            }
        }
        m_set = {};
        m_path = path;
    }

    void Save(const std::string& path, BinaryFile& file) const {
        const auto found = HeaderOf(file);
        const TagHeader header = found.value_or(TagHeader{3, 0, 0, 0});
        const std::uint64_t space = found ? header.TotalSize() : 0;
        if (space > file.Size() || (header.major == 2 && header.HasFlag(TagHeader::Compression))) {
            Refuse("Damaged ID3v2 tag", path);
        }
        const FieldChanges changes =
            Changes(path, found ? TagFields(header, ReadFrames(file, header)) : TagFields());
        if (std::none_of(changes.begin(), changes.end(),
                         [](const auto& change) { return change.has_value(); })) {
            return;
        }
        if (std::any_of(changes.begin(), changes.end(),
                        [](const auto& change) { return change && change->size() > LargestText; })) {
            Refuse("ID3v2 field too long", path);
        }
        const Bytes oldTag = ReadBytes(file, 0, static_cast<std::size_t>(space));
        if (oldTag.size() < space) {
            Refuse("The file was cut meanwhile", path);
        }
        const ByteView rawBody = found ? ByteView(oldTag).subspan(HeaderSize, header.size) : ByteView();
        const Bytes plainBody = IsUnsynchronised(header) ? Resynchronise(rawBody) : Bytes();
        const EditedBody body = EditFrames(header, IsUnsynchronised(header) ? plainBody : rawBody, changes);
        Replace(path, file, header, oldTag, body);
    }

    // In place if the new tag fits there, else by a copy with padding, else by one without.
    static void Replace(const std::string& path, BinaryFile& file, const TagHeader& header,
                        const Bytes& oldTag, const EditedBody& body) {
        const std::uint64_t space = oldTag.size();
        const std::uint64_t needed = HeaderSize + body.bytes.size();
        if (needed + Padding > LargestTag) {
            Refuse("ID3v2 tag too large", path);
        }
        for (const std::uint64_t size : {space, needed + Padding, needed}) {
            const bool fits = needed <= size && size <= LargestTag;
            const Bytes tag = fits ? BuildTag(header, body.bytes, size) : Bytes();
            if (tag.empty() || !ReadsAsEdited(tag, body)) {
                continue;
            }
            if (size == space) {
                file.Overwrite(0, oldTag, tag, SaveTimes::Keep);
            } else {
                file.ReplaceHead(space, tag);
            }
            return;
        }
        Refuse("Damaged ID3v2 tag", path);
    }

    // The text that a save has to bring into the file, if it has to. What nobody changed since it was loaded
    // is left as it is there now: another program may have changed it meanwhile. Without a tag that was
    // read there is nothing to compare with, and what was set counts. Into another file go all seven.
    std::optional<std::string> Wanted(const std::string& path, std::size_t field) const {
        if (m_state == State::Loaded && path != m_path) {
            return Text(field);
        }
        const bool unchanged = m_state == State::Loaded && m_set[field] == m_loaded.Text(field);
        return unchanged ? std::nullopt : m_set[field];
    }

    // A field whose text is the one in the file keeps its frame as it is.
    FieldChanges Changes(const std::string& path, TagFields old) const {
        FieldChanges changes;
        for (std::size_t i = 0; i < FieldCount; ++i) {
            if (const auto wanted = Wanted(path, i); wanted && *wanted != old.Text(i)) {
                changes[i] = wanted;
            }
        }
        return changes;
    }

    UserFiles& m_files;
    std::string m_path; ///< Given to the last load, or to the last save of what was loaded.
    State m_state = State::Empty;
    bool m_hasTag = false;
    mutable TagFields m_loaded; // Texts are made when they are asked for.
    std::array<std::optional<std::string>, FieldCount> m_set;
};

} // namespace

std::unique_ptr<TagComponent> CreateTagLibComponent(UserFiles& files) {
    return std::make_unique<TagLibComponent>(files);
}

} // namespace quavernet
