#include "inspect/Id3v1.h"

#include "platform/CodePage.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace quavernet {

namespace {

// Takes the record's fields one after the other.
class FieldReader {
public:
    explicit FieldReader(std::span<const std::byte> record) : m_rest(record) {}

    std::string Text(std::size_t width) {
        const auto* bytes = reinterpret_cast<const char*>(m_rest.data());
        m_rest = m_rest.subspan(width);
        return FromWindows1252(std::string_view(bytes, width));
    }

private:
    std::span<const std::byte> m_rest;
};

void AppendField(std::string& record, std::string_view text, std::size_t width) {
    std::string bytes = ToWindows1252(text);
    bytes.resize(width, ' ');
    record += bytes;
}

} // namespace

bool IsId3v1Mark(std::span<const std::byte, Id3v1MarkSize> bytes) {
    return std::memcmp(bytes.data(), "TAG", Id3v1MarkSize) == 0;
}

Id3v1Tag ParseId3v1(std::span<const std::byte, Id3v1RecordSize> record) {
    FieldReader fields(record);
    Id3v1Tag tag;
    tag.TagTitle = fields.Text(Id3v1Tag::TextWidth);
    tag.TagArtist = fields.Text(Id3v1Tag::TextWidth);
    tag.TagAlbum = fields.Text(Id3v1Tag::TextWidth);
    tag.TagYear = fields.Text(Id3v1Tag::YearWidth);
    tag.TagComment = fields.Text(Id3v1Tag::TextWidth);
    tag.TagGenre = std::to_integer<std::uint8_t>(record.back());
    return tag;
}

Id3v1Record BuildId3v1(const Id3v1Tag& tag) {
    std::string bytes;
    AppendField(bytes, tag.TagTitle, Id3v1Tag::TextWidth);
    AppendField(bytes, tag.TagArtist, Id3v1Tag::TextWidth);
    AppendField(bytes, tag.TagAlbum, Id3v1Tag::TextWidth);
    AppendField(bytes, tag.TagYear, Id3v1Tag::YearWidth);
    AppendField(bytes, tag.TagComment, Id3v1Tag::TextWidth);
    bytes += static_cast<char>(tag.TagGenre);
    Id3v1Record record;
    std::memcpy(record.data(), bytes.data(), record.size());
    return record;
}

} // namespace quavernet
