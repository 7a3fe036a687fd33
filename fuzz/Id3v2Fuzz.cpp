// Reads the version 2 tag of a file of any bytes in the two ways that the component has, then changes fields
// of it and saves. The input: a byte whose lower seven bits choose the fields to change, and whose eighth
// lets another program change a further one between load and save; the length of a text and the text; then
// the file.
#include "adapters/id3v2/Id3v2Frames.h"
#include "adapters/id3v2/Id3v2Layout.h"
#include "adapters/id3v2/TagLibComponent.h"
#include "platform/CodePage.h"
#include "platform/RuntimeError.h"
#include "support/RealFiles.h"
#include "support/TemporaryFolder.h"

#include "FuzzInput.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace quavernet;
using namespace quavernet::id3v2;
using fuzz::Require;

constexpr std::array<int, FieldCount> Indexes = {
    TagComponent::Title, TagComponent::Performer, TagComponent::Album,    TagComponent::Year,
    TagComponent::Genre, TagComponent::Comment,   TagComponent::Publisher};

using Texts = std::array<std::string, FieldCount>;

Texts TextsOf(const TagComponent& component) {
    Texts texts;
    for (std::size_t i = 0; i < FieldCount; ++i) {
        texts[i] = component.TagField(Indexes[i]);
    }
    return texts;
}

bool BeginsWithTag(std::string_view file) {
    return file.size() >= 10 && file.substr(0, 3) == "ID3" && file[3] >= 2 && file[3] <= 4 &&
           std::none_of(file.begin() + 6, file.begin() + 10, [](char c) { return (c & 0x80) != 0; });
}

/// A file's tag taken apart: what must stay when some of its fields change.
struct Parts {
    TagHeader header;
    Bytes body; ///< Without unsynchronisation.
    FrameList list;
    std::vector<std::string> frames; ///< Whole, in their order.
    std::string tail;                ///< After the last frame, without padding.
    std::string audio;               ///< After the tag.
};

