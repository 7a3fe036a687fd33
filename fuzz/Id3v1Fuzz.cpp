// Inspects a file of any bytes under any name as far as its version 1 tag and its name go, then writes a tag
// of any texts into it. The input: the file's name, the five texts of the tag, each a line; then the file.
#include "inspect/FileNameTags.h"
#include "inspect/Id3v1.h"
#include "inspect/ReadFile.h"
#include "inspect/modMp3Info.h"

#include "app/TextHelpers.h"
#include "platform/CodePage.h"
#include "platform/RuntimeError.h"
#include "support/TemporaryFolder.h"

#include "FuzzInput.h"
#include "FuzzServices.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace quavernet;
using fuzz::Require;

const std::string unknown = "Unbekannt";

bool Same(const Id3v1Tag& a, const Id3v1Tag& b) {
    return a.TagTitle == b.TagTitle && a.TagArtist == b.TagArtist && a.TagAlbum == b.TagAlbum &&
           a.TagYear == b.TagYear && a.TagComment == b.TagComment && a.TagGenre == b.TagGenre;
}

void RequireWidths(const Id3v1Tag& tag) {
    Require(CharacterCount(tag.TagTitle) == 30 && CharacterCount(tag.TagArtist) == 30);
    Require(CharacterCount(tag.TagAlbum) == 30 && CharacterCount(tag.TagComment) == 30);
    Require(CharacterCount(tag.TagYear) == 4);
    Require(IsValidUtf8(tag.TagTitle + tag.TagArtist + tag.TagAlbum + tag.TagYear + tag.TagComment));
}

bool HasMark(std::string_view contents) {
    return contents.size() >= Id3v1Size && contents.substr(contents.size() - Id3v1Size, 3) == "TAG";
}

std::span<const std::byte, Id3v1RecordSize> RecordOf(std::string_view contents) {
    return fuzz::BytesOf(contents).last<Id3v1RecordSize>();
}

// The pieces of a name between its dashes, found a second time; nothing if the last one is too short.
std::vector<std::string> Pieces(std::string_view name) {
    std::vector<std::string> pieces(1);
    for (const char c : name) {
        if (c == '-') {
            pieces.emplace_back();
        } else {
            pieces.back() += c;
        }
    }
    for (std::string& piece : pieces) {
        piece = Trim(piece);
    }
    std::string& last = pieces.back();
    for (int i = 0; i < 4; ++i) {
        if (last.empty()) {
            return {};
        }
        last = LeftCharacters(last, CharacterCount(last) - 1);
    }
    return pieces;
}

void ReadName(const std::string& name) {
    const std::vector<std::string> pieces = Pieces(name);
    CurrentFile file;
    Id3v1Tag& tag = file.Id3v1Tag;
    tag.TagGenre = 7;
    file.CurrentFileName = name;
    file.DetailsPath = "/music/" + name;
    TagsFromFileName(file);
    if (pieces.empty() || CharacterCount(name) > 32767) {
        Require(tag.TagTitle == unknown && tag.TagArtist == unknown && tag.TagGenre == 7);
        return;
    }
    const std::string& title = pieces[std::min<std::size_t>(pieces.size(), 3) - 1];
    Require(tag.TagTitle == LeftCharacters(title, 30) && tag.TagGenre == 255);
    if (pieces.size() == 1) {
        Require(tag.TagArtist == unknown);
    } else {
        Require(tag.TagArtist == LeftCharacters(pieces[0], 30) ||
                (pieces.size() > 2 && tag.TagArtist == LeftCharacters(pieces[1], 30)));
    }
}

// The whole inspection of a file without a version 2 tag.
void Inspect(const std::string& path, const std::string& name, std::string_view contents) {
    CurrentFile file;
    file.CurrentPath = path;
    file.CurrentFileName = name;
    file.HasTagV2 = true;
    InspectFile(path, file);
    Require(file.HasTagV1 == HasMark(contents) && file.HasTagV2 == !HasMark(contents) && !file.HasNoTag);
    for (const std::string& text : {file.FileAlbum, file.FileGenre, file.FileQuality}) {
        Require(text.find('\0') == std::string::npos);
    }
    const int genre = HasMark(contents) ? static_cast<unsigned char>(contents.back()) : 255;
    Require(file.FileGenre == std::to_string(genre));
    Require(file.FileQuality == std::to_string(file.AudioInfo.BitRate));
    Require(CharacterCount(file.FileTitle) <= 30 && CharacterCount(file.FileArtist) <= 30);
    Require(CharacterCount(file.FileAlbum) <= 30);
    if (HasMark(contents)) {
        const Id3v1Tag tag = ParseId3v1(RecordOf(contents));
        RequireWidths(tag);
        Require(std::ranges::equal(BuildId3v1(tag), RecordOf(contents)));
        const std::string title = StripNulls(RemoveNulls(TrimRight(tag.TagTitle)));
        const std::string artist = StripNulls(RemoveNulls(TrimRight(tag.TagArtist)));
        const bool named = (!title.empty() && title != unknown) || (!artist.empty() && artist != unknown);
        Require(!named || (file.FileTitle == (title.empty() ? unknown : title) &&
                           file.FileArtist == (artist.empty() ? unknown : artist)));
        Require(file.FileAlbum == RemoveNulls(TrimRight(tag.TagAlbum)));
    } else {
        Require(file.FileAlbum.empty());
    }
}

void Write(const std::string& path, const Id3v1Tag& tag, std::string_view before,
           const test::ScriptedMsgBox& msgBox) {
    WriteId3v1(path, tag);
    const std::string after = fuzz::ReadWhole(path);
    if (before.size() < Id3v1Size) {
        Require(after == before && msgBox.shown.size() == 1);
        Require(msgBox.shown.front().text == "Fehler: Bad record number");
        return;
    }
    // A file neither grows nor changes in front of its last 128 bytes.
    const std::size_t kept = before.size() - Id3v1Size;
    Require(after.size() == before.size() && msgBox.shown.empty() && HasMark(after));
    Require(std::string_view(after).substr(0, kept) == before.substr(0, kept));
    const Id3v1Tag written = ParseId3v1(RecordOf(after));
    RequireWidths(written);
    Require(Same(written, ParseId3v1(BuildId3v1(tag))) && written.TagGenre == tag.TagGenre);
    const std::string expected = FromWindows1252(ToWindows1252(tag.TagTitle));
    Require(TrimRight(written.TagTitle) == TrimRight(LeftCharacters(expected, 30)));
    WriteId3v1(path, tag);
    Require(fuzz::ReadWhole(path) == after);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TemporaryFolder folder;
    static const std::string path = folder / "x.mp3";
    std::string_view contents = fuzz::TextOf(data, size);
    const fuzz::FuzzServices doubles;
    const std::string name(fuzz::TakeLine(contents));
    Id3v1Tag tag;
    for (std::string* text : {&tag.TagTitle, &tag.TagArtist, &tag.TagAlbum, &tag.TagYear, &tag.TagComment}) {
        *text = fuzz::TakeLine(contents);
    }
    tag.TagGenre = static_cast<std::uint8_t>(name.size());
    if (!name.empty()) {
        ReadName(name);
    }
    fuzz::WriteWhole(path, contents);
    Inspect(path, name, contents);
    Write(path, tag, contents, doubles.msgBox);
    return 0;
}
