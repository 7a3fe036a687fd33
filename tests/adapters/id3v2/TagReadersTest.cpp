// Other programs read what the writers of both tag versions saved into real MP3 files.
#include "adapters/id3v2/TagLibComponent.h"

#include "inspect/modMp3Info.h"
#include "support/LogicTest.h"
#include "support/OggFiles.h"
#include "support/RealAudio.h"
#include "support/TemporaryFolder.h"
#include "support/TestFiles.h"

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace quavernet::test {

namespace {

// Each prints one line: its name and the texts. id3v2 knows no version 4.
constexpr const char* ReadVersion2 = R"(
import json, logging, re, subprocess, sys
import eyed3
from mutagen.id3 import ID3
logging.disable(logging.CRITICAL)
path = sys.argv[1]
def show(reader, *texts):
    print(reader + "|" + "|".join(texts))
def run(*words):
    return subprocess.run([*words, path], capture_output=True, check=True).stdout.decode()
tag = ID3(path, translate=False)
year = "TYER" if "TYER" in tag else "TDRC"
show("mutagen", *[str(tag[name].text[0]) for name in ("TIT2", "TPE1", "TALB", year, "TCON")],
     tag.getall("COMM")[0].text[0], tag["TPUB"].text[0])
version = tag.version[1]
tag = eyed3.load(path).tag
show("eyeD3", tag.title, tag.artist, tag.album, str(tag.getBestDate()), tag.genre.name, tag.comments[0].text, tag.publisher)
tags = json.loads(run("ffprobe", "-v", "error", "-show_entries", "format_tags", "-of", "json"))["format"]["tags"]
show("ffprobe", *[tags[name] for name in ("title", "artist", "album", "date", "genre", "comment", "publisher")])
if version == 3:
    lines = dict(line.split(": ", 1) for line in run("id3v2", "-R").splitlines() if ": " in line)
    show("id3v2", *[lines[name] for name in ("TIT2", "TPE1", "TALB", "TYER")], re.sub(r" \(\d+\)$", "", lines["TCON"]),
         lines["COMM"].removeprefix("()[eng]: "), lines["TPUB"])
)";

// Title and album, or nothing where a reader finds none.
constexpr const char* ReadEmptied = R"(
import json, logging, subprocess, sys
import eyed3
from mutagen.id3 import ID3
logging.disable(logging.CRITICAL)
path = sys.argv[1]
def show(reader, *texts):
    print(reader + "|" + "|".join(text or "" for text in texts))
tag = ID3(path, translate=False)
show("mutagen", *["".join(str(frame) for frame in tag.getall(name)) for name in ("TIT2", "TALB")])
tag = eyed3.load(path).tag
show("eyeD3", tag.title, tag.album)
output = subprocess.run(["ffprobe", "-v", "error", "-show_entries", "format_tags", "-of", "json", path],
                        capture_output=True, check=True).stdout
tags = json.loads(output)["format"]["tags"]
show("ffprobe", tags.get("title"), tags.get("album"))
)";

// The blanks that fill the fields are cut off. ffprobe gives their bytes as they are.
constexpr const char* ReadVersion1 = R"(
import json, logging, subprocess, sys
import eyed3
from mutagen.id3 import ParseID3v1
logging.disable(logging.CRITICAL)
path = sys.argv[1]
def show(reader, *texts):
    print(reader + "|" + "|".join(text.rstrip(" ") for text in texts))
with open(path, "rb") as file:
    tag = ParseID3v1(file.read()[-128:])
show("mutagen", *[str(tag[name].text[0]) for name in ("TIT2", "TPE1", "TALB", "TDRC", "COMM")], tag["TCON"].genres[0])
tag = eyed3.load(path, tag_version=(1, None, None)).tag
show("eyeD3", tag.title, tag.artist, tag.album, str(tag.getBestDate()), tag.comments[0].text, tag.genre.name)
output = subprocess.run(["ffprobe", "-v", "error", "-show_entries", "format_tags", "-of", "json=string_validation=ignore", path],
                        capture_output=True, check=True).stdout.decode("cp1252")
tags = json.loads(output)["format"]["tags"]
show("ffprobe", *[tags.get(name, "") for name in ("title", "artist", "album", "date", "comment", "genre")])
)";

class TagReadersTest : public LogicTest {
protected:
    using Texts = std::vector<std::string>;

    static std::string ReadBy(const char* script, const std::string& path) {
        return OutputOf("PYTHONIOENCODING=utf-8 /usr/bin/python3 -c " + Quoted(script) + " " + Quoted(path) +
                        " 2>&1");
    }

    static std::string Lines(const Texts& readers, const Texts& texts) {
        std::string lines;
        for (const std::string& reader : readers) {
            lines += reader;
            for (const std::string& text : texts) {
                lines += "|" + text;
            }
            lines += "\n";
        }
        return lines;
    }

