#include "inspect/modMp3Info.h"

#include "inspect/Id3v1.h"
#include "inspect/ReadFile.h"

#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace quavernet {

namespace {

// Gives the file to the component, which keeps its fields for the details dialog. With the head it needs not
// open the file again, unless that can't be read: then the component has to know.
bool LoadId3v2(const std::string& path, const FileBytes& bytes) {
    TagComponent* component = mainModule.TagComponent.get();
    if (component == nullptr) {
        return false;
    }
    bool hasTag = false;
    IgnoreFailure([&] { component->LoadHead(path, bytes.Head()); });
    IgnoreFailure([&] { hasTag = component->HasV2Tag(); });
    return hasTag;
}

// Title and performer alone: album, year, genre, comment and publisher of a version 2 tag are asked of the
// component by the one dialog that shows them, and a scan files the song under no album and no genre.
void ReadId3v2(Id3v1Tag& tag) {
    const auto field = [](int index) {
        return std::string(LeftCharacters(mainModule.TagComponent->TagField(index), Id3v1Tag::TextWidth));
    };
    tag.TagArtist.clear(); // Blank, should a field fail.
    tag.TagTitle.clear();
    tag.TagTitle = field(TagComponent::Title);
    tag.TagArtist = field(TagComponent::Performer);
}

void ReadId3v1(const FileBytes& bytes, CurrentFile& file) {
    std::array<std::byte, Id3v1Size> buffer;
    const bool read = bytes.Size() >= Id3v1Size && bytes.ReadAt(bytes.Size() - Id3v1Size, buffer);
    const std::span<const std::byte, Id3v1Size> tail(buffer);
    if (!read || !IsId3v1Mark(tail.first<Id3v1MarkSize>())) {
        TagsFromFileName(file);
        return;
    }
    SetTagKind(1, file);
    file.Id3v1Tag = ParseId3v1(tail.last<Id3v1RecordSize>());
}

} // namespace

void SetTagKind(int kind, CurrentFile& file) {
    if (kind < 1 || kind > 3) {
        return;
    }
    file.HasTagV1 = kind == 1;
    file.HasTagV2 = kind == 2;
    file.HasNoTag = kind == 3;
}

// Statements that fail are passed over: a tag that can't be read is one that is not there. The kind flags
// stay those of the file before if this one has no tag.
void ReadTags(const std::string& path, const FileBytes& bytes, CurrentFile& file) {
    if (path.empty() || path == "*.mp3") {
        return;
    }
    if (LoadId3v2(path, bytes)) {
        SetTagKind(2, file);
        IgnoreFailure([&] { ReadId3v2(file.Id3v1Tag); });
    } else if (bytes.IsOpen()) {
        ReadId3v1(bytes, file);
    }
}

void ReadTags(const std::string& path, CurrentFile& file) {
    ReadTags(path, FileBytes(path), file);
}

std::string CleanGenreText(std::string_view text) {
    std::string result;
    std::copy_if(text.begin(), text.end(), std::back_inserter(result),
                 [](char c) { return c != '(' && c != ')'; });
    return result;
}

std::string RemoveNulls(std::string_view text) {
    std::string result;
    std::copy_if(text.begin(), text.end(), std::back_inserter(result), [](char c) { return c != '\0'; });
    return result;
}

} // namespace quavernet