std::string TextOf(ByteView bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::optional<Parts> Split(std::string_view file) {
    const auto header = ParseTagHeader(fuzz::BytesOf(file));
    Require(header.has_value() == BeginsWithTag(file));
    if (!header || header->TotalSize() > file.size()) {
        return std::nullopt;
    }
    Parts parts;
    parts.header = *header;
    const ByteView raw = fuzz::BytesOf(file).subspan(HeaderSize, header->size);
    const bool unsynchronised = header->major < 4 && header->HasFlag(TagHeader::Unsynchronisation);
    parts.body = unsynchronised ? Resynchronise(raw) : Bytes(raw.begin(), raw.end());
    MemoryBody memory(parts.body);
    parts.list = ListFrames(*header, memory);
    for (const Frame& frame : parts.list.frames) {
        parts.frames.push_back(TextOf(ByteView(parts.body).subspan(frame.offset, frame.size)));
    }
    parts.tail = TextOf(ByteView(parts.body).subspan(parts.list.end));
    parts.tail.resize(parts.tail.find_last_not_of('\0') + 1);
    parts.audio = file.substr(static_cast<std::size_t>(header->TotalSize()));
    return parts;
}

void RequireLayout(const Parts& parts) {
    const std::size_t least = FrameHeaderSize(parts.header.major);
    Require(parts.list.begin <= parts.body.size() && parts.list.frames.size() <= 65536);
    std::size_t offset = parts.list.begin;
    for (const Frame& frame : parts.list.frames) {
        Require(frame.offset == offset && frame.size >= least && frame.size <= parts.body.size() - offset);
        offset += frame.size;
        if (frame.field == Field::None) {
            continue;
        }
        const ByteView bytes = ByteView(parts.body).subspan(frame.offset, frame.size);
        // The short way gives what the long one gives, or nothing.
        if (const auto plain = DecodePlainText(parts.header, bytes); plain && frame.field != Field::Comment) {
            Require(*plain == DecodeAnyFrame(parts.header, frame.field, bytes).text);
        }
        const FieldValue value = DecodeFrame(parts.header, frame.field, bytes);
        Require(IsValidUtf8(value.text) && value.text.find('\0') == std::string::npos);
    }
    Require(parts.list.end == offset);
}

/// The body of a file that is cut while it is read.
class CutBody : public TagBody {
public:
    CutBody(ByteView held, std::size_t size) : m_size(size), m_rest(held) {}
    std::size_t Size() const override { return m_size; }
    ByteView View(std::size_t offset, std::size_t count) override { return m_rest.View(offset, count); }

private:
    std::size_t m_size;
    MemoryBody m_rest;
};

void ReadCut(const Parts& parts, std::size_t held) {
    const Bytes copy(parts.body.begin(), parts.body.begin() + static_cast<std::ptrdiff_t>(held));
    CutBody body(copy, parts.body.size());
    const FrameList list = ListFrames(parts.header, body);
    Require(list.begin <= parts.body.size() && list.end <= parts.body.size());
}

Texts Read(const std::string& path, std::string_view file) {
    const auto component = CreateTagLibComponent(test::RealFiles());
    component->LoadFile(path);
    Texts texts = TextsOf(*component);
    Require(component->HasV2Tag() == BeginsWithTag(file));
    for (const std::string& text : texts) {
        Require(IsValidUtf8(text) && text.find('\0') == std::string::npos);
        Require(BeginsWithTag(file) || text.empty());
    }
    for (const std::size_t known : {std::size_t{0}, std::size_t{5120}, file.size()}) {
        component->LoadHead(path, fuzz::BytesOf(file).first(std::min(known, file.size())));
        Require(component->HasV2Tag() == BeginsWithTag(file) && TextsOf(*component) == texts);
    }
    return texts;
}

// A text as a frame keeps it: without its NULs, each invalid byte a character of its own.
std::string Kept(std::string_view text) {
    std::string kept;
    while (!text.empty()) {
        if (const char32_t c = CodePoint(text); c != 0) {
            kept += EncodeUtf8(c);
        }
        text.remove_prefix(CharacterLength(text));
    }
    return kept;
}

std::vector<std::string> NamesIn(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
    return names;
}

// Frames that no change concerns: all but the first of each changed field.
std::vector<std::string> OtherFrames(const Parts& parts, const std::array<bool, FieldCount>& changed) {
    std::array<bool, FieldCount> seen{};
    std::vector<std::string> others;
    for (std::size_t i = 0; i < parts.frames.size(); ++i) {
        const Field field = parts.list.frames[i].field;
        const auto number = static_cast<std::size_t>(field);
        if (field != Field::None && changed[number] && !seen[number]) {
            seen[number] = true;
        } else {
            others.push_back(parts.frames[i]);
        }
    }
    return others;
}

void RequireSaved(std::string_view before, const std::string& after,
                  const std::array<bool, FieldCount>& changed) {
    const auto now = Split(after);
    Require(now.has_value());
    RequireLayout(*now);
    const auto was = Split(before);
    if (!was) {
        Require(now->audio == before && now->header.major == 3 && now->tail.empty());
        return;
    }
    Require(now->header.major == was->header.major && now->header.revision == was->header.revision);
    Require(now->audio == was->audio && now->tail == was->tail);
    Require(OtherFrames(*now, changed) == OtherFrames(*was, changed));
}

// Whether a save went well: no file is left beside the other, and a refused one is the old one to the byte.
bool Saved(TagComponent& component, const std::string& folder, const std::string& path,
           std::string_view file) {
    bool saved = true;
    try {
        component.SaveFile(path);
    } catch (const RuntimeError& error) {
        Require(error.Number() == ErrorNumber::PathFileAccess && fuzz::ReadWhole(path) == file);
        saved = false;
    }
    Require(NamesIn(folder) == std::vector<std::string>{"x.mp3"});
    return saved;
}

// Another program changes the first field that is not chosen.
void SaveByAnother(const std::string& folder, const std::string& path, std::string_view file, unsigned mask) {
    const auto component = CreateTagLibComponent(test::RealFiles());
    component->LoadFile(path);
    std::size_t field = 0;
    while (field < FieldCount && (mask >> field & 1) != 0) {
        ++field;
    }
    if (field < FieldCount) {
        component->SetTagField(Indexes[field], "theirs");
        Saved(*component, folder, path, file);
    }
}

void Save(const std::string& folder, const std::string& path, std::string_view loaded, const Texts& old,
          unsigned mask, const std::string& text) {
    const auto component = CreateTagLibComponent(test::RealFiles());
    component->LoadFile(path);
    std::array<bool, FieldCount> changed{};
    Texts wanted = old;
    for (std::size_t i = 0; i < FieldCount; ++i) {
        if ((mask >> i & 1) != 0) {
            wanted[i] = text.empty() ? "" : text + std::to_string(i);
            component->SetTagField(Indexes[i], wanted[i]);
            changed[i] = wanted[i] != old[i];
        }
    }
    if ((mask & 0x80) != 0) {
        SaveByAnother(folder, path, loaded, mask);
    }
    const std::string file = fuzz::ReadWhole(path);
    const Texts standing = Read(path, file);
    if (!Saved(*component, folder, path, file)) {
        return;
    }
    const std::string after = fuzz::ReadWhole(path);
    if (std::find(changed.begin(), changed.end(), true) == changed.end()) {
        Require(after == file);
        return;
    }
    RequireSaved(file, after, changed);
    const Texts now = Read(path, after);
    for (std::size_t i = 0; i < FieldCount; ++i) {
        Require(now[i] == (changed[i] ? Kept(wanted[i]) : standing[i]));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TemporaryFolder folder;
    static const std::string path = folder / "x.mp3";
    std::string_view file = fuzz::TextOf(data, size);
    const unsigned mask = fuzz::TakeByte(file);
    const std::string text = fuzz::TakeText(file);

    std::filesystem::remove(path);
    fuzz::WriteWhole(path, file);
    if (const auto parts = Split(file)) {
        RequireLayout(*parts);
        for (const std::size_t tenths : {std::size_t{0}, std::size_t{3}, std::size_t{9}}) {
            ReadCut(*parts, parts->body.size() * tenths / 10);
        }
    }
    const Texts old = Read(path, file);
    Require(fuzz::ReadWhole(path) == file);
    Save(folder.Path(), path, file, old, mask, text);
    return 0;
}