    /// Saves seven fields and expects that all readers read them, and that the bytes after the tag stay.
    void ExpectRead(const std::string& source, const Texts& texts, bool version4) {
        const std::string path = CopyTo(source, folder / "a.mp3");
        const std::string before = ReadFile(path);
        const auto component = CreateTagLibComponent(RealFiles());
        component->LoadFile(path);
        constexpr std::array<int, 7> indexes = {
            TagComponent::Title, TagComponent::Performer, TagComponent::Album,    TagComponent::Year,
            TagComponent::Genre, TagComponent::Comment,   TagComponent::Publisher};
        for (std::size_t i = 0; i < indexes.size(); ++i) {
            component->SetTagField(indexes[i], texts[i]);
        }
        component->SaveFile(path);
        Texts readers = {"mutagen", "eyeD3", "ffprobe"};
        if (!version4) {
            readers.push_back("id3v2");
        }
        EXPECT_EQ(ReadBy(ReadVersion2, path), Lines(readers, texts)) << source;
        EXPECT_EQ(AfterTag(ReadFile(path)), AfterTag(before)) << source;
    }

    static std::string AfterTag(const std::string& file) {
        if (!file.starts_with("ID3")) {
            return file;
        }
        std::size_t size = 0;
        for (std::size_t i = 6; i < 10; ++i) {
            size = size << 7 | static_cast<std::uint8_t>(file[i]);
        }
        return file.substr(size + 10);
    }

    TemporaryFolder folder;
};

} // namespace

TEST_F(TagReadersTest, AllReadTheSevenFieldsOfVersion2) {
    const std::string ffmpeg = folder / "version4.mp3";
    RunProgram({"ffmpeg", "-v", "error", "-i", RealMp3({"-b", "32", "--id3v2-only", "--tt", "Alt"}), "-c",
                "copy", "-id3v2_version", "4", ffmpeg});
    const std::string bare = RealMp3({"-b", "32"});
    const Texts switches = {"-b",  "32",   "--add-id3v2", "--tt", "Alt", "--ta",
                            "Alt", "--ty", "1999",        "--tg", "17"};
    const std::string both = RealMp3(switches);
    const Texts plain = {"Title", "Performer", "Album", "2026", "Polka", "A comment", "Publisher"};
    const Texts umlauts = {"Größe",    "Die Ärzte", "Über 'uns' \"alle\"", "2026",
                           "Hörspiel", "ß & <b>",   "Müller & Söhne"};
    const Texts beyond = {"🎵 Ноты", "日本語", "Ω", "2026", "Eigenes Genre 🎵", "né – “so”", "出版"};
    const Texts longOnes = {
        std::string(10'000, 't'), "ü" + std::string(9'999, 'p'), "🎵" + std::string(9'999, 'a'), "2026",
        std::string(10'000, 'g'), std::string(10'000, 'c'),      std::string(10'000, 'v')};
    for (const Texts& texts : {plain, umlauts, beyond, longOnes}) {
        ExpectRead(bare, texts, false);
        ExpectRead(both, texts, false);
        ExpectRead(ffmpeg, texts, true);
    }
}

TEST_F(TagReadersTest, AFieldThatWasEmptiedIsEmptyForAll) {
    const std::string source =
        RealMp3({"-b", "32", "--id3v2-only", "--ta", "Lied", "--tt", "Alt", "--tl", "Alt"});
    const std::string path = CopyTo(source, folder / "a.mp3");
    const Texts readers = {"mutagen", "eyeD3", "ffprobe"};
    ASSERT_EQ(ReadBy(ReadEmptied, path), Lines(readers, {"Alt", "Alt"}));
    const auto component = CreateTagLibComponent(RealFiles());
    component->LoadFile(path);
    component->SetTagField(TagComponent::Album, "");
    component->SetTagField(TagComponent::Title, "");
    component->SaveFile(path);
    EXPECT_EQ(ReadBy(ReadEmptied, path), Lines(readers, {"", ""}));
}

TEST_F(TagReadersTest, AllReadTheFieldsOfVersion1) {
    const std::string bare = RealMp3({"-b", "32"});
    const std::string both = RealMp3({"-b", "32", "--add-id3v2", "--tt", "Alt", "--tg", "17"});
    Id3v1Tag tag;
    tag.TagTitle = "Größe";
    tag.TagArtist = "Die Ärzte, cut where it is thirty characters long";
    tag.TagAlbum = "Über 'uns'";
    tag.TagYear = "2026";
    tag.TagComment = "Bemerkung";
    const Texts texts = {tag.TagTitle, "Die Ärzte, cut where it is thi", tag.TagAlbum, "2026",
                         tag.TagComment};
    for (const auto& [number, name] :
         {std::pair{0, "Blues"}, std::pair{9, "Metal"}, std::pair{17, "Rock"}, std::pair{32, "Classical"},
          std::pair{79, "Hard Rock"}, std::pair{125, "Dance Hall"}}) {
        for (const std::string& source : {bare, both}) {
            const std::string path = CopyTo(source, folder / "a.mp3");
            const std::string before = ReadFile(path);
            tag.TagGenre = static_cast<std::uint8_t>(number);
            WriteId3v1(path, tag);
            const std::string after = ReadFile(path);
            EXPECT_EQ(after.substr(0, after.size() - 128), before.substr(0, before.size() - 128));
            Texts expected = texts;
            expected.push_back(name);
            const std::string lines = ReadBy(ReadVersion1, path);
            EXPECT_EQ(lines.substr(0, lines.find("ffprobe")), Lines({"mutagen", "eyeD3"}, expected));
            if (source == bare) { // Beside a version 2 tag ffprobe reads that one.
                EXPECT_EQ(lines, Lines({"mutagen", "eyeD3", "ffprobe"}, expected));
            }
        }
    }
}

} // namespace quavernet::test
