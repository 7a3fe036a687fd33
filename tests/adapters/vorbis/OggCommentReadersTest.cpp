// Other programs read what the comment writer saved, and the comment writer reads and keeps what they saved.
#include "adapters/vorbis/OggCommentWriter.h"

#include "adapters/vorbis/OggCommentTest.h"

#include <string_view>

namespace quavernet::test {

namespace {

class OggCommentReadersTest : public OggCommentTest {
protected:
    static Texts Lines(const std::string& output) {
        Texts lines;
        for (std::size_t at = 0; at < output.size();) {
            const auto end = std::min(output.find('\n', at), output.size());
            lines.push_back(output.substr(at, end - at));
            at = end + 1;
        }
        return lines;
    }

    Texts ByVorbiscomment() const {
        return Lines(OutputOf("LC_ALL=C.UTF-8 vorbiscomment -l -R -e " + Quoted(path) + " 2>&1"));
    }

    /// Line ends as "\n", as the tool writes them under -e.
    Texts ByMutagen() const {
        return Lines(OutputOf(
            "PYTHONIOENCODING=utf-8 /usr/bin/python3 -c '\nimport sys\nfrom mutagen.oggvorbis import "
            "OggVorbis\nfor key, value in OggVorbis(sys.argv[1]).tags:\n"
            "    print(key + \"=\" + value.replace(\"\\n\", \"\\\\n\"))' " +
            Quoted(path) + " 2>&1"));
    }

    /// Keys in upper case, sorted: the tool has an order of its own.
    Texts ByFfprobe() const {
        Texts lines = Lines(OutputOf("ffprobe -v error -show_entries stream_tags -of default=nk=0:nw=1 " +
                                     Quoted(path) + " 2>&1"));
        for (std::string& line : lines) {
            EXPECT_TRUE(line.starts_with("TAG:")) << line;
            line.erase(0, 4);
        }
        std::sort(lines.begin(), lines.end());
        return lines;
    }

    void ExpectReadByAll(const Texts& comments) {
        EXPECT_EQ(writer.List(path), comments);
        EXPECT_EQ(ByVorbiscomment(), comments);
        EXPECT_EQ(ByMutagen(), comments);
        Texts sorted = comments;
        std::sort(sorted.begin(), sorted.end());
        EXPECT_EQ(ByFfprobe(), sorted);
    }

    const Texts texts = {"TITLE=Fünf Ärzte 🎵",
                         "ARTIST=Ein = Zeichen",
                         "GENRE=Rock'n'Roll \"laut\"",
                         "ALBUM= mit Rand ",
                         "DATE=2026",
                         "COMMENT=" + std::string(10'000, 'k'),
                         "X-NOTE=kept",
                         "REPLAYGAIN_TRACK_GAIN=-3.2 dB"};
};

} // namespace

TEST_F(OggCommentReadersTest, OtherProgramsReadWhatWasSaved) {
    for (const std::string* ogg : {&EncodedOgg::Stereo(), &EncodedOgg::Mono(), &EncodedOgg::Long()}) {
        ExpectSaved(*ogg, texts);
        ExpectReadByAll(texts);
        Texts large = texts;
        large[5] = "COMMENT=" + std::string(300'000, 'k');
        ExpectSaved(*ogg, large);
        EXPECT_EQ(ByVorbiscomment(), large);
        EXPECT_EQ(ByMutagen(), large);
        ExpectSaved(ReadWhole(path), texts);
        ExpectReadByAll(texts);
    }
}

TEST_F(OggCommentReadersTest, OtherProgramsReadALineEndInAValue) {
    const Texts lines = {"TITLE=one\ntwo", "X-NOTE=three\nfour"};
    ExpectSaved(EncodedOgg::Stereo(), lines);
    const Texts shown = {"TITLE=one\\ntwo", "X-NOTE=three\\nfour"};
    EXPECT_EQ(ByVorbiscomment(), shown);
    EXPECT_EQ(ByMutagen(), shown);
}

TEST_F(OggCommentReadersTest, APictureThatAnotherProgramPutInIsKeptForIt) {
    WriteWhole(path, EncodedOgg::Stereo());
    const std::string script = "'\nimport base64, sys\nfrom mutagen.flac import Picture\n"
                               "from mutagen.oggvorbis import OggVorbis\nfile = OggVorbis(sys.argv[1])\n";
    const auto run = [&](const std::string& rest) {
        return OutputOf("/usr/bin/python3 -c " + script + rest + "' " + Quoted(path) + " 2>&1");
    };
    EXPECT_EQ(
        run("picture = Picture()\npicture.data = bytes(range(256)) * 4000\npicture.type = 3\n"
            "file[\"metadata_block_picture\"] = [base64.b64encode(picture.write()).decode()]\nfile.save()\n"),
        "");
    Texts comments = writer.List(path);
    comments.insert(comments.begin(), "TITLE=Neu");
    ExpectSaved(ReadWhole(path), comments);
    EXPECT_EQ(run("picture = Picture(base64.b64decode(file[\"metadata_block_picture\"][0]))\n"
                  "print(picture.data == bytes(range(256)) * 4000, file[\"title\"][0])\n"),
              "True Neu\n");
}

TEST_F(OggCommentReadersTest, FilesOfOtherWritersAreSaved) {
    const std::string source = folder / "source.ogg";
    const std::string quiet = " 2>&1 && mv " + Quoted(folder / "b.ogg") + " " + Quoted(path);
    const std::string ffmpeg = "ffmpeg -v error -i " + Quoted(source) + " -c copy ";
    for (const std::string& command :
         {ffmpeg + "-metadata:s:a:0 title=Remuxed " + Quoted(folder / "b.ogg"),
          ffmpeg + "-map 0:a -map 0:a " + Quoted(folder / "b.ogg"), // Two streams side by side.
          ffmpeg + "-page_duration 20000 " + Quoted(folder / "b.ogg"),
          "vorbiscomment -a -R -t TITLE=Tool " + Quoted(source) + " " + Quoted(folder / "b.ogg")}) {
        WriteWhole(source, EncodedOgg::Long());
        EXPECT_EQ(OutputOf(command + quiet), "") << command;
        std::filesystem::remove(source);
        const std::string before = ReadWhole(path);
        ExpectSaved(before, texts);
        const std::string large = ExpectSaved(before, {std::string(200'000, 'x')});
        EXPECT_EQ(Decoded(large), Decoded(before));
        ExpectSaved(large, texts);
        EXPECT_EQ(ByVorbiscomment(), texts);
    }
}

} // namespace quavernet::test
